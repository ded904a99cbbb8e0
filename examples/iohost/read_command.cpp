#include "batches.hpp"
#include "browsing.hpp"
#include "commands.hpp"
#include "conversion.hpp"
#include "entry_name.hpp"
#include "json_entry.hpp"
#include "listing.hpp"
#include "session.hpp"
#include "table.hpp"
#include "type_names.hpp"

#include <algorithm>
#include <iostream>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

bool print_json(v2::read_result const& result, v2::io_structure_dictionary& structures) {
    json entries = json::array();
    for (auto const& entry : result) entries.push_back(to_json(entry, structures));
    print_document({{"entries", std::move(entries)}});
    return std::all_of(result.begin(), result.end(), [](auto const& entry) { return entry.ok(); });
}

} // namespace

exit_status read_command(options const& chosen) {
    std::vector<v2::plc_identifier> variables;
    variables.reserve(chosen.names.size());
    for (auto const& name : chosen.names) variables.push_back(identifier_named(name));

    session opened(chosen);
    auto& backend = opened.connection();
    if (variables.empty()) {
        for (auto& node : variables_in(browse_tree(backend, {}))) {
            variables.push_back(std::move(node.identifier));
        }
    }
    auto result = read_in_batches(backend, variables);
    if (auto const type = type_named(chosen.type)) convert_values(result, *type);

    bool complete = false;
    if (chosen.json) {
        complete = print_json(result, opened.structures());
    } else if (chosen.print) {
        complete = print_listing(std::cout, result);
    } else {
        complete = print_table(std::cout, result, opened.structures());
    }
    return complete ? all_well : operation_failed;
}

} // namespace iohost
