#include "columns.hpp"
#include "commands.hpp"
#include "entry_name.hpp"
#include "json_entry.hpp"
#include "printable.hpp"
#include "session.hpp"
#include "write_request.hpp"

#include <algorithm>
#include <iostream>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

void print_json(v2::write_result const& result) {
    json entries = json::array();
    for (auto const& entry : result) {
        json shown = {{"name", given_name_of(entry.identifier())}, {"written", entry.ok()}};
        if (!entry.ok()) shown["error"] = to_json(entry.error());
        entries.push_back(std::move(shown));
    }
    print_document({{"entries", std::move(entries)}});
}

void print_table(v2::write_result const& result) {
    columns table({"identifier", "outcome", "error"});
    for (auto const& entry : result) {
        table.add({name_of(entry.identifier()), entry.ok() ? "written" : "not written",
                   entry.ok() ? "-" : printable(describe(entry.error()))});
    }
    std::cout << table;
}

} // namespace

exit_status write_command(options const& chosen) {
    std::vector<assignment> assigned;
    assigned.reserve(chosen.assignments.size());
    for (auto const& text : chosen.assignments) assigned.push_back(parsed_assignment(text));

    session opened(chosen);
    auto const result = write_assignments(assigned, opened.connection(), opened.structures());
    if (chosen.json) {
        print_json(result);
    } else {
        print_table(result);
    }
    bool const complete =
        std::all_of(result.begin(), result.end(), [](auto const& entry) { return entry.ok(); });
    return complete ? all_well : operation_failed;
}

} // namespace iohost
