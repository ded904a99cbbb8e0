#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "json_value.hpp"

#include <optional>
#include <string>
#include <utility>

namespace iohost {

/// What `NAME=VALUE` or `NAME:TYPE=VALUE` says.
struct assignment {
    tavi::ioapi::v2::plc_identifier identifier;
    std::optional<tavi::ioapi::v2::io_data_type> type;
    json value;
};

/// \return what the text says. The name ends at the first `=`; what stands behind its last colon is
/// a type, so that a name with a colon has its type stated.
/// \throws setup_failure  where it is none of the two, the type is none, or the value is not one of
///     the type
[[nodiscard]] assignment parsed_assignment(std::string const& text);

/// \return the two sides of a text with `=`. \throws setup_failure  where there is none, or nothing
/// in front \param what  such as `--set`, for the line that says so
[[nodiscard]] std::pair<std::string, std::string> split_assignment(std::string const& what,
                                                                   std::string const& text);

} // namespace iohost
