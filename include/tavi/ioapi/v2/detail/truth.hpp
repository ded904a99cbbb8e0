#pragma once

#include "../api.hpp"

#include <cstring>

namespace tavi::ioapi::v2::detail {

/// \return the truth value at `place`: any byte but 0 is true. Another module may have stored any.
[[nodiscard]] inline bool truth_at(bool const* place) noexcept {
    unsigned char byte = 0;
    std::memcpy(&byte, place, sizeof byte);
    return byte != 0;
}

} // namespace tavi::ioapi::v2::detail
