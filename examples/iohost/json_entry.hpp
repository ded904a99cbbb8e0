#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>
#include <tavi/ioapi/v2/read_result.hpp>

#include "json_value.hpp"

namespace iohost {

/// `{"name": ..., "type": ..., "value": ..., "time": ..., "quality": ...}`, where a time that
/// nobody said is null, or `{"name": ..., "error": ...}`.
/// \param structures  where the names of structure types are looked up
[[nodiscard]] json to_json(tavi::ioapi::v2::read_result::result_type const& entry,
                           tavi::ioapi::v2::io_structure_dictionary& structures);

/// Print a document, and an end of its last line.
void print_document(json const& content);

} // namespace iohost
