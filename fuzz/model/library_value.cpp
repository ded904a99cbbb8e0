#include "library_value.hpp"

#include "support/check.hpp"

#include <cmath>
#include <initializer_list>

namespace fuzz {

namespace {

using v2::utility::array;

template <class T>
struct library_type {
    using type = T;
};
template <>
struct library_type<std::string> {
    using type = v2::utility::string;
};
template <>
struct library_type<object_model> {
    using type = v2::io_object;
};
template <>
struct library_type<value_model> {
    using type = v2::io_value;
};
template <class T>
struct library_type<list<T>> {
    using type = array<typename library_type<T>::type>;
};

template <class T>
auto made_payload(T const& payload) {
    using target = typename library_type<T>::type;
    if constexpr (is_list<T>) {
        target result(static_cast<unsigned int>(payload.size()));
        unsigned int next = 0;
        for (auto const& each : payload) result[next++] = made_payload(each);
        return result;
    } else if constexpr (std::is_same_v<T, object_model> || std::is_same_v<T, value_model>) {
        return made(payload);
    } else {
        return target(payload);
    }
}

template <class T, class Model>
bool same_payload(T const& payload, Model const& model) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return true;
    } else if constexpr (std::is_floating_point_v<T>) {
        return (std::isnan(payload) ? std::isnan(model) : payload == model) &&
               std::signbit(payload) == std::signbit(model);
    } else if constexpr (std::is_arithmetic_v<T>) {
        return payload == model;
    } else if constexpr (std::is_same_v<T, v2::utility::string>) {
        return same_text(payload, model);
    } else if constexpr (is_list<Model>) {
        if (payload.size() != model.size()) return false;
        unsigned int next = 0;
        for (auto const& each : model) {
            if (!same_payload(payload[next++], each)) return false;
        }
        return true;
    } else {
        return same(payload, model);
    }
}

} // namespace

bool same_text(v2::utility::string_view text, std::string const& model) {
    return static_cast<std::string_view>(text) == model;
}

v2::io_structure_type made(structure_model const& model) {
    v2::io_structure_type result{v2::utility::string(model.name)};
    for (auto const& [name, type] : model.members) result.set_member(name, type);
    return result;
}

v2::io_object made(object_model const& model) {
    v2::io_object result(model.type, made(model.structure));
    for (auto const& [key, value] : model.values) {
        v2::io_error error;
        result.set(key, made(value), error);
        check(error.ok(), "a member that an object holds can be set");
    }
    return result;
}

v2::io_value made(value_model const& model) {
    return std::visit(
        [&](auto const& payload) { return v2::io_value(model.type, made_payload(payload)); },
        model.payload);
}

bool same(v2::io_structure_type const& structure, structure_model const& model) {
    if (!same_text(structure.name(), model.name)) return false;
    auto expected = model.members.begin();
    for (auto const& [name, type] : structure) {
        if (expected == model.members.end()) return false;
        if (!same_text(name, expected->first) || type != expected->second) return false;
        ++expected;
    }
    return expected == model.members.end();
}

bool same(v2::io_object const& object, object_model const& model) {
    if (object.type() != model.type) return false;
    auto expected = model.values.begin();
    for (auto const& [key, value] : object) {
        if (expected == model.values.end()) return false;
        if (!same_text(key, expected->first) || !same(value, expected->second)) return false;
        ++expected;
    }
    return expected == model.values.end();
}

bool same(v2::io_value const& value, value_model const& model) {
    if (value.data_type() != model.type) return false;
    if (value.index() != static_cast<int>(model.payload.index())) return false;
    return std::visit(
        [&](auto const& payload) {
            using model_type = std::decay_t<decltype(payload)>;
            using T = typename library_type<model_type>::type;
            T const* const stored = value.get_if<T>();
            return stored != nullptr && same_payload(*stored, payload);
        },
        model.payload);
}

} // namespace fuzz
