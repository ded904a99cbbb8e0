#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "assignment.hpp"

#include <backend_module.hpp>

#include <string>
#include <vector>

namespace iohost {

/// \return the value that an assignment means for its variable. An object is built over the
/// structure that is registered for the variable, whose type comes from the value that it has or,
/// where it cannot be read, from browsing.
/// \param[out] error  cleared, or why there is none
[[nodiscard]] tavi::ioapi::v2::io_value value_of(
    assignment const& assigned,
    example::backend& backend,
    tavi::ioapi::v2::io_structure_dictionary& structures,
    tavi::ioapi::v2::io_error& error);

/// Write what can be written. \return the outcome for each assignment, in order; one whose value
/// could not be built says why and was not tried. \throws operation_failure
[[nodiscard]] tavi::ioapi::v2::write_result write_assignments(
    std::vector<assignment> const& assigned,
    example::backend& backend,
    tavi::ioapi::v2::io_structure_dictionary& structures);

} // namespace iohost
