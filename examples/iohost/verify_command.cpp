#include "columns.hpp"
#include "commands.hpp"
#include "configuration.hpp"
#include "json_entry.hpp"
#include "printable.hpp"
#include "session.hpp"
#include "verdict.hpp"

#include <iostream>

namespace iohost {

namespace {

using verification = tavi::ioapi::v2::config::verification_result;

/// What the backend says; a text that is none of the type of its option is an error as well, where
/// the backend has none for it.
verification verdict_on(session& opened) {
    auto const made = convert_settings(opened.module().form(), opened.texts());
    auto verdict = opened.module().verify(made.values);
    using severity = verification::severity_type;
    for (auto const& [key, why] : made.unfit) {
        if (verdict.severity_for_option(key) >= severity::error) continue;
        verdict.add_issue({severity::error, why, {key}});
    }
    return verdict;
}

} // namespace

exit_status verify_command(options const& chosen) {
    session opened(chosen);
    auto const verdict = verdict_on(opened);
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
