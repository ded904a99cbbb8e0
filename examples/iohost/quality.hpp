#pragma once

#include <tavi/ioapi/v2/io_data_value.hpp>

namespace iohost {

/// `good`, `uncertain` or `bad`.
[[nodiscard]] inline char const* quality_of(tavi::ioapi::v2::io_data_value const& value) noexcept {
    if (value.good()) return "good";
    return value.bad() ? "bad" : "uncertain";
}

} // namespace iohost
