#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "variable_type.hpp"

#include <cstdint>
#include <span>

namespace modbus_backend {

/// Fill the registers that a value is to stand in, so that `decode` gives it back. A value of
/// another type is converted as `io_value::to_variant` does, but what would change it is refused:
/// the empty value, and a number in floating point that an integer type cannot hold. What is not
/// finite fits `flt` as well as `dbl`, as a number of either type and as a text.
/// \param registers  as many as the type takes; their contents mean nothing after an error
/// \return code 0, or why the value is refused: that of the conversion, `wrong_count` for an array
/// of another length, or `unfit_text`
/// \throws std::invalid_argument  for another count of registers, and for what registers do not
/// hold; a structure is written member by member
[[nodiscard]] tavi::ioapi::v2::io_error encode(variable_type const& type,
                                               tavi::ioapi::v2::io_value const& value,
                                               std::span<std::uint16_t> registers);

/// The same for bits, each 0 or 1.
[[nodiscard]] tavi::ioapi::v2::io_error encode(variable_type const& type,
                                               tavi::ioapi::v2::io_value const& value,
                                               std::span<std::uint8_t> bits);

} // namespace modbus_backend
