#pragma once

#include "../api.hpp"

#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>

/// \file
/// Sizes are 32 bits wide in every exported signature and layout, and `std::size_t` elsewhere.
/// These are the only places where the one becomes the other.

namespace tavi::ioapi::v2::detail {

/// The largest size that a 32-bit field can state.
inline constexpr std::size_t largest_size = std::numeric_limits<unsigned int>::max();

/// \return `size` as the size of a text that is to be stored with a terminating zero byte.
/// \throws std::bad_alloc when the block for it could not be stated in 32 bits
constexpr unsigned int narrow_text_size(std::size_t size) {
    if (size >= largest_size) throw std::bad_alloc();
    return static_cast<unsigned int>(size);
}

/// \return `count` as the number of elements of an owning array.
/// \throws std::bad_array_new_length when it does not fit 32 bits
constexpr unsigned int narrow_count(unsigned long long count) {
    if (count > largest_size) throw std::bad_array_new_length();
    return static_cast<unsigned int>(count);
}

/// \return `size` as the length of a view.
/// \throws std::length_error when it does not fit 32 bits
constexpr unsigned int narrow_view_size(std::size_t size) {
    if (size > largest_size) throw std::length_error("view is longer than 4294967295 elements");
    return static_cast<unsigned int>(size);
}

} // namespace tavi::ioapi::v2::detail
