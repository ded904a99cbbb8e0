#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>

#include <string_view>

namespace backend_support {

/// Add an issue of severity `error`, which names the option, for each of these:
/// - a key that is no option of the form
/// - a required option without a value; the empty value counts for none
/// - a value that does not convert to the type of its option. Stricter than the conversion itself
///   are: the empty value and an empty text are no numbers; a number in floating point must be one
///   that its integer type can hold; a text for a truth value is "0" or "1"
/// - a value that, converted, is none of the choices of its option, where it has any
///
/// The options come in the order of the form and the unknown keys behind them, so that the first
/// issue is the one to show where there is room for one. What passes here can be had by
/// `as<T>()` with the `T` of the option. \throws std::bad_alloc, std::length_error
void check_values(tavi::ioapi::v2::config::config_template const& form,
                  tavi::ioapi::v2::config::store const& values,
                  tavi::ioapi::v2::config::verification_result& verdict);

/// Add one issue to a verdict. \param key  of the option concerned \param message  for people,
/// without a full stop \throws std::bad_alloc, std::length_error
void add_issue(tavi::ioapi::v2::config::verification_result& verdict,
               tavi::ioapi::v2::config::verification_result::severity_type severity,
               std::string_view key,
               std::string_view message);

/// The first issue of severity `error` or worse, or null: why a configuration cannot be used.
[[nodiscard]] tavi::ioapi::v2::config::verification_result::issue_type const* first_error(
    tavi::ioapi::v2::config::verification_result const& verdict) noexcept;

} // namespace backend_support
