#pragma once

#include <tavi/ioapi/v2/config/verification_result.hpp>

#include "json_value.hpp"

#include <string>

namespace iohost {

/// Whether there is an issue of severity `error` or worse.
[[nodiscard]] bool has_error(tavi::ioapi::v2::config::verification_result const& verdict);

/// `none`, `information`, `warning`, `error`, or `severity 7`.
[[nodiscard]] std::string name_of(
    tavi::ioapi::v2::config::verification_result::severity_type severity);

/// The keys that an issue names, with commas between; `-` where it names none.
[[nodiscard]] std::string keys_of(
    tavi::ioapi::v2::config::verification_result::issue_type const& issue);

/// `{"valid": ..., "issues": [{"severity": ..., "options": [...], "message": ...}]}`
[[nodiscard]] json to_json(tavi::ioapi::v2::config::verification_result const& verdict);

} // namespace iohost
