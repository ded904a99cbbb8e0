#pragma once

#include "connection.hpp"
#include "variable_type.hpp"

#include <string>

namespace modbus_backend {

/// What this backend is told when it is opened, see `make_form`.
struct settings {
    std::string map; ///< file with the variables, see `parse_map`
    endpoint controller;
    part_orders orders;                ///< of the lines of the map that state none
    unsigned int poll_interval_ms = 0; ///< at least 1
};

} // namespace modbus_backend
