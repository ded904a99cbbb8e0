#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace iohost {

/// \return the data type that the library prints as `name`, such as `i32`, `flt[]` or `object<7>`;
/// nothing for any other text.
[[nodiscard]] std::optional<tavi::ioapi::v2::io_data_type> type_named(std::string_view name);

/// What `type_named` knows, for people: all kinds, and how they become arrays.
[[nodiscard]] std::string known_types();

/// The same without objects.
[[nodiscard]] std::string plain_types();

/// \return the type as the library prints it, but with the name of its structure in place of the
/// id, `object<pump_state>`, where the dictionary knows it: ids differ from run to run.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::io_data_type const& type,
                                  tavi::ioapi::v2::io_structure_dictionary& structures);

} // namespace iohost
