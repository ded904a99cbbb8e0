#pragma once

namespace iohost {

/// How the program ends.
enum exit_status {
    all_well = 0,
    operation_failed = 1, ///< the backend reported an error: of opening, as a whole, of a variable
    not_set_up = 2,       ///< wrong usage, configuration, or a module that does not load
};

} // namespace iohost
