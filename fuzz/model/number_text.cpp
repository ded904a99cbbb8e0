#include "number_text.hpp"

#include <gmp.h>
#include <mpfr.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace fuzz {

namespace {

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

std::size_t digits_at(std::string_view text, std::size_t at) {
    std::size_t const from = at;
    while (at < text.size() && is_digit(text[at])) ++at;
    return at - from;
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& each : result) {
        if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
    }
    return result;
}

/// `nan`, or `nan(...)` with letters, digits and underscores.
bool is_nan_word(std::string const& word) {
    if (word == "nan") return true;
    if (word.size() < 5 || word.compare(0, 4, "nan(") != 0 || word.back() != ')') return false;
    return std::all_of(word.begin() + 4, word.end() - 1, [](char each) {
        return is_digit(each) || (each >= 'a' && each <= 'z') || each == '_';
    });
}

/// Digits with a point somewhere, and perhaps an exponent.
bool is_decimal(std::string_view text) {
    std::size_t at = digits_at(text, 0);
    std::size_t digits = at;
    if (at < text.size() && text[at] == '.') {
        std::size_t const fraction = digits_at(text, at + 1);
        at += 1 + fraction;
        digits += fraction;
    }
    if (digits == 0) return false;
    if (at == text.size()) return true;
    if (text[at] != 'e' && text[at] != 'E') return false;
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    std::size_t const exponent = digits_at(text, at);
    return exponent > 0 && at + exponent == text.size();
}

class big_integer {
public:
    explicit big_integer(std::string const& digits) {
        mpz_init_set_str(number_, digits.c_str(), 10);
    }
    big_integer(big_integer const&) = delete;
    big_integer& operator=(big_integer const&) = delete;
    ~big_integer() { mpz_clear(number_); }

    [[nodiscard]] bool fits_bits(std::size_t bits) const {
        return mpz_sizeinbase(number_, 2) <= bits;
    }
    /// Of a number of at most 64 bits.
    [[nodiscard]] unsigned long low_word() const { return mpz_get_ui(number_); }

private:
    mpz_t number_;
};

/// The range of a format, in the exponents of a library that has no subnormal numbers by itself.
template <class Real>
class narrowed_range {
    using limits = std::numeric_limits<Real>;

public:
    narrowed_range() : lowest_(mpfr_get_emin()), highest_(mpfr_get_emax()) {
        mpfr_set_emin(limits::min_exponent - limits::digits + 1);
        mpfr_set_emax(limits::max_exponent);
    }
    narrowed_range(narrowed_range const&) = delete;
    narrowed_range& operator=(narrowed_range const&) = delete;
    ~narrowed_range() {
        mpfr_set_emin(lowest_);
        mpfr_set_emax(highest_);
    }

private:
    mpfr_exp_t lowest_;
    mpfr_exp_t highest_;
};

template <class Real>
Real rounded(std::string const& decimal) {
    mpfr_t number;
    mpfr_init2(number, std::numeric_limits<Real>::digits);
    {
        narrowed_range<Real> const range;
        int const direction = mpfr_strtofr(number, decimal.c_str(), nullptr, 10, MPFR_RNDN);
        mpfr_subnormalize(number, direction, MPFR_RNDN);
    }
    Real result{};
    if constexpr (std::is_same_v<Real, float>) {
        result = mpfr_get_flt(number, MPFR_RNDN);
    } else if constexpr (std::is_same_v<Real, double>) {
        result = mpfr_get_d(number, MPFR_RNDN);
    } else {
        result = mpfr_get_ld(number, MPFR_RNDN);
    }
    mpfr_clear(number);
    return result;
}

/// Whether a decimal has a digit other than 0 before its exponent.
bool has_magnitude(std::string_view decimal) {
    std::string_view const mantissa = decimal.substr(0, decimal.find_first_of("eE"));
    return mantissa.find_first_of("123456789") != std::string_view::npos;
}

/// The rules leave it to `std::from_chars` what the range of a type is. For the two narrow formats
/// that is every number that does not round to zero or infinity. For `long double` it goes through
/// the C library, which may call a subnormal number out of range where digits of it are lost.
template <class Real>
bool is_doubtful(Real magnitude) {
    return std::is_same_v<Real, long double> && magnitude != 0 &&
           magnitude < std::numeric_limits<Real>::min();
}

template <class Real>
bool is_taken(std::string const& decimal) {
    Real number{};
    char const* const first = decimal.data();
    return std::from_chars(first, first + decimal.size(), number).ec == std::errc();
}

} // namespace

std::optional<wide_integer> integer_of(std::string const& text,
                                       bool takes_sign,
                                       wide_integer lowest,
                                       wide_integer highest) {
    bool const negative = takes_sign && !text.empty() && text.front() == '-';
    std::string const digits = text.substr(negative ? 1 : 0);
    if (digits.empty() || digits_at(digits, 0) != digits.size()) return std::nullopt;
    big_integer const magnitude(digits);
    if (!magnitude.fits_bits(64)) return std::nullopt;
    wide_integer const word = magnitude.low_word();
    wide_integer const number = negative ? -word : word;
    if (number < lowest || number > highest) return std::nullopt;
    return number;
}

template <class Real>
std::optional<Real> real_of(std::string const& text) {
    bool const negative = !text.empty() && text.front() == '-';
    std::string const rest = text.substr(negative ? 1 : 0);
    std::string const word = lower(rest);
    Real magnitude{};
    if (word == "inf" || word == "infinity") {
        magnitude = std::numeric_limits<Real>::infinity();
    } else if (is_nan_word(word)) {
        magnitude = std::numeric_limits<Real>::quiet_NaN();
    } else if (is_decimal(rest)) {
        magnitude = rounded<Real>(rest);
        if (std::isinf(magnitude)) return std::nullopt;
        if (magnitude == 0 && has_magnitude(rest)) return std::nullopt;
        if (is_doubtful(magnitude) && !is_taken<Real>(rest)) return std::nullopt;
    } else {
        return std::nullopt;
    }
    return negative ? -magnitude : magnitude;
}

template std::optional<float> real_of<float>(std::string const&);
template std::optional<double> real_of<double>(std::string const&);
template std::optional<long double> real_of<long double>(std::string const&);

} // namespace fuzz
