#pragma once

#include <backend_module.hpp>

#include <chrono>
#include <string>

namespace modbus_backend {

/// What this backend is told when it is opened, under these very names.
struct settings {
    std::string map;  ///< required: file with the variables, see `parse_map`
    std::string host; ///< required: name or address of the controller
    int port = 502;   ///< 1 to 65535
    std::chrono::milliseconds timeout_ms{2000}; ///< for connecting and for each answer, 1 to 600000
};

/// \throws setup_error  for a setting that is missing, unknown or out of range
[[nodiscard]] settings read_settings(
    tavi::ioapi::v2::utility::data_view<example::setting const> given);

} // namespace modbus_backend
