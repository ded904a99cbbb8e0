#include "columns.hpp"
#include "commands.hpp"
#include "json_entry.hpp"
#include "printable.hpp"
#include "session.hpp"
#include "verdict.hpp"

#include <iostream>

namespace iohost {

exit_status verify_command(options const& chosen) {
    session opened(chosen);
    auto const verdict = opened.module().verify(opened.values());
    if (chosen.json) {
        print_document(to_json(verdict));
    } else if (verdict.empty()) {
        std::cout << "no issues\n";
    } else {
        columns table({"severity", "options", "message"});
        for (auto const& issue : verdict) {
            table.add({name_of(issue.severity), keys_of(issue), printable(issue.message)});
        }
        std::cout << table;
    }
    return has_error(verdict) ? operation_failed : all_well;
}

} // namespace iohost
