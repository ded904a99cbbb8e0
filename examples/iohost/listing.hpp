#pragma once

#include <tavi/ioapi/v2/read_result.hpp>

#include <iosfwd>

namespace iohost {

/// Print each entry on lines of its own: the identifier, and below it what `printable_string` makes
/// of the value, or the error behind it. Control characters are replaced as by `printable`.
/// \return whether every entry has a value
bool print_listing(std::ostream& out, tavi::ioapi::v2::read_result const& result);

} // namespace iohost
