#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include "value_model.hpp"

/// \file
/// From a model to the library's value of it, and whether the two are the same on all levels.

namespace fuzz {

v2::io_value made(value_model const& model);
v2::io_object made(object_model const& model);
v2::io_structure_type made(structure_model const& model);

/// Whether a value is that of the model: data type, alternative and content. A NaN is a NaN, of
/// whatever bits, with its sign.
bool same(v2::io_value const& value, value_model const& model);
/// Type and members; the structure type within has no accessor.
bool same(v2::io_object const& object, object_model const& model);
bool same(v2::io_structure_type const& structure, structure_model const& model);

/// The same without texts that this would need copies for.
bool same_text(v2::utility::string_view text, std::string const& model);

} // namespace fuzz
