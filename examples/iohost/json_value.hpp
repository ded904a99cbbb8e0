#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <nlohmann/json.hpp>

#include <string>

namespace iohost {

/// Members keep the order in which they were set.
using json = nlohmann::ordered_json;

/// A value by what is stored: the empty value as null, truth values, numbers, texts, arrays, and
/// structured values as objects. Integers of 64 bits stay exact. A number in floating point that
/// is not finite, which JSON does not know, is one of the texts `nan`, `inf` and `-inf`, for null
/// is the empty value. A 32-bit one has the fewest digits that give it back.
[[nodiscard]] json to_json(tavi::ioapi::v2::io_value const& value);

/// `{"code": 1, "category": "generic", "message": "not found", "diagnostics": {}}`
[[nodiscard]] json to_json(tavi::ioapi::v2::io_error const& error);

/// The text of a whole document, on several lines and without an end of the last. Bytes that are no
/// UTF-8 are replaced by U+FFFD.
[[nodiscard]] std::string document_of(json const& content);

/// The same on one line.
[[nodiscard]] std::string line_of(json const& content);

} // namespace iohost
