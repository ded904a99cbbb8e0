#include "array_conversion.hpp"
#include "rules.hpp"

#include <algorithm>
#include <optional>

namespace fuzz {

namespace {

bool is_array_of_objects(value_model const& value) {
    return std::holds_alternative<list<object_model>>(value.payload);
}

/// Whether one element of an array passes for the element kind `T`: nothing empty does, and what
/// else does not convert.
template <class T, class E>
bool passes(E const& element) {
    if constexpr (std::is_same_v<E, value_model>) {
        if (is_empty(element)) return false;
    }
    return to_element<T>(element).code == io_errc::success;
}

/// By what is stored in two payloads of one kind.
template <class T>
bool equal_payloads(T const& left, T const& right) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return true;
    } else if constexpr (std::is_same_v<T, object_model> || std::is_same_v<T, list<object_model>>) {
        return false;
    } else if constexpr (std::is_same_v<T, value_model>) {
        return equal(left, right);
    } else if constexpr (is_list<T>) {
        return std::equal(
            left.begin(), left.end(), right.begin(), right.end(),
            [](auto const& one, auto const& other) { return equal_payloads(one, other); });
    } else {
        return left == right;
    }
}

template <class T>
bool equals_list(list<T> const& left, value_model const& right) {
    if (!is_array(right) || is_array_of_objects(right)) return false;
    if constexpr (std::is_same_v<T, value_model>) {
        return equal_payloads(left, to_values(right).value);
    } else {
        bool const gate = std::visit(
            [](auto const& payload) {
                if constexpr (is_list<std::decay_t<decltype(payload)>>) {
                    return std::all_of(payload.begin(), payload.end(),
                                       [](auto const& each) { return passes<T>(each); });
                } else {
                    return false;
                }
            },
            right.payload);
        return gate && equal_payloads(left, to_list_of<T>(right).value);
    }
}

/// The integers that a payload or its elements are; nothing for all that is no integer.
using integers = std::optional<list<wide_integer>>;

integers integers_of(value_model const& value) {
    return std::visit(
        [](auto const& payload) -> integers {
            using T = std::decay_t<decltype(payload)>;
            if constexpr (is_list<T>) {
                if constexpr (is_integer<element_of_t<T>>) {
                    return list<wide_integer>(payload.begin(), payload.end());
                }
                if (payload.empty() && !std::is_same_v<element_of_t<T>, object_model>) {
                    return list<wide_integer>();
                }
            } else if constexpr (is_integer<T>) {
                return list<wide_integer>{payload};
            }
            return std::nullopt;
        },
        value.payload);
}

/// Two kinds that share a data type: integers by value, and those of 8 bits by their byte. Nothing
/// stored reads as zero.
bool equal_kinds(value_model const& left, value_model const& right) {
    if (is_empty(right)) {
        return std::visit(
            [](auto const& payload) {
                using T = std::decay_t<decltype(payload)>;
                if constexpr (std::is_arithmetic_v<T>) return payload == T();
                return false;
            },
            left.payload);
    }
    integers one = integers_of(left);
    integers other = integers_of(right);
    if (is_array(left) != is_array(right) || !one || !other) return false;
    if (left.type.basic_type == types::i8) {
        for (wide_integer& each : *one) each &= 255;
        for (wide_integer& each : *other) each &= 255;
    }
    return one == other;
}

} // namespace

bool equal_stored(value_model const& left, value_model const& right) {
    if (is_empty(left)) return true;
    if (left.payload.index() != right.payload.index()) return equal_kinds(left, right);
    return std::visit(
        [&](auto const& payload) {
            using T = std::decay_t<decltype(payload)>;
            return equal_payloads(payload, std::get<T>(right.payload));
        },
        left.payload);
}

bool equals_one_way(value_model const& left, value_model const& right) {
    return std::visit(
        [&](auto const& payload) {
            using T = std::decay_t<decltype(payload)>;
            if constexpr (std::is_same_v<T, std::nullptr_t>) {
                return right.type == io_data_type();
            } else if constexpr (std::is_same_v<T, object_model> ||
                                 std::is_same_v<T, list<object_model>>) {
                return false;
            } else if constexpr (is_list<T>) {
                return equals_list(payload, right);
            } else {
                if (is_empty(right)) return false;
                auto const result = to_scalar_of<T>(right);
                return result.code == io_errc::success && result.value == payload;
            }
        },
        left.payload);
}

bool equal(value_model const& left, value_model const& right) {
    if (left.type == right.type) return equal_stored(left, right);
    return equals_one_way(left, right) || equals_one_way(right, left);
}

} // namespace fuzz
