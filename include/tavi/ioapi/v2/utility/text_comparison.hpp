#pragma once

#include "../api.hpp"

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace tavi::ioapi::v2::utility {

class string;
class string_view;

} // namespace tavi::ioapi::v2::utility

namespace tavi::ioapi::v2::detail {

/// Whether `T` is a text of this library.
template <class T>
inline constexpr bool is_own_text =
    std::is_same_v<T, utility::string> || std::is_same_v<T, utility::string_view>;

/// Whether `T` is a text; a null pointer constant would pass for one.
template <class T>
inline constexpr bool is_any_text =
    std::is_convertible_v<T const&, std::string_view> && !std::is_same_v<T, std::nullptr_t>;

/// Holds where one side is a text of this library and the other is any text: a literal, a
/// `std::string`, a `std::string_view` or another of our own.
template <class Left, class Right>
using if_comparable_texts =
    std::enable_if_t<(is_own_text<Left> ||
                      is_own_text<Right>)&&std::is_convertible_v<Left const&, std::string_view> &&
                         std::is_convertible_v<Right const&, std::string_view>,
                     bool>;

/// The size of what `last_word` reads.
inline constexpr std::size_t word_size = sizeof(unsigned long long);

/// \return the last bytes of a text of at least `word_size`.
[[nodiscard]] inline unsigned long long last_word(std::string_view text) noexcept {
    unsigned long long word = 0;
    std::memcpy(&word, text.data() + (text.size() - word_size), word_size);
    return word;
}

/// Whether two texts are the same. After the sizes their last words are compared: the names of a
/// controller begin alike and differ at their ends.
[[nodiscard]] inline bool same_text(std::string_view left, std::string_view right) noexcept {
    if (left.size() != right.size()) return false;
    std::size_t first_bytes = left.size();
    if (first_bytes >= word_size) {
        if (last_word(left) != last_word(right)) return false;
        first_bytes -= word_size;
    }
    return first_bytes == 0 || std::memcmp(left.data(), right.data(), first_bytes) == 0;
}

/// Below 0, 0 or above 0, as `std::string_view::compare`.
template <class Left, class Right>
int compare_texts(Left const& left, Right const& right) noexcept {
    return static_cast<std::string_view>(left).compare(static_cast<std::string_view>(right));
}

} // namespace tavi::ioapi::v2::detail

namespace tavi::ioapi::v2::utility {

/// \name Comparison of texts
/// By unsigned bytes over the common length, then the shorter text first. A null data pointer
/// reads as the empty text. Linear in the length, no allocation; a literal must not be null.
/// \{
/// Whether the bytes are the same.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator==(Left const& left, Right const& right) noexcept {
    return detail::same_text(left, right);
}
/// Whether they are not.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator!=(Left const& left, Right const& right) noexcept {
    return !detail::same_text(left, right);
}
/// Whether the left one is the lesser.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator<(Left const& left, Right const& right) noexcept {
    return detail::compare_texts(left, right) < 0;
}
/// Whether the left one is the lesser or the same.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator<=(Left const& left, Right const& right) noexcept {
    return detail::compare_texts(left, right) <= 0;
}
/// Whether the left one is the greater.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator>(Left const& left, Right const& right) noexcept {
    return detail::compare_texts(left, right) > 0;
}
/// Whether the left one is the greater or the same.
template <class Left, class Right, detail::if_comparable_texts<Left, Right> = true>
[[nodiscard]] bool operator>=(Left const& left, Right const& right) noexcept {
    return detail::compare_texts(left, right) >= 0;
}
/// \}

} // namespace tavi::ioapi::v2::utility
