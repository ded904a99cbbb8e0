#pragma once

#include <tavi/ioapi/v2/io_timestamp.hpp>

#include <string>

namespace iohost {

/// \return the time by ISO 8601 in UTC, `2024-02-29T12:00:00.0000001Z`; `-` where there is none.
[[nodiscard]] std::string iso_time(tavi::ioapi::v2::io_timestamp time);

} // namespace iohost
