#include "harness.hpp"
#include "keyed.hpp"
#include "operations.hpp"
#include "own_containers.hpp"

/// \file
/// The containers behind handles, each beside the same standard container used directly: nodes of a
/// browse, values of a configuration, subscriptions.

namespace bench {

namespace {

// --- 100,000 nodes pushed and destroyed; the making of a node is part of it

constexpr int pushed = 100'000;

template <class Nodes>
void push_all(Nodes& nodes, identifiers const& ids) {
    for (auto const& id : ids) nodes.push(make_node(id));
}

template <class Nodes>
void add_push(char const* name) {
    add("browse_push", name, pushed, [] {
        auto const ids = shared(make_identifiers(pushed));
        auto const run = [=] {
            Nodes nodes;
            push_all(nodes, *ids);
            DoNotOptimize(nodes);
        };
        return job{run, [=] {
                       Nodes nodes;
                       push_all(nodes, *ids);
                       return nodes.size() == std::size_t(pushed) &&
                              nodes.last().browse_name == ids->back();
                   }};
    });
}

/// A peer has a record with two texts, a third that is empty, and a few numbers.
template <class Text, class List>
void add_push_peer(char const* name, Text (*make_text)(std::string const&)) {
    add("browse_push", name, pushed, [=] {
        auto const texts = shared(identifier_texts(pushed));
        auto const push_texts = [=](List& list) {
            for (auto const& text : *texts) {
                typename List::value_type record;
                record.identifier = make_text(text);
                record.browse_name = make_text(text);
                list.push_back(std::move(record));
            }
        };
        auto const run = [=] {
            List list;
            push_texts(list);
            DoNotOptimize(list);
        };
        return job{run, [=] {
                       List list;
                       push_texts(list);
                       return list.size() == static_cast<typename List::size_type>(pushed) &&
                              list.back().browse_name == make_text(texts->back());
                   }};
    });
}

template <class Text>
struct node_record {
    unsigned int node_class = 2;
    Text identifier;
    Text browse_name;
    Text description;
    v2::io_data_type data_type;
};

void add_pushes() {
    add_push<iokern_nodes>("iokern");
    add_push<standard_nodes>("limit");
    add_push_peer<std::string, std::vector<node_record<std::string>>>(
        "std_vector[of std::string]", [](std::string const& text) { return text; });
    add_push_peer<QString, QList<node_record<QString>>>(
        "qt_qlist[of QString]",
        [](std::string const& text) { return QString::fromStdString(text); });
    add_push_peer<boost::json::string, std::vector<node_record<boost::json::string>>>(
        "std_vector[of boost_json string]",
        [](std::string const& text) { return boost::json::string(text); });
}

// --- 1000 subscriptions

constexpr int subscribed = 1000;

/// Sets all, then asks for all.
template <class Subscriptions>
bool keeps_numbers(Subscriptions& subscriptions, identifiers const& ids) {
    unsigned int number = 0;
    for (auto const& id : ids) subscriptions.set(id, number += 3);
    number = 0;
    for (auto const& id : ids) {
        if (subscriptions.get(id) != (number += 3)) return false;
    }
    return true;
}

template <class Subscriptions>
void add_subscriptions(char const* name) {
    struct content {
        Subscriptions subscriptions;
        identifiers ids = make_identifiers(subscribed);
    };
    add("subscription_set", name, subscribed, [] {
        auto const all = std::make_shared<content>();
        auto const run = [=] {
            unsigned int number = 0;
            for (auto const& id : all->ids) all->subscriptions.set(id, ++number);
            DoNotOptimize(all->subscriptions);
        };
        return job{run, [=] { return keeps_numbers(all->subscriptions, all->ids); }};
    });
    add("subscription_get", name, subscribed, [] {
        auto const all = std::make_shared<content>();
        auto const run = [=] {
            for (auto const& id : all->ids) {
                unsigned int number = all->subscriptions.get(id);
                DoNotOptimize(number);
            }
        };
        return job{run, [=] { return keeps_numbers(all->subscriptions, all->ids); }};
    });
}

/// A map from the peer's text to a record.
template <class Text, class Map>
class text_subscriptions {
public:
    void set(v2::plc_identifier const& id, unsigned int number) {
        auto& record = content_[text_of(id)];
        record.identifier = text_of(id);
        record.number = number;
    }
    [[nodiscard]] unsigned int get(v2::plc_identifier const& id) const {
        auto const place = content_.find(text_of(id));
        if (place == content_.end()) return 0;
        if constexpr (std::is_same_v<Text, QString>) {
            return place.value().number;
        } else {
            return place->second.number;
        }
    }

private:
    static Text text_of(v2::plc_identifier const& id) {
        auto const text = id.primary().text();
        if constexpr (std::is_same_v<Text, QString>) {
            return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
        } else {
            return Text(text.data(), text.size());
        }
    }

    Map content_;
};

struct subscription_record {
    std::string identifier;
    v2::io_data_type data_type;
    unsigned int number = 0;
    unsigned long long id = 0;
};
struct qt_subscription_record {
    QString identifier;
    v2::io_data_type data_type;
    unsigned int number = 0;
    unsigned long long id = 0;
};

void add_all_subscriptions() {
    add_subscriptions<iokern_subscriptions>("iokern");
    add_subscriptions<standard_subscriptions>("limit");
    add_subscriptions<
        text_subscriptions<std::string, std::unordered_map<std::string, subscription_record>>>(
        "std_unordered_map[key made]");
    add_subscriptions<text_subscriptions<QString, QMap<QString, qt_subscription_record>>>(
        "qt_qmap[key made]");
    add_subscriptions<text_subscriptions<QString, QHash<QString, qt_subscription_record>>>(
        "qt_qhash[key made]");
}

} // namespace

void add_containers() {
    add_pushes();
    add_keyed<iokern_store>("store_get", "store_set", "iokern", 1000);
    add_keyed<standard_map<v2::io_value>>("store_get", "store_set", "limit", 1000);
    add_keyed_peers("store_get", "store_set", 1000);
    add_all_subscriptions();
}

} // namespace bench
