#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/store.hpp>

#include <string>
#include <utility>
#include <vector>

namespace iohost {

/// Keys and the texts of their values, in the order in which they were given.
using setting_texts = std::vector<std::pair<std::string, std::string>>;

/// \return the settings of a file: lines `key = value`, empty lines, and comments from a `#` at the
/// beginning of a line or behind a blank. A value in quotes, as JSON has them, may hold anything.
/// \throws setup_failure  where the file cannot be read, and with the number of the line that is
///     none of these, has a zero byte or gives a key again. A byte order mark is passed over.
[[nodiscard]] setting_texts read_settings(std::string const& file);

/// \return the settings of `--set`, each `KEY=VALUE`. \throws setup_failure  for any other text
[[nodiscard]] setting_texts parsed_settings(std::vector<std::string> const& words);

/// Texts, each converted to the type that the form has for its key; of two for one key the later.
struct converted_settings {
    /// A key that is none of the form stays a text: to judge it is the backend's business. So does
    /// a text that does not convert.
    tavi::ioapi::v2::config::store values;
    /// The keys of those that do not, each with what is wrong.
    std::vector<std::pair<std::string, std::string>> unfit;
};
[[nodiscard]] converted_settings convert_settings(
    tavi::ioapi::v2::config::config_template const& form, setting_texts const& texts);

/// The values of those. \throws setup_failure  with key, value and type of all that do not convert
[[nodiscard]] tavi::ioapi::v2::config::store configuration(
    tavi::ioapi::v2::config::config_template const& form, setting_texts const& texts);

/// \return what a value of the option must be, with that of its default where it has one.
[[nodiscard]] tavi::ioapi::v2::io_data_type type_of(tavi::ioapi::v2::config::option const& option);

} // namespace iohost
