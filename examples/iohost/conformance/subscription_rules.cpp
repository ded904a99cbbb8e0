#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "../entry_name.hpp"
#include "../type_names.hpp"
#include "subject.hpp"

#include <algorithm>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
using faults = std::vector<std::string>;

constexpr std::size_t few_subscribed = 20;

std::string quoted(v2::plc_identifier const& identifier) {
    return "'" + name_of(identifier) + "'";
}

bool delivers(v2::read_result const& changes, v2::plc_identifier const& variable) {
    return changes.find(variable) != nullptr;
}

void judge_interval(subject const& about, example::backend& backend) {
    auto const interval = backend.poll_interval();
    faults found;
    if (interval < 1) found.emplace_back("0 ms");
    about.rules.judge("poll_interval_is_at_least_1", found, std::to_string(interval) + " ms");
}

void judge_empty_subscription(subject const& about, example::backend& backend) {
    v2::subscription_result result;
    faults found;
    if (auto const error = about.subscribe(backend, {}, result)) found.push_back(describe(error));
    if (!result.empty()) found.emplace_back("entries come into being");
    about.rules.judge("subscribe_to_nothing", found, "is no error");
}

/// That a request for one variable or member is refused in its entry.
void judge_refused(subject const& about,
                   example::backend& backend,
                   std::string const& rule,
                   v2::plc_identifier const& wanted) {
    v2::subscription_result result;
    faults found;
    std::string detail;
    if (auto const error = about.subscribe(backend, {wanted}, result)) {
        found.push_back(describe(error));
    } else if (!result.has(wanted)) {
        found.push_back(quoted(wanted) + " has no answer");
    } else if (result.get(wanted).ok()) {
        found.push_back(quoted(wanted) + " is subscribed to");
    } else {
        detail = describe(result.get(wanted).error);
    }
    about.rules.judge(rule, found, detail);
}

/// A member that there is, or else one of a variable that has none.
v2::plc_identifier some_member(subject const& about) {
    for (auto const& entry : about.entries) {
        if (!entry.ok()) continue;
        auto const* const object = entry.value().value().get_if<v2::io_object>();
        if (object == nullptr || object->empty()) continue;
        return v2::plc_identifier(entry.identifier().primary(), (*object->begin()).first);
    }
    return unknown_member(about.variables.front().identifier);
}

std::vector<v2::plc_identifier> identifiers_of(std::vector<v2::browsing::node> const& nodes) {
    std::vector<v2::plc_identifier> identifiers;
    identifiers.reserve(nodes.size());
    for (auto const& node : nodes) identifiers.push_back(node.identifier);
    return identifiers;
}

void judge_answers(subject const& about,
                   std::vector<v2::browsing::node> const& nodes,
                   v2::subscription_result const& result) {
    faults found;
    for (auto const& node : nodes) {
        auto const& entry = result.get(node.identifier);
        if (v2::subscription_result::is_not_found(entry)) {
            found.push_back(quoted(node.identifier) + " has no answer");
        } else if (!entry.ok()) {
            found.push_back(quoted(node.identifier) + ": " + describe(entry.error));
        } else if (entry.id.kind() == v2::subscription_id_kind::none) {
            found.push_back(quoted(node.identifier) + " has no id");
        } else if (node.data_type != v2::io_data_type() && entry.data_type != node.data_type) {
            auto& structures = about.host.structures();
            found.push_back(quoted(node.identifier) + " is " + name_of(node.data_type, structures) +
                            " by browse and " + name_of(entry.data_type, structures) +
                            " by subscribe");
        }
    }
    about.rules.judge("subscribe_gives_type_and_id", found,
                      std::to_string(nodes.size()) + " variables");
}

/// A poll whose result holds something of before.
v2::read_result polled(subject const& about, example::backend& backend, faults& found) {
    std::vector<v2::plc_identifier> const before{unknown_variable()};
    v2::read_result changes(before);
    if (auto const error = about.poll(backend, changes)) found.push_back(describe(error));
    return changes;
}

/// What was found so far, and what the first poll leaves out.
faults without(v2::read_result const& changes,
               std::vector<v2::plc_identifier> const& variables,
               faults found) {
    for (auto const& variable : variables) {
        if (!delivers(changes, variable)) {
            found.push_back(quoted(variable) + " is not delivered by the first poll");
        }
    }
    return found;
}

/// \return whether the first poll delivers what it should
bool judge_life(subject& about, std::vector<v2::browsing::node> const& nodes) {
    auto& backend = about.connection();
    auto const variables = identifiers_of(nodes);
    v2::subscription_result result;
    if (auto const error = about.subscribe(backend, variables, result)) {
        about.rules.failed("subscribe_gives_type_and_id", describe(error));
        return false;
    }
    judge_answers(about, nodes, result);

    faults poll_errors;
    auto const first = polled(about, backend, poll_errors);
    auto const missing = without(first, variables, poll_errors);
    about.rules.judge("first_poll_delivers_what_there_is", missing,
                      std::to_string(first.size()) + " entries");
    faults kept;
    if (delivers(first, unknown_variable())) {
        kept.emplace_back("an entry that the result had before is still there");
    }
    about.rules.judge("poll_replaces_the_entries", kept, "nothing of before is left");

    faults ends;
    for (auto const& variable : variables) {
        auto const& entry = result.get(variable);
        if (!entry.ok() || v2::subscription_result::is_not_found(entry)) continue;
        if (auto const error = about.unsubscribe(backend, entry.id)) {
            ends.push_back(quoted(variable) + ": " + describe(error));
        }
    }
    auto const later = polled(about, backend, ends);
    for (auto const& variable : variables) {
        if (delivers(later, variable))
            ends.push_back(quoted(variable) + " is delivered all the same");
    }
    about.rules.judge("unsubscribe_ends_the_delivery", ends,
                      std::to_string(variables.size()) + " subscriptions ended");

    faults forgiven;
    auto const expect_unknown = [&](v2::subscription_id const& id, char const* what) {
        auto const error = about.unsubscribe(backend, id);
        if (error == v2::io_error(v2::io_errc::not_found)) return;
        forgiven.push_back(std::string(what) + " gives " + (error ? describe(error) : "no error") +
                           " and not " + describe(v2::io_errc::not_found));
    };
    expect_unknown({}, "an id of no kind");
    expect_unknown(v2::subscription_id::from_number(0xFFFF'FFFF'FFFF'FFF0), "an unknown number");
    expect_unknown(v2::subscription_id::from_address(&forgiven), "an unknown address");
    auto const& ended = result.get(variables.front());
    if (ended.ok()) expect_unknown(ended.id, "the id of a subscription that has ended");
    about.rules.judge("unsubscribe_refuses_unknown_ids", forgiven, "each gives not_found");
    return missing.empty();
}

/// Two subscriptions to one variable, of which one ends.
void judge_two(subject const& about, v2::plc_identifier const& variable) {
    auto const backend = about.open();
    v2::subscription_result first;
    v2::subscription_result second;
    faults found;
    for (auto* const result : {&first, &second}) {
        if (auto const error = about.subscribe(*backend, {variable}, *result)) {
            found.push_back(describe(error));
        } else if (!result->has(variable) || !result->get(variable).ok()) {
            found.push_back(quoted(variable) + " is not subscribed to again");
        }
    }
    if (found.empty()) {
        if (auto const error = about.unsubscribe(*backend, first.get(variable).id)) {
            found.push_back("the first does not end: " + describe(error));
        }
        v2::read_result changes;
        if (auto const error = about.poll(*backend, changes)) found.push_back(describe(error));
        if (!delivers(changes, variable)) found.emplace_back("the end of the first ends both");
        if (auto const error = about.unsubscribe(*backend, second.get(variable).id)) {
            found.push_back("the second does not end: " + describe(error));
        }
    }
    about.rules.judge("subscribing_twice_makes_two", found, "each ends by its own id");
}

void judge_repeated(subject const& about, v2::plc_identifier const& variable) {
    auto const backend = about.open();
    v2::subscription_result result;
    faults found;
    if (auto const error = about.subscribe(*backend, {variable, variable}, result)) {
        found.push_back(describe(error));
    } else if (!result.has(variable) || !result.get(variable).ok()) {
        found.push_back(quoted(variable) + " is not subscribed to");
    }
    about.rules.judge("subscribe_to_the_same_in_one_request", found, "is no error");
}

} // namespace

void judge_subscriptions(subject& about) {
    auto& backend = about.connection();
    judge_interval(about, backend);
    judge_empty_subscription(about, backend);
    judge_refused(about, backend, "subscribe_to_the_unknown", unknown_variable());
    if (about.variables.empty()) {
        about.rules.skipped("subscribe_to_a_member_is_refused", "there is no variable");
    } else {
        judge_refused(about, backend, "subscribe_to_a_member_is_refused", some_member(about));
    }
    auto const nodes = about.readable(few_subscribed);
    if (nodes.empty()) {
        for (char const* const rule :
             {"subscribe_gives_type_and_id", "first_poll_delivers_what_there_is",
              "poll_replaces_the_entries", "unsubscribe_ends_the_delivery",
              "unsubscribe_refuses_unknown_ids", "subscribing_twice_makes_two",
              "subscribe_to_the_same_in_one_request"}) {
            about.rules.skipped(rule, "no variable has a value");
        }
        return;
    }
    if (judge_life(about, nodes)) {
        judge_two(about, nodes.front().identifier);
    } else {
        about.rules.skipped("subscribing_twice_makes_two", "the first poll leaves variables out");
    }
    judge_repeated(about, nodes.front().identifier);
}

} // namespace iohost::conformance
