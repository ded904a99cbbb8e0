#pragma once

#include "variable_type.hpp"

#include <span>
#include <string>

namespace modbus_backend {

/// Set what the OPTIONs of a line say, see `parse_map`. \throws bad_line
void apply_options(std::span<std::string const> options, variable_type& type);

} // namespace modbus_backend
