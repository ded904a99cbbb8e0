#pragma once

#include <tavi/ioapi/v2/read_result.hpp>

#include <iosfwd>

namespace iohost {

/// Print one line for each entry: identifier, data type, value as text, time, quality, error.
/// \return whether every entry has a value that can be shown
bool print_table(std::ostream& out, tavi::ioapi::v2::read_result const& result);

} // namespace iohost
