#pragma once

#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "scalar_source.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>
#include <type_traits>
#include <variant>

/// \file
/// What each scalar conversion must give, written down as tables and decimal texts. It shares
/// nothing with the library: numbers are sign and magnitude, texts are compared as digits.

namespace values_test {

using tavi::ioapi::v2::io_errc;

template <class T>
struct outcome {
    T value{};
    io_errc code = io_errc::success;
};

namespace oracle {

using source::row;

// --- integers to integers ---

struct range {
    bool exact;
    exact_integer lowest;
    exact_integer highest;
};
inline constexpr range exact_range{true, {}, {}};
constexpr range within(long long lowest, unsigned long long highest) {
    return {false, exact(lowest), exact(highest)};
}

inline constexpr unsigned long long max_i32 = 2147483647;
inline constexpr unsigned long long max_u32 = 4294967295;
inline constexpr unsigned long long max_i64 = 9223372036854775807;
inline constexpr long long min_i32 = -2147483648LL;

// Rows are sources, columns are targets, both in the order of `row`.
inline constexpr range integer_ranges[8][8] = {
    // to i8, i16, i32, i64, u8, u16, u32, u64
    {exact_range, exact_range, exact_range, exact_range, // from i8
     within(0, 127), within(0, 127), within(0, 127), within(0, 127)},
    {within(-128, 127), exact_range, exact_range, exact_range, // from i16
     within(0, 255), within(0, 32767), within(0, 32767), within(0, 32767)},
    {within(-128, 127), within(-32768, 32767), exact_range, exact_range, // from i32
     within(0, 255), within(0, 65535), within(0, max_i32), within(0, max_i32)},
    {within(-128, 127), within(-32768, 32767), within(min_i32, max_i32), exact_range, // from i64
     within(0, 255), within(0, 65535), within(0, max_u32), within(0, max_i64)},
    {within(0, 127), exact_range, exact_range, exact_range, // from u8 and char
     exact_range, exact_range, exact_range, exact_range},
    {within(0, 127), within(0, 32767), exact_range, exact_range, // from u16
     within(0, 255), exact_range, exact_range, exact_range},
    {within(0, 127), within(0, 32767), within(0, max_i32), exact_range, // from u32
     within(0, 255), within(0, 65535), exact_range, exact_range},
    {within(0, 127), within(0, 32767), within(0, max_i32), within(0, max_i64), // from u64
     within(0, 255), within(0, 65535), within(0, max_u32), exact_range},
};

template <class T>
outcome<T> integer_from(source::number const& from) {
    range const& allowed =
        integer_ranges[static_cast<int>(from.type)][static_cast<int>(row_of<T>())];
    if (allowed.exact || (allowed.lowest <= from.value && from.value <= allowed.highest)) {
        return {as_type<T>(from.value), io_errc::success};
    }
    return {T(), io_errc::value_too_large};
}

// --- the limits up to which a format is trusted ---

inline constexpr unsigned long long single_limit = 16777215;         // 2^24 - 1
inline constexpr unsigned long long double_limit = 9007199254740991; // 2^53 - 1

/// 2^64 - 1 where the format holds every 64-bit integer.
template <class Real>
constexpr unsigned long long integer_limit() {
    if constexpr (std::is_same_v<Real, float>) return single_limit;
    if constexpr (std::is_same_v<Real, double>) return double_limit;
    constexpr int digits = std::numeric_limits<long double>::digits;
    if constexpr (digits == 53) return double_limit;
    return digits >= 64 ? 18446744073709551615ULL : (1ULL << digits % 64) - 1;
}

// --- integers to floating point ---

template <class T>
outcome<T> real_from(source::number const& from) {
    if (from.value.magnitude > integer_limit<T>()) return {T(), io_errc::value_too_large};
    T const magnitude = static_cast<T>(from.value.magnitude);
    return {from.value.negative ? -magnitude : magnitude, io_errc::success};
}

// --- floating point to floating point ---

inline constexpr double float_magnitude_limit = 3.4028234663852886e+38;

template <class T>
outcome<T> real_from(source::single_real from) {
    return {static_cast<T>(from.value), io_errc::success};
}

template <class T>
outcome<T> real_from(source::double_real from) {
    if constexpr (std::is_same_v<T, float>) {
        bool const within_limits =
            -float_magnitude_limit <= from.value && from.value <= float_magnitude_limit;
        if (!within_limits) return {0, io_errc::value_too_large};
    }
    return {static_cast<T>(from.value), io_errc::success};
}

// --- floating point to integers ---

inline bool passes_gate(double value, unsigned long long limit) {
    return std::fabs(value) <= static_cast<double>(limit) && std::floor(value) == value;
}

constexpr exact_integer clamp(exact_integer value, exact_integer lowest, exact_integer highest) {
    if (value <= lowest) return lowest;
    return highest <= value ? highest : value;
}

constexpr exact_integer low_bits(exact_integer value, int bits, bool is_signed) {
    unsigned long long const modulus = 1ULL << bits;
    unsigned long long low = value.magnitude % modulus;
    if (value.negative && low != 0) low = modulus - low;
    return is_signed && low >= modulus / 2 ? whole(true, modulus - low) : whole(false, low);
}

constexpr exact_integer ungated(exact_integer value, row target) {
    exact_integer const as_i32 = clamp(value, exact(min_i32), exact(max_i32));
    exact_integer const as_u32 = clamp(value, exact(0), exact(max_u32));
    switch (target) {
    case row::i64: return value;
    case row::u64: return value.negative ? exact(0) : value;
    case row::i32: return as_i32;
    case row::u32: return as_u32;
    case row::i16: return low_bits(as_i32, 16, true);
    case row::i8: return low_bits(as_i32, 8, true);
    case row::u16: return low_bits(as_u32, 16, false);
    case row::u8: return low_bits(as_u32, 8, false);
    }
    return {};
}

inline exact_integer whole_number_of(double value) {
    return whole(value < 0, static_cast<unsigned long long>(std::fabs(value)));
}

template <class T>
outcome<T> integer_from_real(double value, unsigned long long limit) {
    if (!passes_gate(value, limit)) return {T(), io_errc::value_too_large};
    return {as_type<T>(ungated(whole_number_of(value), row_of<T>())), io_errc::success};
}

// --- texts to numbers ---

inline std::string without_leading_zeros(std::string const& digits) {
    std::size_t const first = digits.find_first_not_of('0');
    return first == std::string::npos ? "0" : digits.substr(first);
}

/// Whether one run of digits without leading zeros states at most the number of the other.
inline bool at_most(std::string const& digits, std::string const& limit) {
    return digits.size() != limit.size() ? digits.size() < limit.size() : digits <= limit;
}

inline char const* largest_text(row type, bool negative) {
    switch (type) {
    case row::i8: return negative ? "128" : "127";
    case row::i16: return negative ? "32768" : "32767";
    case row::i32: return negative ? "2147483648" : "2147483647";
    case row::i64: return negative ? "9223372036854775808" : "9223372036854775807";
    case row::u8: return "255";
    case row::u16: return "65535";
    case row::u32: return "4294967295";
    case row::u64: return "18446744073709551615";
    }
    return "";
}

template <class T>
outcome<T> integer_from(source::text const& from) {
    if (from.value.empty()) return {};
    row const target = row_of<T>();
    bool const takes_sign = target <= row::i64;
    bool const negative = takes_sign && from.value.front() == '-';
    std::string const digits = from.value.substr(negative ? 1 : 0);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return {T(), io_errc::incompatible_type};
    }
    std::string const significant = without_leading_zeros(digits);
    if (!at_most(significant, largest_text(target, negative))) {
        return {T(), io_errc::incompatible_type};
    }
    unsigned long long magnitude = 0;
    for (char const digit : significant) {
        magnitude = magnitude * 10 + static_cast<unsigned long long>(digit - '0');
    }
    return {as_type<T>(whole(negative, magnitude)), io_errc::success};
}

// The standard library says what a text in floating point is.
template <class T>
outcome<T> real_from(source::text const& from) {
    if (from.value.empty()) return {};
    T result{};
    char const* const last = from.value.data() + from.value.size();
    auto const [end, error] =
        std::from_chars(from.value.data(), last, result, std::chars_format::general);
    if (error != std::errc() || end != last) return {T(), io_errc::incompatible_type};
    return {result, io_errc::success};
}

// --- text forms ---

template <class Real>
std::string shortest_text(Real value) {
    char buffer[200];
    auto const [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

} // namespace oracle

/// What the conversion of `what` to `T` must give.
template <class T>
class scalar_oracle {
    static constexpr bool to_truth = std::is_same_v<T, bool>;
    static constexpr bool to_integer = std::is_integral_v<T> && !to_truth;
    static constexpr bool to_real = std::is_floating_point_v<T>;
    static constexpr bool to_number = to_integer || to_real;

    static outcome<T> refused(io_errc code) { return {T(), code}; }

public:
    outcome<T> operator()(any_source const& what) const { return std::visit(*this, what); }

    outcome<T> operator()(source::nothing) const { return {}; }

    outcome<T> operator()(source::truth from) const {
        if constexpr (to_number) return refused(io_errc::value_too_large);
        if constexpr (to_truth) return {from.value, io_errc::success};
        if constexpr (!to_number && !to_truth) return {T(from.value ? "true" : "false")};
    }

    outcome<T> operator()(source::number const& from) const {
        if constexpr (to_truth) {
            return {from.value.magnitude != 0};
        } else if constexpr (to_integer) {
            return oracle::integer_from<T>(from);
        } else if constexpr (to_real) {
            return oracle::real_from<T>(from);
        } else {
            return {T(digits_of(from.value))};
        }
    }

    outcome<T> operator()(source::single_real from) const {
        if constexpr (to_truth) {
            return {!(from.value == 0.0)};
        } else if constexpr (to_integer) {
            return oracle::integer_from_real<T>(from.value, oracle::single_limit);
        } else if constexpr (to_real) {
            return oracle::real_from<T>(from);
        } else {
            return {T(oracle::shortest_text(static_cast<float>(from.value)))};
        }
    }

    outcome<T> operator()(source::double_real from) const {
        if constexpr (to_truth) {
            return {!(from.value == 0.0)};
        } else if constexpr (to_integer) {
            return oracle::integer_from_real<T>(from.value, oracle::double_limit);
        } else if constexpr (to_real) {
            return oracle::real_from<T>(from);
        } else {
            return {T(oracle::shortest_text(from.value))};
        }
    }

    outcome<T> operator()(source::text const& from) const {
        if constexpr (to_truth) {
            outcome<double> const parsed = oracle::real_from<double>(from);
            return {parsed.code != io_errc::success || !(parsed.value == 0.0)};
        } else if constexpr (to_integer) {
            return oracle::integer_from<T>(from);
        } else if constexpr (to_real) {
            return oracle::real_from<T>(from);
        } else {
            return {T(from.value)};
        }
    }

    outcome<T> operator()(source::structure) const {
        if constexpr (to_truth) return {true};
        return refused(io_errc::incompatible_type);
    }

    outcome<T> operator()(source::elements from) const {
        if constexpr (to_truth) return {from.count != 0};
        return refused(io_errc::incompatible_type);
    }
};

/// Whether two results are the same: NaN is, the zeros are not, and the sign of a NaN counts.
template <class T>
bool same_result(T const& left, T const& right) {
    if constexpr (std::is_floating_point_v<T>) {
        return (std::isnan(left) ? std::isnan(right) : left == right) &&
               std::signbit(left) == std::signbit(right);
    } else {
        return left == right;
    }
}

} // namespace values_test
