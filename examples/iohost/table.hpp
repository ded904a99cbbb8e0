#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>
#include <tavi/ioapi/v2/read_result.hpp>

#include <iosfwd>

namespace iohost {

/// Print one line for each entry: identifier, data type, value by `one_line`, time, quality, error.
/// \param structures  where the names of structure types are looked up
/// \return whether every entry has a value
bool print_table(std::ostream& out,
                 tavi::ioapi::v2::read_result const& result,
                 tavi::ioapi::v2::io_structure_dictionary& structures);

} // namespace iohost
