#pragma once

#include "scalar_conversion.hpp"

/// \file
/// What the questions to a whole value must be answered.

namespace fuzz {

/// `converts_to`
bool fits(value_model const& value, io_data_type const& type);
/// `to_variant`
outcome<value_model> converted(value_model const& value, io_data_type const& type);

/// `==`
bool equal(value_model const& left, value_model const& right);
/// `equals`
bool equals_one_way(value_model const& left, value_model const& right);
/// `equals_same_type`
bool equal_stored(value_model const& left, value_model const& right);

/// `printable_string`
std::string printed(value_model const& value, char fill, unsigned int width, unsigned int level);

/// `io_object::set` on a model. \return the code
io_errc set_member(object_model& object, std::string const& key, value_model value);

} // namespace fuzz
