#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "register_access.hpp"
#include "variable.hpp"

namespace modbus_backend {

/// Write a value to a variable: as it is encoded, or for a structure, each member that the given
/// object has, see `set_members`. What is wider than the protocol takes in one request is written
/// in several, from the first address on.
/// \return code 0, or with diagnostics: `read_only`, why the value is refused (see `encode`), or
/// what the controller has answered; after that one a part may have been written
[[nodiscard]] tavi::ioapi::v2::io_error write_variable(variable const& target,
                                                       tavi::ioapi::v2::io_value const& value,
                                                       register_access& controller);

/// The same for one member of a structured variable. The structure is read, the member is set in
/// the object that it gives, and its registers alone are written: neither the other members nor
/// what lies between them. \param name  of the member; `invalid_property` for one that is unknown
[[nodiscard]] tavi::ioapi::v2::io_error write_member(variable const& whole,
                                                     tavi::ioapi::v2::utility::string_view name,
                                                     tavi::ioapi::v2::io_value const& value,
                                                     register_access& controller);

} // namespace modbus_backend
