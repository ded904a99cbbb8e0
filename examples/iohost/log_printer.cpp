#include "log_printer.hpp"

#include "printable.hpp"
#include "terminal.hpp"

#include <unistd.h>

#include <iostream>

namespace iohost {

host_services::log_taker log_printer(bool all) {
    // On a terminal the line may hold how far a work has come.
    char const* const before = is_terminal(STDERR_FILENO) ? clear_line : "";
    return [all, before](host_services::level level, std::string_view text) {
        if (!all && level < host_services::level::warning) return;
        std::cerr << before << "iohost: " + name_of(level) + ": " + printable(text) + '\n'
                  << std::flush;
    };
}

} // namespace iohost
