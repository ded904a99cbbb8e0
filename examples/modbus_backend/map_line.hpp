#pragma once

#include "structure.hpp"
#include "variable.hpp"

#include <string>
#include <vector>

namespace modbus_backend {

/// \return the variable that the words of one line describe, see `parse_map`.
/// \param structures  those that it may be of \throws bad_line
[[nodiscard]] variable variable_in(std::vector<std::string> const& line,
                                   structure_list const& structures);

/// The same for a line between `structure` and `end`.
[[nodiscard]] member member_in(std::vector<std::string> const& line,
                               structure_list const& structures);

} // namespace modbus_backend
