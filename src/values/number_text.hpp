#pragma once

#include "number_traits.hpp"

#include <charconv>
#include <cstddef>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>

/// \file
/// Numbers from texts, which are taken whole or not at all, and texts from numbers.

namespace tavi::ioapi::v2::detail {

/// Whether `std::from_chars` may ask for memory: it leaves the widest format to the C library, and
/// copies a text for that which is longer than some hundred bytes.
template <number T>
inline constexpr bool parsing_takes_memory = std::is_same_v<number_t<T>, long double>;

/// \return whether a text is a number in its form, whatever the range. Where `std::from_chars`
/// finds no memory it says the same as of a text that is none; reading a `double` takes none, and
/// tells.
[[nodiscard]] inline bool has_form_of_number(char const* first, char const* last) noexcept {
    double unused{};
    return std::from_chars(first, last, unused).ptr == last;
}

/// Parse a number, with nothing before or after it: for an integer decimal digits, behind a `-` for
/// signed types; for floating point what `std::from_chars` takes in fixed or scientific form.
/// Out of line, since what a parser needs of registers and stack would burden the conversions
/// between numbers beside it.
/// \return the number, or nothing where `[first, last)` is none that `T` holds
/// \throws std::bad_alloc where that takes memory and there is none
template <number T>
[[nodiscard, gnu::noinline]] std::optional<T> parse(char const* first, char const* last) noexcept(
    !parsing_takes_memory<T>) {
    number_t<T> parsed = 0;
    auto const [end, failure] = std::from_chars(first, last, parsed);
    if constexpr (parsing_takes_memory<T>) {
        if (failure == std::errc::invalid_argument && has_form_of_number(first, last)) {
            throw std::bad_alloc();
        }
    }
    if (failure != std::errc() || end != last) return std::nullopt;
    return static_cast<T>(parsed);
}

/// The texts of the two truth values; on the way back they are texts like any other.
[[nodiscard]] constexpr std::string_view text_of(bool value) noexcept {
    return value ? "true" : "false";
}

/// The shortest decimal text of a number that reads back as the same number.
class number_text {
public:
    template <number T>
    explicit number_text(T value) noexcept {
        auto const [end, failure] =
            std::to_chars(buffer_, buffer_ + sizeof(buffer_), static_cast<number_t<T>>(value));
        if (failure == std::errc()) size_ = static_cast<std::size_t>(end - buffer_);
    }

    [[nodiscard]] std::string_view view() const noexcept { return {buffer_, size_}; }

private:
    char buffer_[64];
    std::size_t size_ = 0;
};

} // namespace tavi::ioapi::v2::detail
