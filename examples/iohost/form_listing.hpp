#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>

#include "json_value.hpp"

#include <iosfwd>

namespace iohost {

/// Print a form as a person reads it: each category with its options, and below each option what it
/// is for and which values there are to choose from.
void print_form(std::ostream& out, tavi::ioapi::v2::config::config_template const& form);

/// `{"categories": [{"name": ..., "options": [...]}]}`
[[nodiscard]] json to_json(tavi::ioapi::v2::config::config_template const& form);

} // namespace iohost
