#pragma once

#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/object_bytes.hpp"

namespace test_support {

/// \return the block of a text as it is stored: null where there is none, unlike `data()`.
[[nodiscard]] inline char const* block_of(tavi::ioapi::v2::utility::string const& text) noexcept {
    return field_at<char const*>(text, by_word(8, 16));
}

/// \return the block of an array as it is stored.
template <class T>
[[nodiscard]] T const* block_of(tavi::ioapi::v2::utility::array<T> const& array) noexcept {
    return field_at<T const*>(array, 0);
}

} // namespace test_support
