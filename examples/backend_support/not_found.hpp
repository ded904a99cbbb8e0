#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>

#include <string>

namespace backend_support {

/// \return an identifier as diagnostics name it: its texts as they stand and its numbers, the
/// member behind a slash; nothing for a default identifier.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::plc_identifier const& identifier);

/// \return the error, with diagnostics: the `operation`, and the `variable` by its name.
/// \param operation  such as `read`
/// \throws std::bad_alloc
[[nodiscard]] tavi::ioapi::v2::io_error entry_error(
    tavi::ioapi::v2::io_error error,
    char const* operation,
    tavi::ioapi::v2::plc_identifier const& identifier);

/// The same for an entry that asks for what there is not.
[[nodiscard]] tavi::ioapi::v2::io_error not_found(
    char const* operation, tavi::ioapi::v2::plc_identifier const& identifier);

} // namespace backend_support
