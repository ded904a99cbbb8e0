#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "failure.hpp"

#include <string_view>

namespace linux_backend {

/// \name Errors for entries
/// Their diagnostics name the `operation` and the `variable`. \throws std::bad_alloc
/// \{

/// Beside these the `file`, the `reason`, and as `device_code` what the system answered, if it did.
[[nodiscard]] tavi::ioapi::v2::io_error report(file_failure const& failure,
                                               std::string_view operation,
                                               std::string_view variable);

[[nodiscard]] tavi::ioapi::v2::io_error report_read_only(std::string_view variable);
/// \}

} // namespace linux_backend
