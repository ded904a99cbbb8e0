#include "commands.hpp"
#include "conformance/subject.hpp"
#include "failures.hpp"
#include "json_entry.hpp"
#include "log_printer.hpp"
#include "session.hpp"
#include "verdict.hpp"

#include <iostream>
#include <string>

namespace iohost {

namespace {

using conformance::report;
using conformance::subject;

/// Rules about a backend that does as it is told take a configuration that it accepts.
void insist_on_valid(session& opened) {
    auto const verdict = opened.module().verify(opened.values());
    for (auto const& issue : verdict) {
        if (issue.severity < tavi::ioapi::v2::config::verification_result::severity_type::error) {
            continue;
        }
        throw setup_failure("the backend refuses the configuration: " + keys_of(issue) + ": " +
                            issue.message.str() + "; check takes one that verify accepts");
    }
}

/// What keeps a group of rules from being judged is a failure of its own.
template <class Group>
void judge_group(report& rules, std::string const& name, Group group) {
    try {
        group();
    } catch (setup_failure const& failure) {
        rules.failed(name + "_rules_are_judged", failure.what());
    } catch (operation_failure const& failure) {
        rules.failed(name + "_rules_are_judged", failure.what());
    }
}

void judge_all(subject& about) {
    auto& rules = about.rules;
    judge_group(rules, "module", [&] { judge_module(about); });
    judge_group(rules, "browse", [&] { judge_browsing(about); });
    judge_group(rules, "read", [&] { judge_reading(about); });
    judge_group(rules, "write", [&] { judge_writing(about); });
    judge_group(rules, "subscription", [&] { judge_subscriptions(about); });
    judge_group(rules, "lifetime", [&] { judge_lifetime(about); });
    judge_manners(about);
}

} // namespace

exit_status check_command(options const& chosen) {
    std::vector<assignment> writes;
    writes.reserve(chosen.assignments.size());
    for (auto const& text : chosen.assignments) writes.push_back(parsed_assignment(text));

    session opened(chosen);
    insist_on_valid(opened);
    conformance::observed seen;
    opened.host().take_records_by(
        [&seen, print = log_printer(chosen.verbose)](auto level, std::string_view text) {
            seen.record(level, text);
            print(level, text);
        });
    // The world outside is not the backend's fault.
    {
        auto const tried =
            opened.module().open(opened.values(), tavi::ioapi::v2::backend_query(opened.host()));
    }

    report rules(!chosen.json);
    {
        subject about{opened.module(),
                      opened.host(),
                      opened.values(),
                      writes,
                      chosen.allow_writes,
                      seen,
                      rules,
                      {},
                      {},
                      {},
                      nullptr};
        judge_all(about);
    }
    opened.host().take_records_by(log_printer(chosen.verbose));
    if (chosen.json) {
        print_document(rules.document());
    } else {
        std::cout << rules.summary() << '\n';
    }
    return rules.count(report::outcome::failed) == 0 ? all_well : operation_failed;
}

} // namespace iohost
