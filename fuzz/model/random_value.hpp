#pragma once

#include "support/input.hpp"
#include "value_model.hpp"

/// \file
/// Values that an input asks for: every kind of payload, numbers at the borders of all rules, texts
/// that are nearly numbers.

namespace fuzz {

/// How large a value may become.
struct extent {
    unsigned int depth = 3; ///< levels of arrays of values and of objects
    unsigned int width = 6; ///< elements and members on each level
};

/// Any value as a constructor of the library makes it, empty values of a stated type and arrays of
/// values of a stated type included.
value_model random_value(input& script, extent size = {});
/// One that is no array and no object.
value_model random_scalar(input& script);
object_model random_object(input& script, extent size);
structure_model random_structure(input& script);

/// Any text, mostly short ones that are nearly numbers.
std::string random_text(input& script);
/// One of a few keys, so that they meet again.
std::string random_key(input& script);

/// A type that a member may be declared with: mostly one that values convert to, or any other.
io_data_type random_type(input& script);

/// A number at the borders of the rules, or any other.
template <class T>
T random_number(input& script);

} // namespace fuzz
