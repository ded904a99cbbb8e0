#include "floor/floor.hpp"
#include "harness.hpp"
#include "identifiers.hpp"
#include "operations.hpp"
#include "values.hpp"

#include <cstring>

/// \file
/// A list of results, one entry for each identifier: built and destroyed, filled by index, searched
/// from the front. One item is one entry or one search.

namespace bench {

namespace {

constexpr int built = 10'000;
constexpr int searched = 1000;

/// Which entries are searched for: spread over all of them, in no order.
std::vector<int> targets() {
    std::vector<int> result(64);
    int target = 0;
    for (int& each : result) each = target = (target + 619) % searched;
    return result;
}

/// \param make  of the list, which has `fill` of an index and a number, and `number` at an index
template <class Make>
void add_fill(std::string const& name, Make make) {
    add("result_fill", name, built, [make] {
        auto const list = make();
        auto const run = [=] {
            for (int i = 0; i < built; ++i) list->fill(i, i * 0.5);
            DoNotOptimize(*list);
        };
        return job{run, [=] {
                       for (int i = 0; i < built; ++i) list->fill(i, i * 0.25);
                       for (int i = 0; i < built; ++i) {
                           if (list->number(i) != i * 0.25) return false;
                       }
                       return true;
                   }};
    });
}

/// The three operations on a list.
/// \tparam List  has `ids`, which makes identifiers of texts; is built of them; has what `add_fill`
///     takes, and `find` of an identifier, the index or -1
template <class List>
void add_list(std::string const& name) {
    add("result_build", name, built, [] {
        auto const ids = shared(List::ids(identifier_texts(built)));
        auto const run = [=] {
            List list(*ids);
            DoNotOptimize(list);
        };
        return job{run, [=] {
                       List const list(*ids);
                       return list.find((*ids)[built - 1]) == built - 1;
                   }};
    });
    add_fill(name, [] { return std::make_shared<List>(List::ids(identifier_texts(built))); });
    add("result_find_1000", name, 64, [] {
        auto const ids = shared(List::ids(identifier_texts(searched)));
        auto const list = std::make_shared<List>(*ids);
        auto const run = [=, wanted = targets()] {
            for (int const target : wanted) {
                int found = list->find((*ids)[static_cast<std::size_t>(target)]);
                DoNotOptimize(found);
            }
        };
        return job{run, [=] {
                       for (int i = 0; i < searched; ++i) {
                           if (list->find((*ids)[static_cast<std::size_t>(i)]) != i) return false;
                       }
                       return list->find(List::ids({"nowhere"})[0]) == -1;
                   }};
    });
}

// --- this library

class iokern_list {
public:
    static std::vector<v2::plc_identifier> ids(std::vector<std::string> const& texts) {
        std::vector<v2::plc_identifier> result;
        result.reserve(texts.size());
        for (auto const& text : texts) result.emplace_back(text);
        return result;
    }

    explicit iokern_list(std::vector<v2::plc_identifier> const& ids) : entries_(ids) {}

    void fill(int index, double number) {
        entries_.set(static_cast<unsigned int>(index),
                     v2::io_data_value(number, v2::io_timestamp(index),
                                       v2::io_data_value::value_quality::good));
    }
    [[nodiscard]] double number(int index) const {
        return entries_[static_cast<unsigned int>(index)].value().value().as<double>();
    }
    [[nodiscard]] int find(v2::plc_identifier const& id) const {
        auto const* const entry = entries_.find(id);
        return entry != nullptr ? static_cast<int>(entry - entries_.begin()) : -1;
    }

private:
    v2::read_result entries_;
};

// --- limits

/// An entry of 72 bytes with a copy of its identifier in a block of its own.
class hand_list {
public:
    static std::vector<std::string> ids(std::vector<std::string> texts) { return texts; }

    explicit hand_list(std::vector<std::string> const& ids) : entries_(ids.size()) {
        auto* place = entries_.data();
        for (auto const& id : ids) {
            auto& entry = *place++;
            entry.size = static_cast<unsigned int>(id.size());
            entry.id = static_cast<char*>(std::malloc(id.size() + 1));
            std::memcpy(entry.id, id.c_str(), id.size() + 1);
            entry.code = 5;
        }
    }
    hand_list(hand_list const&) = delete;
    hand_list& operator=(hand_list const&) = delete;
    ~hand_list() {
        for (auto const& each : entries_) std::free(each.id);
    }

    void fill(int index, double number) {
        auto& entry = entries_[static_cast<std::size_t>(index)];
        entry.kind = 13;
        entry.number = number;
        entry.stamp = index;
        entry.quality = 1;
        entry.code = 0;
    }
    [[nodiscard]] double number(int index) const {
        auto const& entry = entries_[static_cast<std::size_t>(index)];
        return entry.kind == 13 && entry.code == 0 ? entry.number : -1;
    }
    [[nodiscard]] int find(std::string const& id) const {
        for (auto const& each : entries_) {
            if (each.size == id.size() && std::memcmp(each.id, id.data(), each.size) == 0) {
                return static_cast<int>(&each - entries_.data());
            }
        }
        return -1;
    }

private:
    struct entry_type {
        char* id = nullptr;
        unsigned int size = 0;
        int code = 0;
        void const* category = nullptr;
        int kind = 0;
        int quality = 0;
        double number = 0;
        long long stamp = 0;
        unsigned long long type[3] = {};
    };
    static_assert(sizeof(entry_type) == 72);

    std::vector<entry_type> entries_;
};

/// Entries that are filled by the two calls that the interface has for it, and do no more.
class floor_list {
public:
    void fill(int index, double number) {
        floor::value value(number);
        floor::data_value answer;
        floor::make(answer, value, index, 1);
        floor::store(entries_.data(), static_cast<unsigned int>(index), answer);
    }
    [[nodiscard]] double number(int index) const {
        auto const& entry = entries_[static_cast<std::size_t>(index)];
        return entry.answer.held.index == 4 && entry.outcome.code == 0 ? entry.answer.held.dbl : -1;
    }

private:
    std::vector<floor::entry> entries_ = std::vector<floor::entry>(built);
};

/// Identifiers of 24 bytes side by side, as three words.
void add_contiguous_search() {
    struct words {
        std::uint64_t word[3];
        bool operator==(words const& other) const {
            return word[2] == other.word[2] && word[1] == other.word[1] && word[0] == other.word[0];
        }
    };
    add("result_find_1000", "limit[identifiers side by side]", 64, [] {
        auto const ids = std::make_shared<std::vector<words>>(searched);
        auto const texts = identifier_texts(searched);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            std::memcpy(&(*ids)[i], texts[i].data(), sizeof(words));
        }
        auto const find = [=](std::string const& id) {
            words wanted{};
            std::memcpy(&wanted, id.data(), sizeof(wanted));
            return std::find(ids->begin(), ids->end(), wanted) - ids->begin();
        };
        auto const run = [=, wanted = targets()] {
            for (int const target : wanted) {
                auto found = find(texts[static_cast<std::size_t>(target)]);
                DoNotOptimize(found);
            }
        };
        return job{run, [=] { return find(texts[77]) == 77 && find(texts[999]) == 999; }};
    });
}

// --- peers: a vector of records of the peer's text and value

template <class Text, class V>
class record_list {
public:
    static std::vector<Text> ids(std::vector<std::string> const& texts) {
        std::vector<Text> result;
        result.reserve(texts.size());
        for (auto const& text : texts) {
            if constexpr (std::is_same_v<Text, QString>) {
                result.push_back(QString::fromStdString(text));
            } else {
                result.emplace_back(text);
            }
        }
        return result;
    }

    explicit record_list(std::vector<Text> const& ids) {
        records_.reserve(ids.size());
        for (auto const& id : ids) {
            auto& record = records_.emplace_back();
            record.id = id;
            if constexpr (std::is_same_v<Text, QString>) record.id.detach(); // no counted copy
        }
    }

    void fill(int index, double number) {
        auto& record = records_[static_cast<std::size_t>(index)];
        record.value = peer<V>::of(number);
        record.stamp = index;
        record.quality = 1;
        record.code = 0;
    }
    [[nodiscard]] double number(int index) const {
        return peer<V>::number(records_[static_cast<std::size_t>(index)].value);
    }
    [[nodiscard]] int find(Text const& id) const {
        for (auto const& record : records_) {
            if (record.id == id) return static_cast<int>(&record - records_.data());
        }
        return -1;
    }

private:
    struct record_type {
        Text id;
        V value{};
        long long stamp = 0;
        int quality = 0;
        int code = 5;
        void const* category = nullptr;
    };

    std::vector<record_type> records_;
};

} // namespace

void add_read_results() {
    add_list<iokern_list>("iokern");
    add_list<hand_list>("limit");
    add_fill("floor", std::make_shared<floor_list>);
    add_contiguous_search();
    add_list<record_list<std::string, std_value>>("std_string and variant");
    add_list<record_list<QString, QVariant>>("qt_qstring and qvariant");
    add_list<record_list<std::string, poco_value>>("poco_var and string");
    add_list<record_list<std::string, glib_value>>("glib_gvalue and string");
    add_list<record_list<boost::json::string, boost_value>>("boost_json and string");
    add_list<record_list<std::string, nlohmann_value>>("nlohmann and string");
}

} // namespace bench
