#pragma once

#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>

#include "error_category.hpp"
#include "settings.hpp"
#include "variable_map.hpp"

#include <optional>

namespace modbus_backend {

/// A configuration, and all that can be said to it without connecting.
struct configuration {
    tavi::ioapi::v2::config::verification_result verdict;
    settings values;                 ///< complete where the verdict has no error
    std::optional<variable_map> map; ///< there where the verdict has no error
};

/// Check the values of a form and read the map that they name. Errors are:
/// - what `backend_support::check_values` finds
/// - a number out of its range, and an empty host
/// - a map that cannot be read, with the line that is wrong
///
/// Warnings are a map without variables, and a poll interval shorter than the timeout where one of
/// the two is given; information, an unusual port or unit.
[[nodiscard]] configuration check(tavi::ioapi::v2::config::store const& given);

/// \throws setup_error  with the first error of the verdict, where there is one: `bad_map` for a
/// map that cannot be used, `bad_setting` for all else
void require_usable(configuration const& checked);

} // namespace modbus_backend
