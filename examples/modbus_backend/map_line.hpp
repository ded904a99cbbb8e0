#pragma once

#include "map_words.hpp"
#include "structure.hpp"
#include "variable.hpp"

namespace modbus_backend {

/// What a line is read with: the orders where it states none, and the structures it may name.
struct line_context {
    part_orders orders;
    structure_list const& structures;
};

/// \return the variable that one line describes, see `parse_map`. \throws bad_line
[[nodiscard]] variable variable_in(map_line const& line, line_context const& context);

/// The same for a line between `structure` and `end`.
[[nodiscard]] member member_in(map_line const& line, line_context const& context);

} // namespace modbus_backend
