#pragma once

#include "variable_map.hpp"

#include <backend_support/name_tree.hpp>

namespace modbus_backend {

/// The folder with the structures. In a map a word that begins like this is a comment, so that no
/// variable and no folder of variables has this name.
inline constexpr char const* structure_folder = "#structures";

/// \return what there is to browse: the variables under the parts of their names, and where the map
/// has structures, these as nodes of class `type` in a folder of their own, `#structures.NAME`.
/// Variables and structures have the comments of their lines as descriptions, and their data types;
/// the structures must be registered.
[[nodiscard]] backend_support::name_tree browse_tree_of(variable_map const& map);

} // namespace modbus_backend
