#pragma once

#include "../api.hpp"

#include <cstddef>

namespace tavi::ioapi::v2::detail {

/// \return the size or offset that a layout has in the data model of this build: `word32` where a
/// pointer takes 4 bytes, which is the reference, `word64` where it takes 8.
constexpr std::size_t by_data_model(std::size_t word32, std::size_t word64) noexcept {
    static_assert(sizeof(void*) == 4 || sizeof(void*) == 8,
                  "no layout is pinned for this platform");
    return sizeof(void*) == 4 ? word32 : word64;
}

/// Specialised beside the definition of each class of fixed layout, which befriends it, to assert
/// the offsets of private fields.
template <class T>
struct layout_of;

} // namespace tavi::ioapi::v2::detail
