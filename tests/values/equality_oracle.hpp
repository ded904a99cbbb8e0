#pragma once

#include "sample_payloads.hpp"
#include "scalar_oracle.hpp"
#include "value_image.hpp"

#include <cstring>
#include <optional>
#include <vector>

/// \file
/// When values are equal, written from the tables: through the oracle of the scalar conversions,
/// each direction by itself.

namespace whole_values {

using namespace values_test;

/// What a scalar payload is.
template <class T>
any_source source_of(T const& payload) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return source::nothing{};
    } else if constexpr (std::is_same_v<T, bool>) {
        return source::truth{payload};
    } else if constexpr (std::is_same_v<T, float>) {
        return source::single_real{static_cast<double>(payload)};
    } else if constexpr (std::is_same_v<T, double>) {
        return source::double_real{payload};
    } else if constexpr (std::is_integral_v<T>) {
        return source::number{row_of<T>(), exact(payload)};
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return source::text{payload.str()};
    } else if constexpr (std::is_same_v<T, io_object>) {
        return source::structure{};
    } else {
        return source::elements{payload.size()};
    }
}

inline any_source source_of_value(io_value const& value) {
    return value.visit([](auto const& payload) { return source_of(payload); });
}

/// What the elements of an array are; nothing where the value is no array.
inline std::optional<std::vector<any_source>> elements_of(io_value const& value) {
    using sources = std::optional<std::vector<any_source>>;
    return value.visit([](auto const& payload) -> sources {
        using T = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
        if constexpr (detail::is_array<T>) {
            std::vector<any_source> result;
            for (auto const& each : payload) {
                if constexpr (std::is_same_v<T, array<io_value>>) {
                    result.push_back(source_of_value(each));
                } else {
                    result.push_back(source_of(each));
                }
            }
            return result;
        } else {
            return std::nullopt;
        }
    });
}

/// The elements that an array becomes as an array of values.
inline std::vector<io_value> as_values(io_value const& value) {
    return value.visit([](auto const& payload) {
        using T = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
        std::vector<io_value> result;
        if constexpr (std::is_same_v<T, array<char>>) {
            std::string const bytes(payload.begin(), payload.end());
            result = {io_value(bytes.substr(0, bytes.find('\0'))), io_value("")};
        } else if constexpr (detail::is_array<T>) {
            for (auto const& each : payload) result.push_back(io_value(each));
        }
        return result;
    });
}

inline bool equal_by_rules(io_value const& left, io_value const& right);

template <class T>
bool equal_payloads(T const& left, T const& right) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return true;
    } else if constexpr (std::is_arithmetic_v<T>) {
        return left == right;
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return left.str() == right.str();
    } else if constexpr (std::is_same_v<T, io_object> || std::is_same_v<T, array<io_object>>) {
        return false;
    } else if constexpr (std::is_same_v<T, io_value>) {
        return equal_by_rules(left, right);
    } else {
        if (left.size() != right.size()) return false;
        for (unsigned int i = 0; i < left.size(); ++i) {
            if (!equal_payloads(left[i], right[i])) return false;
        }
        return true;
    }
}

/// An array of the elements, or nothing where one does not pass.
template <class U>
std::optional<array<U>> gated(std::vector<any_source> const& elements) {
    array<U> result(static_cast<unsigned int>(elements.size()));
    unsigned int next = 0;
    for (any_source const& each : elements) {
        if (std::holds_alternative<source::nothing>(each)) return std::nullopt;
        outcome<U> const converted = scalar_oracle<U>()(each);
        if (converted.code != io_errc::success) return std::nullopt;
        result[next++] = converted.value;
    }
    return result;
}

/// One direction: the other fits the kind of the left one and is then the same.
inline bool equals_by_rules(io_value const& left, io_value const& right) {
    return left.visit([&](auto const& payload) {
        using T = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
        using U = detail::array_element_t<T>;
        constexpr int objects = detail::index_of<array<io_object>>;
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            return right.data_type() == io_data_type();
        } else if constexpr (std::is_same_v<T, io_object> || std::is_same_v<U, io_object>) {
            return false;
        } else if constexpr (std::is_same_v<U, io_value>) {
            if (!right.is_array() || right.index() == objects) return false;
            std::vector<io_value> const others = as_values(right);
            return equal_payloads(payload, array<io_value>(others));
        } else if constexpr (detail::is_array<T>) {
            auto const elements = elements_of(right);
            if (!elements || right.index() == objects) return false;
            auto const converted = gated<U>(*elements);
            return converted && equal_payloads(payload, *converted);
        } else {
            any_source const other = source_of_value(right);
            if (std::holds_alternative<source::nothing>(other)) return false;
            outcome<T> const converted = scalar_oracle<T>()(other);
            return converted.code == io_errc::success && equal_payloads(payload, converted.value);
        }
    });
}

template <class T>
T read_as(io_value const& value) {
    T result{};
    value_image const image = image_of(value);
    std::memcpy(&result, image.data() + payload_offset, sizeof result);
    return result;
}

/// The elements of two arrays of numbers whose alternatives differ.
template <class T, class Other>
bool equal_foreign_arrays(array<T> const& left, array<Other> const& right) {
    using L = detail::array_element_t<array<T>>;
    constexpr bool signed_pair = (std::is_same_v<T, int> && std::is_same_v<Other, long>) ||
                                 (std::is_same_v<T, long> && std::is_same_v<Other, int>);
    constexpr bool unsigned_pair =
        (std::is_same_v<T, unsigned int> && std::is_same_v<Other, unsigned long>) ||
        (std::is_same_v<T, unsigned long> && std::is_same_v<Other, unsigned int>);
    if (left.size() != right.size()) return false;
    for (unsigned int i = 0; i < left.size(); ++i) {
        if constexpr (signed_pair || unsigned_pair) {
            if (!(exact(left[i]) == exact(right[i]))) return false;
        } else if constexpr (sizeof(T) == sizeof(Other)) {
            if constexpr (std::is_floating_point_v<T>) {
                L other;
                std::memcpy(&other, static_cast<void const*>(right.data() + i), sizeof other);
                if (!(left[i] == other)) return false;
            } else if (std::memcmp(left.data() + i, right.data() + i, sizeof(T)) != 0) {
                return false;
            }
        } else {
            return false;
        }
    }
    return true;
}

template <class Left>
bool equal_stored_array(Left const& left, io_value const& right) {
    using T = detail::array_element_t<Left>;
    return right.visit([&](auto const& other) {
        using Right = std::remove_cv_t<std::remove_reference_t<decltype(other)>>;
        using U = detail::array_element_t<Right>;
        if constexpr (!detail::is_array<Right> || std::is_same_v<U, io_object>) {
            return false;
        } else if constexpr (std::is_arithmetic_v<T> && std::is_arithmetic_v<U>) {
            return equal_foreign_arrays(left, other);
        } else {
            return left.size() == 0 && other.size() == 0;
        }
    });
}

/// Two values of one type by what they store, also where their alternatives differ.
inline bool equal_stored(io_value const& left, io_value const& right) {
    return left.visit([&](auto const& payload) {
        using T = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
        constexpr bool is_object =
            std::is_same_v<T, io_object> || std::is_same_v<T, array<io_object>>;
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            return true;
        } else if constexpr (is_object) {
            return false;
        } else {
            if (T const* const other = right.get_if<T>()) return equal_payloads(payload, *other);
            if constexpr (std::is_arithmetic_v<T>) {
                int const pair[] = {left.index(), right.index()};
                auto const is_pair = [&](int first, int second) {
                    return (pair[0] == first && pair[1] == second) ||
                           (pair[0] == second && pair[1] == first);
                };
                if (is_pair(4, 5) || is_pair(9, 10)) {
                    auto const number = std::get<source::number>(source_of_value(right)).value;
                    if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
                        return exact(payload) == number;
                    }
                }
                if constexpr (std::is_same_v<T, bool>) {
                    return read_as<unsigned char>(left) == read_as<unsigned char>(right);
                } else {
                    return payload == read_as<T>(right);
                }
            } else if constexpr (detail::is_array<T>) {
                return equal_stored_array(payload, right);
            } else {
                return false;
            }
        }
    });
}

inline bool equal_by_rules(io_value const& left, io_value const& right) {
    if (left.data_type() == right.data_type()) return equal_stored(left, right);
    return equals_by_rules(left, right) || equals_by_rules(right, left);
}

} // namespace whole_values
