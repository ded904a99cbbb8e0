#pragma once

#include <tavi/ioapi/v2/io_errc.hpp>

#include "number_text.hpp"
#include "value_model.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

/// \file
/// What each conversion to a scalar must give, by arithmetic in 128 bits. Texts stand as
/// `std::string` on both sides.

namespace fuzz {

using v2::io_errc;

template <class T>
struct outcome {
    T value{};
    io_errc code = io_errc::success;
};

template <class T>
outcome<T> refused(io_errc code) {
    return {T(), code};
}

/// `char` counts from 0 to 255.
template <class T>
using counted = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;

template <class T>
inline constexpr bool is_integer = std::is_integral_v<T> && !std::is_same_v<T, bool>;

template <class T>
inline constexpr auto lowest_of = static_cast<wide_integer>(std::numeric_limits<counted<T>>::min());
template <class T>
inline constexpr auto highest_of =
    static_cast<wide_integer>(std::numeric_limits<counted<T>>::max());

/// The largest magnitude of a whole number that a format is trusted with.
template <class Real>
inline constexpr wide_integer trusted = (static_cast<wide_integer>(1)
                                         << std::numeric_limits<Real>::digits) -
                                        1;

template <class T>
T as_integer(wide_integer number) {
    return static_cast<T>(static_cast<counted<T>>(number));
}

inline wide_integer clamped(wide_integer number, wide_integer lowest, wide_integer highest) {
    if (number < lowest) return lowest;
    return number > highest ? highest : number;
}

/// A whole number that has passed the limit of its format, on its way to an integer.
template <class T>
T cut(wide_integer number) {
    if constexpr (std::is_signed_v<counted<T>>) {
        if constexpr (sizeof(T) < 8) number = clamped(number, lowest_of<int>, highest_of<int>);
    } else {
        wide_integer const highest =
            sizeof(T) < 8 ? highest_of<unsigned int> : highest_of<unsigned long long>;
        number = clamped(number, 0, highest);
    }
    return as_integer<T>(number); // keeps the low bits
}

template <class T, class Real>
outcome<T> integer_from_real(Real number) {
    bool const passes = std::isfinite(number) && std::trunc(number) == number &&
                        std::fabs(number) <= static_cast<Real>(trusted<Real>);
    if (!passes) return refused<T>(io_errc::value_too_large);
    return {cut<T>(static_cast<wide_integer>(number))};
}

template <class T, class Real>
outcome<T> real_from_real(Real number) {
    if constexpr (std::is_same_v<T, float> && std::is_same_v<Real, double>) {
        bool const within = std::fabs(number) <= double{std::numeric_limits<float>::max()};
        if (!within) return refused<T>(io_errc::value_too_large);
    }
    return {static_cast<T>(number)};
}

template <class T>
outcome<T> integer_from_text(std::string const& text) {
    if (text.empty()) return {};
    auto const number = integer_of(text, std::is_signed_v<counted<T>>, lowest_of<T>, highest_of<T>);
    return number ? outcome<T>{as_integer<T>(*number)} : refused<T>(io_errc::incompatible_type);
}

template <class T>
outcome<T> real_from_text(std::string const& text) {
    if (text.empty()) return {};
    auto const number = real_of<T>(text);
    return number ? outcome<T>{*number} : refused<T>(io_errc::incompatible_type);
}

inline std::string digits_of(wide_integer number) {
    std::string digits;
    bool const negative = number < 0;
    for (wide_integer rest = negative ? -number : number; rest != 0 || digits.empty(); rest /= 10) {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    return negative ? "-" + digits : digits;
}

/// The standard library says what the shortest text of a number is.
template <class Real>
std::string shortest_text(Real number) {
    char buffer[64];
    auto const written = std::to_chars(buffer, buffer + sizeof buffer, number);
    return {buffer, written.ptr};
}

template <class P>
outcome<bool> to_truth(P const& payload) {
    if constexpr (std::is_same_v<P, std::nullptr_t>) {
        return {false};
    } else if constexpr (std::is_same_v<P, std::string>) {
        if (payload.empty()) return {false};
        auto const number = real_of<double>(payload);
        return {!number || *number != 0.0};
    } else if constexpr (std::is_same_v<P, object_model>) {
        return {true};
    } else if constexpr (is_list<P>) {
        return {!payload.empty()};
    } else {
        return {payload != P()};
    }
}

template <class T, class P>
outcome<T> to_number(P const& payload) {
    if constexpr (std::is_same_v<P, std::nullptr_t>) {
        return {};
    } else if constexpr (std::is_same_v<P, bool>) {
        return refused<T>(io_errc::value_too_large);
    } else if constexpr (is_integer<P>) {
        auto const number = static_cast<wide_integer>(static_cast<counted<P>>(payload));
        constexpr bool to_integer = is_integer<T>;
        if constexpr (to_integer) {
            bool const fits = number >= lowest_of<T> && number <= highest_of<T>;
            if (fits) return {as_integer<T>(number)};
        } else {
            bool const fits = number >= -trusted<T> && number <= trusted<T>;
            if (fits) return {static_cast<T>(number)};
        }
        return refused<T>(io_errc::value_too_large);
    } else if constexpr (std::is_floating_point_v<P>) {
        if constexpr (is_integer<T>) return integer_from_real<T>(payload);
        if constexpr (!is_integer<T>) return real_from_real<T>(payload);
    } else if constexpr (std::is_same_v<P, std::string>) {
        if constexpr (is_integer<T>) return integer_from_text<T>(payload);
        if constexpr (!is_integer<T>) return real_from_text<T>(payload);
    } else {
        return refused<T>(io_errc::incompatible_type);
    }
}

template <class P>
outcome<std::string> to_text(P const& payload) {
    if constexpr (std::is_same_v<P, std::nullptr_t>) {
        return {};
    } else if constexpr (std::is_same_v<P, bool>) {
        return {payload ? "true" : "false"};
    } else if constexpr (is_integer<P>) {
        return {digits_of(static_cast<counted<P>>(payload))};
    } else if constexpr (std::is_floating_point_v<P>) {
        return {shortest_text(payload)};
    } else if constexpr (std::is_same_v<P, std::string>) {
        return {payload};
    } else {
        return refused<std::string>(io_errc::incompatible_type);
    }
}

/// The conversion of one payload to a truth value, a number or a text.
template <class T, class P>
outcome<T> to_scalar(P const& payload) {
    if constexpr (std::is_same_v<T, bool>) {
        return to_truth(payload);
    } else if constexpr (std::is_same_v<T, std::string>) {
        return to_text(payload);
    } else {
        return to_number<T>(payload);
    }
}

template <class T>
outcome<T> to_scalar_of(value_model const& value) {
    return std::visit([](auto const& payload) { return to_scalar<T>(payload); }, value.payload);
}

/// Whether two results are one: any NaN is, with its sign, and the zeros are two.
template <class T>
bool same_result(T const& left, T const& right) {
    if constexpr (std::is_floating_point_v<T>) {
        return (std::isnan(left) ? std::isnan(right) : left == right) &&
               std::signbit(left) == std::signbit(right);
    } else {
        return left == right;
    }
}

} // namespace fuzz
