#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>

namespace modbus_backend {

/// The codes of the category "modbus". Those below 256 are the exception codes of the protocol,
/// as the controller sent them; then come those of the connection, of opening, and of requests that
/// never reach the controller.
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
    bad_answer = 259, ///< also an exception whose number the protocol does not know
    bad_setting = 260,
    bad_map = 261,
    read_only = 262,           ///< a discrete input or an input register was to be written
    wrong_count = 263,         ///< not as many elements as the map states, or values as variables
    unfit_text = 264,          ///< a text too long for its registers, or with a zero byte
    member_subscription = 265, ///< only whole variables can be subscribed to
};

/// \return a record of the category "modbus".
[[nodiscard]] tavi::ioapi::v2::io_error make_modbus_error(modbus_errc code) noexcept;

/// \return the one instance of the category.
[[nodiscard]] tavi::ioapi::v2::io_error_category const& modbus_error_category() noexcept;

/// \return the number of the exception that the controller has answered with, 0 where the error is
/// another one.
[[nodiscard]] int exception_in(tavi::ioapi::v2::io_error const& error) noexcept;

} // namespace modbus_backend
