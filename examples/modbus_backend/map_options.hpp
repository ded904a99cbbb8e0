#pragma once

#include "variable_type.hpp"

#include <span>
#include <string>

namespace modbus_backend {

/// Set the orders that have a meaning for the type, see `parse_map`: those that the OPTIONs of a
/// line state, and the others as given. \throws bad_line
void apply_orders(std::span<std::string const> options, part_orders others, variable_type& type);

} // namespace modbus_backend
