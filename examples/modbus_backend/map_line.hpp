#pragma once

#include "variable.hpp"

#include <stdexcept>
#include <string>
#include <vector>

namespace modbus_backend {

/// What is wrong with a line, whose number the caller knows.
struct bad_line : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// \return the variable that the words of one line describe, see `parse_map`. \throws bad_line
[[nodiscard]] variable variable_in(std::vector<std::string> const& line);

} // namespace modbus_backend
