#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>

#include "variable_type.hpp"

namespace modbus_backend {

/// \return what a value of this type is for the host. Of a structure that is not registered it
/// names none: the id is 0.
[[nodiscard]] tavi::ioapi::v2::io_data_type data_type_of(variable_type const& type);

} // namespace modbus_backend
