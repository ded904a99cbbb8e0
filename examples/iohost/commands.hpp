#pragma once

#include "exit_status.hpp"
#include "options.hpp"

namespace iohost {

/// \name The commands
/// Each prints what it finds to standard output, for people or, with `json`, as one document
/// (`watch`: as one for each line). A `setup_failure` or an `operation_failure` leaves them where
/// nothing more can be done.
/// \{
exit_status form_command(options const& chosen);
exit_status verify_command(options const& chosen);
exit_status browse_command(options const& chosen);
exit_status read_command(options const& chosen);
exit_status write_command(options const& chosen);
exit_status watch_command(options const& chosen);
exit_status info_command(options const& chosen);
exit_status check_command(options const& chosen);
/// \}

} // namespace iohost
