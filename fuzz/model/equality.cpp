#include "array_conversion.hpp"
#include "rules.hpp"

#include <algorithm>

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

/// Numbers of two kinds that share a data type: by value, and the 8-bit kinds by their byte.
template <class T, class Other>
bool equal_kinds(T const& left, Other const& right) {
    if constexpr (is_list<T> && is_list<Other>) {
        using L = element_of_t<T>;
        using R = element_of_t<Other>;
        if constexpr (is_integer<L> && is_integer<R>) {
            return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                              [](L one, R other) { return equal_kinds(one, other); });
        } else {
            return left.empty() && right.empty() && !std::is_same_v<L, object_model> &&
                   !std::is_same_v<R, object_model>;
        }
    } else if constexpr (std::is_arithmetic_v<T> && std::is_same_v<Other, std::nullptr_t>) {
        return left == T(); // nothing stored reads as zero
    } else if constexpr (is_integer<T> && is_integer<Other>) {
        if constexpr (sizeof(T) == 1 && sizeof(Other) == 1) {
            return static_cast<unsigned char>(left) == static_cast<unsigned char>(right);
        } else {
            return static_cast<wide_integer>(left) == static_cast<wide_integer>(right);
        }
    } else {
        return false;
    }
}

} // namespace

bool equal_stored(value_model const& left, value_model const& right) {
    return std::visit(
        [](auto const& one, auto const& other) {
            using T = std::decay_t<decltype(one)>;
            using Other = std::decay_t<decltype(other)>;
            if constexpr (std::is_same_v<T, std::nullptr_t>) {
                return true;
            } else if constexpr (std::is_same_v<T, Other>) {
                return equal_payloads(one, other);
            } else {
                return equal_kinds(one, other);
            }
        },
        left.payload, right.payload);
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
