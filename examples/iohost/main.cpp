#include "command_line.hpp"
#include "commands.hpp"
#include "failures.hpp"
#include "printable.hpp"
#include "terminal.hpp"

#include <exception>
#include <iostream>

namespace {

int complain(std::exception const& error, iohost::exit_status status) {
    std::cerr << "iohost: " << iohost::printable(error.what()) << '\n';
    return status;
}

/// What was found is lost where nobody can read it.
int finished(iohost::exit_status status) {
    if (std::cout.flush()) return status;
    std::cerr << "iohost: cannot write to standard output\n";
    return iohost::operation_failed;
}

int run(iohost::options const& chosen) {
    try {
        return finished(iohost::command_named(chosen.command)(chosen));
    } catch (iohost::operation_failure const& failure) {
        if (chosen.json) std::cout << failure.document() << '\n';
        return complain(failure, iohost::operation_failed);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        iohost::open_standard_streams();
        auto const chosen = iohost::parsed_command_line(argc, argv);
        return chosen ? run(*chosen) : finished(iohost::all_well);
    } catch (std::exception const& error) {
        return complain(error, iohost::not_set_up);
    }
}
