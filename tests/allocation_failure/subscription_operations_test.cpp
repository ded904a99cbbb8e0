#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_data_type;
using v2::io_error;
using v2::plc_identifier;
using v2::subscription_id;
using v2::subscription_result;

plc_identifier const subscribed(long_text, other_text);

subscription_result two_subscriptions() {
    subscription_result result;
    result.set(subscribed, io_data_type::object(4), 5, subscription_id::from_number(6));
    result.set(plc_identifier("b"), io_error(v2::io_errc::not_found));
    return result;
}

/// Of the same primary part, so that it replaces.
plc_identifier const in_place(long_text, "a secondary part that is long enough for a block");
plc_identifier const fresh(other_text, other_text);

} // namespace

std::vector<operation> subscription_operations() {
    std::vector<operation> rows;
    auto const row = [&rows](std::string const& name, promise kept, std::vector<std::string> tries,
                             auto run) {
        for (std::string& tried : tries) tried = "subscription_result::" + tried;
        rows.push_back(operation_of(name, kept, std::move(tries), two_subscriptions, run));
    };
    rows.push_back(creation_of("ASubscriptionResult", {"subscription_result::subscription_result"},
                               [] { return subscription_result(); }));
    for (auto const* const identifier : {&fresh, &in_place}) {
        std::string const where = identifier == &fresh ? "ThatIsNew" : "InPlaceOfAnother";
        row("ASubscription" + where, promise::unchanged, {"set"},
            [identifier](subscription_result& result) {
                result.set(*identifier, io_data_type(), 8, subscription_id::from_number(9));
            });
        row("AFailedSubscription" + where, promise::unchanged, {"set"},
            [identifier](subscription_result& result) {
                result.set(*identifier, io_error(v2::io_errc::no_result));
            });
    }
    row("AMoveOfSubscriptions", promise::quiet, {}, [](subscription_result& result) {
        subscription_result taken(std::move(result));
        result = std::move(taken);
    });
    row("WhatSubscriptionsSay", promise::quiet, {"has", "get", "operator[]", "not_found", "remove"},
        [](subscription_result& result) {
            bool const found = result.has(subscribed) && !result.has(fresh) &&
                               &result.get(fresh) == &subscription_result::not_found();
            unsigned int const number = result[subscribed].aux_value;
            return std::pair(found, number + result.remove(subscribed) + result.remove(fresh));
        });
    row("TheEndsOfSubscriptions", promise::unchanged,
        {"begin", "end", "const_iterator::const_iterator"},
        [](subscription_result const& result) { return result.empty(); });
    row("AWalkThroughSubscriptions", promise::unchanged,
        {"const_iterator::operator++", "const_iterator::operator*", "const_iterator::operator!="},
        [](subscription_result const& result) {
            unsigned int sum = 0;
            for (auto const& entry : result) sum += entry.aux_value;
            return sum;
        });
    row("AStepThroughSubscriptions", promise::unchanged,
        {"const_iterator::operator++", "const_iterator::const_iterator",
         "const_iterator::operator==", "const_iterator::operator->"},
        [](subscription_result const& result) {
            auto at = result.begin();
            auto const before = at++;
            return before == result.begin() && before->identifier.primary().text().size() != 0;
        });
    row("APlaceInSubscriptions", promise::unchanged,
        {"const_iterator::operator= x2", "const_iterator::const_iterator"},
        [](subscription_result const& result) {
            auto at = result.begin();
            auto const last = result.end();
            at = last;
            auto copy = at;
            auto moved = std::move(copy);
            copy = std::move(moved); // to a place that holds nothing
            return copy == last;
        });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Subscriptions,
                         MemoryRunsOut,
                         ::testing::ValuesIn(subscription_operations()),
                         name_of_row());

} // namespace allocation_failure_test
