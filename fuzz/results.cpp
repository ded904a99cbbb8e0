#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/error_model.hpp"
#include "model/identifier_model.hpp"
#include "model/library_value.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <utility>
#include <vector>

/// \file
/// A script of operations on the results of a read and of a write: arrays of entries with one form,
/// of which that of a read has a value too.

namespace {

using namespace fuzz;
using quality = v2::io_data_value::value_quality;

struct entry_model {
    identifier_model identifier;
    value_model value;
    long long ticks = 0;
    int quality = 0;
    error_model error;
};

error_model no_result() {
    return {static_cast<int>(v2::io_errc::no_result), std::nullopt};
}

bool same_entry(v2::read_result::result_type const& entry, entry_model const& model) {
    v2::io_data_value const& value = entry.value();
    return same(entry.identifier(), model.identifier) && same(value.value(), model.value) &&
           value.timestamp().ticks() == model.ticks &&
           static_cast<int>(value.quality()) == model.quality &&
           value.good() == (model.quality > 0) && value.bad() == (model.quality < 0) &&
           value.empty() == (model.value.type == io_data_type()) &&
           same(entry.error(), model.error);
}

bool same_entry(v2::write_result::result_type const& entry, entry_model const& model) {
    return same(entry.identifier(), model.identifier) && same(entry.error(), model.error);
}

template <class Result>
class machine {
    static constexpr bool has_values = std::is_same_v<Result, v2::read_result>;

public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 48 && !script_.empty(); ++step) {
            operate();
            check(result_.size() == model_.size(), "a result has its size");
            check(result_.empty() == model_.empty(), "a result without entries is empty");
            auto const* entry = result_.begin();
            for (entry_model const& each : model_) {
                check(same_entry(*entry++, each), "an entry holds what was put into it");
            }
            check(entry == result_.end(), "the entries end where the size says");
        }
    }

private:
    void operate() {
        switch (script_.below(10)) {
        case 0: return build();
        case 1: return assign();
        case 2: return assign_own();
        case 3: return resize();
        case 4: return find();
        case 5: return copy();
        case 6: return move();
        case 7: return set_error();
        default:
            if constexpr (has_values) return set_value();
            if constexpr (!has_values) return set_error();
        }
    }

    std::vector<identifier_model> random_identifiers() {
        std::vector<identifier_model> result(script_.below(8));
        for (identifier_model& each : result) each = random_identifier(script_);
        return result;
    }

    static std::vector<v2::plc_identifier> made_all(std::vector<identifier_model> const& models) {
        std::vector<v2::plc_identifier> result;
        result.reserve(models.size());
        for (identifier_model const& each : models) result.push_back(made(each));
        return result;
    }

    void expect_untouched(std::vector<identifier_model> const& identifiers) {
        model_.clear();
        for (identifier_model const& each : identifiers) {
            entry_model entry;
            entry.identifier = each;
            entry.error = no_result();
            model_.push_back(std::move(entry));
        }
    }

    void build() {
        auto const identifiers = random_identifiers();
        result_ = Result(made_all(identifiers));
        expect_untouched(identifiers);
    }

    void assign() {
        auto const identifiers = random_identifiers();
        result_.assign(made_all(identifiers));
        expect_untouched(identifiers);
    }

    /// One entry's identifier, where it stands, becomes the only one.
    void assign_own() {
        if (model_.empty()) return;
        auto const at = any_index();
        identifier_model const identifier = model_[at].identifier;
        result_.assign(v2::utility::data_view<v2::plc_identifier const>(
            &result_[static_cast<unsigned int>(at)].identifier(), 1));
        expect_untouched({identifier});
    }

    void resize() {
        unsigned int const size = script_.below(12);
        result_.resize(size);
        model_.resize(size);
    }

    std::size_t any_index() { return script_.byte() % model_.size(); }

    std::vector<entry_model>::iterator found(identifier_model const& identifier) {
        return std::find_if(model_.begin(), model_.end(),
                            [&](entry_model const& each) { return each.identifier == identifier; });
    }

    void find() {
        identifier_model const identifier = random_identifier(script_);
        auto const expected = found(identifier);
        Result const& constant = result_;
        auto const* const given = constant.find(made(identifier));
        check(given == result_.find(made(identifier)), "both forms of find agree");
        if (expected == model_.end()) return check(given == nullptr, "find gives null for none");
        check(given == result_.begin() + (expected - model_.begin()), "find gives the first");
    }

    void copy() {
        Result const copied(result_);
        Result other;
        other = copied;
        result_.resize(0); // and nothing of it is shared
        result_ = other;
    }

    void move() {
        Result const& left_behind = result_;
        Result moved(std::move(result_));
        check(left_behind.size() == 0, "a result that was moved from is empty");
        result_ = std::move(moved);
    }

    /// Call `by_index` or `by_identifier`, and `change` on the entry of the model if there is one.
    template <class ByIndex, class ByIdentifier, class Change>
    void set(ByIndex by_index, ByIdentifier by_identifier, Change change) {
        if (script_.flag() && !model_.empty()) {
            auto const at = any_index();
            by_index(static_cast<unsigned int>(at));
            return change(model_[at]);
        }
        identifier_model const identifier = random_identifier(script_);
        by_identifier(made(identifier));
        auto const entry = found(identifier);
        if (entry != model_.end()) change(*entry);
    }

    void set_error() {
        error_model const error = random_error(script_);
        set([&](unsigned int at) { result_.set(at, made(error)); },
            [&](v2::plc_identifier const& of) { result_.set(of, made(error)); },
            [&](entry_model& entry) {
                entry.value = value_model();
                entry.ticks = 0;
                entry.quality = 0;
                entry.error = error;
            });
    }

    void set_value() {
        value_model const value = random_value(script_, {1, 3});
        long long const ticks = random_number<long long>(script_);
        int const rank = static_cast<int>(script_.byte()) - 128;
        v2::io_data_value const data(made(value), v2::io_timestamp(ticks), quality{rank});
        set([&](unsigned int at) { result_.set(at, data); },
            [&](v2::plc_identifier const& of) { result_.set(of, data); },
            [&](entry_model& entry) {
                entry.value = value;
                entry.ticks = ticks;
                entry.quality = rank;
                entry.error = error_model();
            });
    }

    input& script_;
    Result result_;
    std::vector<entry_model> model_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    if (script.flag()) {
        machine<v2::read_result>(script).run();
    } else {
        machine<v2::write_result>(script).run();
    }
    return 0;
}
