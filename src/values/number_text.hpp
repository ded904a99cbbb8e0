#pragma once

#include "number_traits.hpp"

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

/// \file
/// Numbers from texts, which are taken whole or not at all, and texts from numbers.

namespace tavi::ioapi::v2::detail {

/// Parse decimal digits, behind a `-` for signed types, with nothing before or after them.
/// \return whether `[first, last)` is a number that `T` holds; `target` is written only then
template <whole T>
[[nodiscard]] bool parse_integer(char const* first, char const* last, T& target) noexcept {
    number_t<T> parsed = 0;
    auto const [end, failure] = std::from_chars(first, last, parsed, 10);
    if (failure != std::errc() || end != last) return false;
    target = static_cast<T>(parsed);
    return true;
}

/// Parse what `std::from_chars` takes for a number in fixed or scientific form.
/// \return whether `[first, last)` is a number in the range of `T`; `target` is written only then
template <real T>
[[nodiscard]] bool parse_real(char const* first, char const* last, T& target) noexcept {
    T parsed = 0;
    auto const [end, failure] = std::from_chars(first, last, parsed, std::chars_format::general);
    if (failure != std::errc() || end != last) return false;
    target = parsed;
    return true;
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
