#pragma once

#include "harness.hpp"
#include "values.hpp"

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// \file
/// Containers of values under keys. Each has `key`, which makes a key of a text, `put`, which sets
/// a number in place of what is there, and `get`, which reads it back from a copy of the value.

namespace bench {

/// `count` different texts of 14 characters with a common beginning, in a fixed random order.
[[nodiscard]] inline std::vector<std::string> shuffled_keys(int count) {
    std::vector<std::string> keys;
    keys.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        char key[32];
        (void)std::snprintf(key, sizeof(key), "member_%07d", i);
        keys.emplace_back(key);
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(7));
    return keys;
}

/// Keys as they stand.
struct text_keys {
    static std::string key(std::string const& text) { return text; }
};

// --- this library

class iokern_object : public text_keys {
public:
    void put(std::string const& key, double number) { content_.set(key, number, error_); }
    double get(std::string const& key) {
        v2::io_value const value = content_.get(key, error_);
        return *value.get_if<double>();
    }

private:
    v2::io_object content_;
    v2::io_error error_;
};

class iokern_store : public text_keys {
public:
    void put(std::string const& key, double number) { content_.set(key, number); }
    double get(std::string const& key) {
        v2::io_value const value = content_.get(key);
        return *value.get_if<double>();
    }

private:
    v2::config::store content_;
};

// --- limits and peers

/// A standard map with a lookup that needs no key of its own.
template <class V>
class standard_map : public text_keys {
public:
    void put(std::string const& key, double number) {
        content_.insert_or_assign(key, peer<V>::of(number));
    }
    double get(std::string const& key) {
        V const value = content_.find(std::string_view(key))->second;
        return peer<V>::number(value);
    }

private:
    std::map<std::string, V, std::less<>> content_;
};

/// The same of this library's own value, read as the containers above are read.
template <>
inline double standard_map<v2::io_value>::get(std::string const& key) {
    v2::io_value const value = content_.find(std::string_view(key))->second;
    return *value.get_if<double>();
}

template <class V>
class standard_hash : public text_keys {
public:
    void put(std::string const& key, double number) {
        content_.insert_or_assign(key, peer<V>::of(number));
    }
    double get(std::string const& key) {
        V const value = content_.find(key)->second;
        return peer<V>::number(value);
    }

private:
    std::unordered_map<std::string, V> content_;
};

/// Containers that give a value of `V` by `[]`.
template <class Content, class V>
class indexed : public text_keys {
public:
    void put(std::string const& key, double number) { content_[key] = number; }
    double get(std::string const& key) {
        V const value = content_[key];
        return peer<V>::number(value);
    }

private:
    Content content_;
};

/// Qt has texts of its own, which are made before.
template <class Content>
class qt_container {
public:
    static QString key(std::string const& text) { return QString::fromStdString(text); }
    void put(QString const& key, double number) { content_.insert(key, number); }
    double get(QString const& key) {
        auto const value = content_.value(key);
        return value.toDouble();
    }

private:
    Content content_;
};

class poco_object : public text_keys {
public:
    void put(std::string const& key, double number) { content_.set(key, number); }
    double get(std::string const& key) {
        poco_value const value = content_.get(key);
        return peer<poco_value>::number(value);
    }

private:
    Poco::JSON::Object content_;
};

/// A hash table of values in blocks of their own.
class glib_table : public text_keys {
public:
    void put(std::string const& key, double number) {
        auto* value = static_cast<glib_value*>(g_hash_table_lookup(content_.get(), key.c_str()));
        if (value == nullptr) {
            value = new glib_value(G_TYPE_DOUBLE);
            g_hash_table_insert(content_.get(), g_strdup(key.c_str()), value);
        }
        g_value_set_double(value->get(), number);
    }
    double get(std::string const& key) {
        glib_value const value =
            *static_cast<glib_value const*>(g_hash_table_lookup(content_.get(), key.c_str()));
        return g_value_get_double(value.get());
    }

private:
    static void release(gpointer value) { delete static_cast<glib_value*>(value); }

    std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)> content_{
        g_hash_table_new_full(g_str_hash, g_str_equal, g_free, release), g_hash_table_unref};
};

// --- how they are measured

/// A container and its keys, in another order than they went in.
template <class Container>
struct filled {
    Container container;
    std::vector<decltype(Container::key({}))> keys;

    explicit filled(int size) {
        for (auto const& text : shuffled_keys(size)) {
            keys.push_back(Container::key(text));
            container.put(keys.back(), 0.5);
        }
        std::shuffle(keys.begin(), keys.end(), std::mt19937(11));
    }

    /// Whether each key gives back its own number, the first and the second one put.
    [[nodiscard]] bool keeps_numbers() {
        for (double const base : {1.0, 2.0}) {
            double number = base;
            for (auto const& key : keys) container.put(key, number += 1);
            number = base;
            for (auto const& key : keys) {
                if (container.get(key) != (number += 1)) return false;
            }
        }
        return true;
    }
};

/// Register reading and overwriting of every key of a container of `size`.
template <class Container>
void add_keyed(std::string const& get, std::string const& put, std::string const& name, int size) {
    add(get, name, size, [=] {
        auto const all = std::make_shared<filled<Container>>(size);
        auto const run = [=] {
            for (auto const& key : all->keys) {
                double number = all->container.get(key);
                DoNotOptimize(number);
            }
        };
        return job{run, [=] { return all->keeps_numbers(); }};
    });
    add(put, name, size, [=] {
        auto const all = std::make_shared<filled<Container>>(size);
        auto const run = [=] {
            double number = 0;
            for (auto const& key : all->keys) all->container.put(key, number += 1);
            DoNotOptimize(all->container);
        };
        return job{run, [=] { return all->keeps_numbers(); }};
    });
}

/// Register the general-purpose containers.
inline void add_keyed_peers(std::string const& get, std::string const& put, int size) {
    add_keyed<standard_map<std_value>>(get, put, "std_map[of variant]", size);
    add_keyed<standard_hash<std_value>>(get, put, "std_unordered_map[of variant]", size);
    add_keyed<indexed<nlohmann_value, nlohmann_value>>(get, put, "nlohmann", size);
    add_keyed<indexed<boost::json::object, boost_value>>(get, put, "boost_json", size);
    add_keyed<qt_container<QVariantMap>>(get, put, "qt_qvariantmap", size);
    add_keyed<qt_container<QVariantHash>>(get, put, "qt_qvarianthash", size);
    add_keyed<qt_container<QJsonObject>>(get, put, "qt_qjsonobject", size);
    add_keyed<indexed<Poco::DynamicStruct, poco_value>>(get, put, "poco_struct", size);
    add_keyed<poco_object>(get, put, "poco_json", size);
    add_keyed<glib_table>(get, put, "glib_ghashtable", size);
}

} // namespace bench
