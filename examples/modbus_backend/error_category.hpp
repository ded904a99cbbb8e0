#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>

namespace modbus_backend {

/// The codes of the category "modbus". Those below 256 are the exception codes of the protocol,
/// as the controller sent them.
enum class modbus_errc : int {
    illegal_function = 1,
    illegal_data_address = 2,
    illegal_data_value = 3,
    device_failure = 4,
    acknowledge = 5,
    device_busy = 6,
    negative_acknowledge = 7,
    memory_parity_error = 8,
    gateway_path_unavailable = 10,
    gateway_target_silent = 11,
    not_connected = 256, ///< the controller could not be reached
    connection_lost = 257,
    timeout = 258,
    bad_answer = 259,
    bad_setting = 260,
    bad_map = 261,
    unregistered_structure = 262,
};

/// \return a record of the category "modbus".
[[nodiscard]] tavi::ioapi::v2::io_error make_modbus_error(modbus_errc code) noexcept;

/// \return the one instance of the category.
[[nodiscard]] tavi::ioapi::v2::io_error_category const& modbus_error_category() noexcept;

} // namespace modbus_backend
