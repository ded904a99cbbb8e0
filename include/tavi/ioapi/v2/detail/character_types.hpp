#pragma once

#include "../api.hpp"

#include <type_traits>

namespace tavi::ioapi::v2::detail {

/// Whether `T` holds a letter and nothing else. Plain `char` is none of these: it is a number to a
/// value.
template <class T>
inline constexpr bool is_wide_character =
    std::is_same_v<T, wchar_t> ||
#if defined(__cpp_char8_t)
    std::is_same_v<T, char8_t> ||
#endif
    std::is_same_v<T, char16_t> || std::is_same_v<T, char32_t>;

/// Whether `T` points to something that is no text in single bytes.
template <class T>
inline constexpr bool is_foreign_pointer =
    std::is_pointer_v<T> && !std::is_same_v<std::remove_cv_t<std::remove_pointer_t<T>>, char>;

} // namespace tavi::ioapi::v2::detail
