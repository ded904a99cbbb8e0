#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "json_value.hpp"

#include <optional>
#include <string>

namespace iohost {

/// \return the error with one more entry in its diagnostics, or another in the place of one.
[[nodiscard]] tavi::ioapi::v2::io_error with_detail(tavi::ioapi::v2::io_error error,
                                                    char const* key,
                                                    tavi::ioapi::v2::io_value detail);

/// \return the error with the `member` in which it is, in front of one that it names already:
/// `outer/inner`.
[[nodiscard]] tavi::ioapi::v2::io_error in_member(tavi::ioapi::v2::io_error error,
                                                  std::string const& member);

/// \return what a VALUE of the command line says: `true`, `false`, a number, a `"text"` in quotes,
/// an array `[1, 2, 3]` or an object `{"member": 1}` as JSON has them, and the text as it stands
/// for all else.
/// \throws setup_failure  where it begins as a quoted text, an array or an object and is none, and
///     for an object that has a member twice
[[nodiscard]] json parsed_value(std::string const& text);

/// Whether there is an object in it, for which a structure type is needed.
[[nodiscard]] bool has_objects(json const& value);

/// \return the value as it is written, for a backend to convert: `boolean`, `i64`, `u64` where that
/// is too narrow, `dbl`, `string`, and arrays of these or, where elements differ, of values.
/// \param value  without objects
[[nodiscard]] tavi::ioapi::v2::io_value natural_value(json const& value);

/// \return the value as one of exactly this type. Truth values are `true`, `false`, 1 and 0;
/// numbers must be in range and, for integers, whole; members must be those of the structure
/// that is registered for the type.
/// \param[out] error  cleared, or why there is none, with the member or the index where it is one
[[nodiscard]] tavi::ioapi::v2::io_value value_as(
    json const& value,
    tavi::ioapi::v2::io_data_type const& type,
    tavi::ioapi::v2::io_structure_dictionary& structures,
    tavi::ioapi::v2::io_error& error);

/// \return a text as a value of this type, by `parsed_value` and `value_as`; for the type `string`
/// it is the text as it stands, save one in quotes, which go. Nothing where it does not convert; a
/// type of objects takes none.
[[nodiscard]] std::optional<tavi::ioapi::v2::io_value> text_as(
    std::string const& text, tavi::ioapi::v2::io_data_type const& type);

} // namespace iohost
