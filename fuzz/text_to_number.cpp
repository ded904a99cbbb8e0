#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/scalar_conversion.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

/// \file
/// The whole input is a text, which becomes every type of number, a truth value, and is asked
/// whether it fits.

namespace {

using namespace fuzz;

template <class T>
outcome<T> converted_by_library(v2::io_value const& value) {
    v2::io_error error(io_errc::not_found);
    T const result = value.as<T>(error);
    check(&error.category() == &v2::generic_io_error_category(),
          "a code is of the generic category");
    return {result, io_errc{error.code()}};
}

template <class T>
void compare(v2::io_value const& value, std::string const& text) {
    outcome<T> const expected = to_scalar<T>(text);
    outcome<T> const given = converted_by_library<T>(value);
    check(given.code == expected.code, "a text converts where the grammar and the range say so");
    check(same_result(given.value, expected.value), "a text is the number nearest to it");
}

/// \return whether a decimal with one digit fewer than `text` reads as `number`, the sign apart.
/// Whole numbers have all their digits in a text without an exponent, and are none of these.
template <class Real>
bool has_shorter_text(std::string text, Real number) {
    if (std::signbit(number)) text.erase(0, 1);
    std::size_t const exponent_at = std::min(text.find('e'), text.size());
    std::string digits = text.substr(0, exponent_at);
    std::size_t const point = digits.find('.');
    bool const is_whole = point == std::string::npos && exponent_at == text.size();
    if (!std::isfinite(number) || is_whole || digits.size() < 2) return false;
    // One unit of the last digit but one, up and down: whatever is shorter is no nearer.
    std::size_t const kept = digits.size() - (point == digits.size() - 2 ? 2 : 1);
    std::string const below = digits.substr(0, kept);
    std::string above = below;
    bool carries = true;
    for (auto digit = above.rbegin(); digit != above.rend() && carries; ++digit) {
        if (*digit < '0' || *digit > '9') continue;
        carries = *digit == '9';
        *digit = carries ? '0' : static_cast<char>(*digit + 1);
    }
    if (carries) above.insert(0, "1");
    for (std::string const& mantissa : {below, above}) {
        auto const read = real_of<Real>(mantissa + text.substr(exponent_at));
        if (read && *read == std::abs(number)) return true;
    }
    return false;
}

/// Out and in again, for a number that has been read.
template <class Real>
void compare_text_of(v2::io_value const& value) {
    outcome<Real> const number = converted_by_library<Real>(value);
    if (number.code != io_errc::success) return;
    v2::io_value const stored(number.value);
    auto const text = stored.as<std::string>();
    check(text == shortest_text(number.value), "the text of a number is the standard's");
    check(!has_shorter_text(text, number.value), "the text of a number is the shortest one");
    auto const again = real_of<Real>(text);
    check(again && same_result(*again, number.value), "the text of a number reads back as it");
}

template <class T>
void compare_question(v2::io_value const& value, std::string const& text, types element) {
    bool const fits = value.converts_to(io_data_type::scalar(element));
    check(fits == (to_scalar<T>(text).code == io_errc::success), "a text fits where it converts");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    v2::io_value const value(text);
    compare<bool>(value, text);
    compare<char>(value, text);
    compare<signed char>(value, text);
    compare<unsigned char>(value, text);
    compare<short>(value, text);
    compare<unsigned short>(value, text);
    compare<int>(value, text);
    compare<unsigned int>(value, text);
    compare<long>(value, text);
    compare<unsigned long>(value, text);
    compare<long long>(value, text);
    compare<unsigned long long>(value, text);
    compare<float>(value, text);
    compare<double>(value, text);
    compare<long double>(value, text);
    compare_text_of<float>(value);
    compare_text_of<double>(value);
    compare_question<bool>(value, text, types::boolean);
    compare_question<signed char>(value, text, types::i8);
    compare_question<short>(value, text, types::i16);
    compare_question<int>(value, text, types::i32);
    compare_question<long long>(value, text, types::i64);
    compare_question<unsigned char>(value, text, types::u8);
    compare_question<unsigned short>(value, text, types::u16);
    compare_question<unsigned int>(value, text, types::u32);
    compare_question<unsigned long long>(value, text, types::u64);
    compare_question<float>(value, text, types::flt);
    compare_question<double>(value, text, types::dbl);
    check(value.converts_to(io_data_type::scalar(types::string)), "a text fits a text");
    return 0;
}
