#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include "exact_float.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

/// \file
/// One number of 32 bits in floating point to every type of number, to a truth value, and through
/// text and back, against integer arithmetic on its bits.

namespace properties_test {

namespace v2 = tavi::ioapi::v2;

namespace judged {

inline constexpr int refused = static_cast<int>(v2::io_errc::value_too_large);

/// A whole number on its way to an integer: at least 0 for an unsigned one, then the low bits. No
/// trusted number reaches another bound.
template <class T>
T cut(std::int32_t whole) {
    using counted = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;
    if (std::is_unsigned_v<counted> && whole < 0) return T(0);
    return static_cast<T>(static_cast<counted>(whole));
}

template <class T>
bool integer_holds(v2::io_value const& value, exact_float number, v2::io_error& error) {
    T const given = v2::detail::get_as<T>(value, error);
    if (!number.trusted()) return error.code() == refused && given == T();
    return error.ok() && given == cut<T>(number.whole());
}

template <class Real>
bool same_real(Real given, exact_float number) {
    if (std::signbit(given) != number.negative()) return false;
    if (number.nan()) return std::isnan(given);
    if (!number.finite()) return std::isinf(given);
    return given == number.widened<Real>();
}

template <class Real>
bool real_holds(v2::io_value const& value, exact_float number, v2::io_error& error) {
    Real const given = v2::detail::get_as<Real>(value, error);
    return error.ok() && same_real(given, number);
}

inline bool truth_holds(v2::io_value const& value, exact_float number, v2::io_error& error) {
    bool const given = v2::detail::get_as<bool>(value, error);
    return error.ok() && given == !number.zero();
}

/// The text is that of the standard library, and reads back.
inline bool text_holds(v2::io_value const& value, exact_float number, v2::io_error& error) {
    v2::utility::string text = v2::detail::get_as<v2::utility::string>(value, error);
    if (error.failed()) return false;
    char buffer[64];
    auto const written = std::to_chars(buffer, buffer + sizeof buffer, number.value());
    std::string_view const expected(buffer, static_cast<std::size_t>(written.ptr - buffer));
    if (static_cast<std::string_view>(text) != expected) return false;
    v2::io_value const stored(std::move(text));
    float const again = v2::detail::get_as<float>(stored, error);
    return error.ok() && same_real(again, number);
}

} // namespace judged

/// \return null, or the target that is not as it must be.
inline char const* failed_conversion_of(std::uint32_t bits) {
    exact_float const number(bits);
    v2::io_value const value(number.value());
    v2::io_error error;
    if (!judged::integer_holds<char>(value, number, error)) return "char";
    if (!judged::integer_holds<signed char>(value, number, error)) return "signed char";
    if (!judged::integer_holds<unsigned char>(value, number, error)) return "unsigned char";
    if (!judged::integer_holds<short>(value, number, error)) return "short";
    if (!judged::integer_holds<unsigned short>(value, number, error)) return "unsigned short";
    if (!judged::integer_holds<int>(value, number, error)) return "int";
    if (!judged::integer_holds<unsigned int>(value, number, error)) return "unsigned int";
    if (!judged::integer_holds<long>(value, number, error)) return "long";
    if (!judged::integer_holds<unsigned long>(value, number, error)) return "unsigned long";
    if (!judged::integer_holds<long long>(value, number, error)) return "long long";
    if (!judged::integer_holds<unsigned long long>(value, number, error))
        return "unsigned long long";
    if (!judged::real_holds<float>(value, number, error)) return "float";
    if (!judged::real_holds<double>(value, number, error)) return "double";
    if (!judged::real_holds<long double>(value, number, error)) return "long double";
    if (!judged::truth_holds(value, number, error)) return "bool";
    if (!judged::text_holds(value, number, error)) return "text";
    return nullptr;
}

} // namespace properties_test
