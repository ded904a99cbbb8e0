#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <string>

namespace iohost {

/// \return a value on one line: a number or a text as it converts to text, an array as `[1, 2]`,
/// an object as `{name: "north", level: 2.5}`. Within these texts are quoted; an empty value is
/// `empty` there, and nothing alone. Control characters are replaced as by `printable`.
/// \throws io_exception  where memory is exhausted
[[nodiscard]] std::string one_line(tavi::ioapi::v2::io_value const& value);

} // namespace iohost
