#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>

#include <string>
#include <string_view>

namespace iohost {

/// \return the identifier that a NAME of the command line stands for: `tank.level` the variable of
/// this text, `pump/speed` its member, `#17` the number 17. A slash within the text of a variable
/// or member is written `//`, and a text that begins with `#` has one more in front.
/// \throws setup_failure  where the variable or the member is empty, there is more than one
///     member, or the number does not fit in 64 bits
[[nodiscard]] tavi::ioapi::v2::plc_identifier identifier_named(std::string_view name);

/// \return an identifier as its user gives it, so that it can go to the next command; one without a
/// primary part as the library prints it. No byte is replaced.
[[nodiscard]] std::string given_name_of(tavi::ioapi::v2::plc_identifier const& identifier);

/// The same for people: control characters are replaced as by `printable`.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::plc_identifier const& identifier);

} // namespace iohost
