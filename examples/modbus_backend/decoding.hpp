#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include "variable.hpp"

#include <cstdint>
#include <span>

namespace modbus_backend {

/// \return the value of a variable of a register kind.
/// \param registers  its registers and no more \throws std::invalid_argument for another count
[[nodiscard]] tavi::ioapi::v2::io_value decode(variable const& described,
                                               std::span<std::uint16_t const> registers);

} // namespace modbus_backend
