#pragma once

#include "structure.hpp"
#include "variable_type.hpp"

#include <string_view>

namespace modbus_backend {

/// \return what a TYPE of the map says, see `parse_map`; its orders are the defaults.
/// \param structures  those that it may name \throws bad_line
[[nodiscard]] variable_type type_in(std::string_view word, structure_list const& structures);

/// \throws bad_line  for a structure name that could be taken for another type
void require_structure_name(std::string_view word);

} // namespace modbus_backend
