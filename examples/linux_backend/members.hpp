#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/plc_identifier_part.hpp>

#include "structures.hpp"

namespace linux_backend {

/// Whether a value of this type has the member that the secondary part of an identifier names, with
/// dots a member of a member. No part at all stands for the value itself.
[[nodiscard]] bool has_member(tavi::ioapi::v2::io_data_type const& type,
                              tavi::ioapi::v2::plc_identifier_part const& member,
                              structures const& known);

/// A member that `has_member` has found. \throws io_exception  for another
[[nodiscard]] tavi::ioapi::v2::io_value member_of(
    tavi::ioapi::v2::io_value value, tavi::ioapi::v2::plc_identifier_part const& member);

} // namespace linux_backend
