#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>

#include <string>

namespace iohost {

/// \return an identifier as its user gave it: one that is a single text without quotes, any other
/// as the library prints it. Control characters are replaced as by `printable`.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::plc_identifier const& identifier);

} // namespace iohost
