#pragma once

#include "host_services.hpp"

namespace iohost {

/// \return what prints records to standard error, one line each, control characters made harmless:
/// those from `warning` on, or all of them.
[[nodiscard]] host_services::log_taker log_printer(bool all);

} // namespace iohost
