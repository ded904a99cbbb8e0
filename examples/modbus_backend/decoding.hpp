#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include "variable_type.hpp"

#include <cstdint>
#include <span>

namespace modbus_backend {

/// \return the value that registers hold: one, an array, or for a registered structure an object
/// whose members are decoded likewise.
/// \param registers  those of the value and no more
/// \throws std::invalid_argument for another count, and for what registers do not hold
[[nodiscard]] tavi::ioapi::v2::io_value decode(variable_type const& type,
                                               std::span<std::uint16_t const> registers);

/// The same for bits, of which every one but 0 is true.
[[nodiscard]] tavi::ioapi::v2::io_value decode(variable_type const& type,
                                               std::span<std::uint8_t const> bits);

} // namespace modbus_backend
