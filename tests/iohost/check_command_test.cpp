#include "support/host_process.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace {

using iohost_support::document_of;
using iohost_support::environment_variable;
using iohost_support::expect_refused;
using iohost_support::host;
using iohost_support::host_with_backend;
using iohost_support::line_of;
using iohost_support::words;

/// Rules by their outcome.
std::map<std::string, std::set<std::string>> judged(words const& settings, words const& command) {
    auto arguments = command;
    arguments.emplace_back("--json");
    auto const finished = host_with_backend(settings, arguments);
    auto const document = document_of(finished);
    std::map<std::string, std::set<std::string>> rules;
    for (auto const& rule : document["rules"]) {
        EXPECT_FALSE(rule["detail"].get<std::string>().empty()) << rule;
        rules[rule["outcome"]].insert(rule["rule"].get<std::string>());
    }
    EXPECT_EQ(finished.status, rules["failed"].empty() ? 0 : 1) << finished.err;
    EXPECT_EQ(document["failed"], rules["failed"].size());
    return rules;
}

using names = std::set<std::string>;

TEST(check_command, passes_a_backend_that_keeps_all_rules) {
    auto rules = judged({}, {"check", "--allow-writes", "--write", "tank.count=7"});
    EXPECT_EQ(rules["failed"], names{});
    EXPECT_EQ(rules["skipped"], names{"missing_value_is_an_error"});
    // Of the module 10, of browse 3, of read 7, of write 13, of subscriptions 11, of the lifetime
    // 4, of manners 3.
    EXPECT_EQ(rules["ok"].size() + rules["skipped"].size(), 51U);
}

TEST(check_command, writes_nothing_that_may_succeed_unless_it_is_allowed) {
    auto const finished = host_with_backend({"check", "--verbose"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err.find("write "), std::string::npos) << finished.err;
    for (char const* const rule :
         {"write_of_what_was_read", "text_for_a_number_is_refused", "too_large_a_number_is_refused",
          "unknown_member_is_refused", "array_for_a_scalar_is_refused",
          "scalar_for_an_array_is_refused", "object_for_a_scalar_is_refused",
          "empty_value_is_refused", "wrong_member_is_refused", "write_of_the_same_twice"}) {
        auto const line = line_of(finished.out, std::string("skipped:  ") + rule);
        EXPECT_NE(line.find("controllers move machines"), std::string::npos) << finished.out;
    }
}

TEST(check_command, puts_back_what_it_writes) {
    auto const finished = host_with_backend({"check", "--verbose", "--write", "tank.count=7"});
    EXPECT_EQ(finished.status, 0);
    auto const written = finished.err.find("write \"tank.count\" = (u16) 7\n");
    auto const restored = finished.err.find("write \"tank.count\" = (u16) 1500\n");
    EXPECT_NE(written, std::string::npos) << finished.err;
    EXPECT_NE(restored, std::string::npos) << finished.err;
    EXPECT_LT(written, restored);
}

struct broken_rule {
    char const* fault;
    char const* rule;
};

void PrintTo(broken_rule const& each, std::ostream* out) {
    *out << each.fault;
}

class check_command_fault : public testing::TestWithParam<broken_rule> {};

TEST_P(check_command_fault, fails_the_rule_that_is_broken_and_no_other) {
    auto const [fault, rule] = GetParam();
    auto rules = judged({std::string("fault=") + fault},
                        {"check", "--allow-writes", "--write", "tank.volume=7"});
    EXPECT_EQ(rules["failed"], names{rule});
}

INSTANTIATE_TEST_SUITE_P(
    of_a_connection,
    check_command_fault,
    testing::Values(broken_rule{"accepts_unknown_keys", "unknown_key_is_an_error"},
                    broken_rule{"accepts_wrong_types", "wrong_type_is_an_error"},
                    broken_rule{"opens_anything", "open_refuses_what_verify_does"},
                    broken_rule{"nodes_without_identifier", "browse_gives_sound_nodes"},
                    broken_rule{"browse_replaces", "browse_adds_to_the_result"},
                    broken_rule{"browses_anything", "browse_refuses_what_is_no_folder"},
                    broken_rule{"reads_of_nothing_fail", "read_of_nothing"},
                    broken_rule{"invents_variables", "read_of_the_unknown"},
                    broken_rule{"silent_variable", "every_variable_is_answered_for"},
                    broken_rule{"lies_about_types", "types_of_browse_and_read_agree"},
                    broken_rule{"forgets_the_repeated", "read_of_the_same_twice"},
                    broken_rule{"invents_members", "read_of_an_unknown_member"},
                    broken_rule{"keeps_no_result", "mixed_read_answers_every_entry"},
                    broken_rule{"writes_of_nothing_fail", "write_of_nothing"},
                    broken_rule{"accepts_unknown_writes", "write_of_the_unknown"},
                    broken_rule{"takes_texts_for_numbers", "text_for_a_number_is_refused"},
                    broken_rule{"cuts_numbers", "too_large_a_number_is_refused"},
                    broken_rule{"takes_any_member", "unknown_member_is_refused"},
                    broken_rule{"takes_any_object", "wrong_member_is_refused"},
                    broken_rule{"takes_arrays_for_scalars", "array_for_a_scalar_is_refused"},
                    broken_rule{"takes_scalars_for_arrays", "scalar_for_an_array_is_refused"},
                    broken_rule{"takes_objects_for_scalars", "object_for_a_scalar_is_refused"},
                    broken_rule{"takes_the_empty_value", "empty_value_is_refused"},
                    broken_rule{"writes_the_repeated_once", "write_of_the_same_twice"},
                    broken_rule{"loses_writes", "write_of_what_was_given"},
                    broken_rule{"no_interval", "poll_interval_is_at_least_1"},
                    broken_rule{"subscribes_of_nothing_fail", "subscribe_to_nothing"},
                    broken_rule{"subscribes_to_anything", "subscribe_to_the_unknown"},
                    broken_rule{"subscribes_to_members", "subscribe_to_a_member_is_refused"},
                    broken_rule{"lies_about_subscribed_types", "subscribe_gives_type_and_id"},
                    broken_rule{"silent_first_poll", "first_poll_delivers_what_there_is"},
                    broken_rule{"poll_appends", "poll_replaces_the_entries"},
                    broken_rule{"delivers_the_unsubscribed", "unsubscribe_ends_the_delivery"},
                    broken_rule{"forgives_unknown_ids", "unsubscribe_refuses_unknown_ids"},
                    broken_rule{"unsubscribes_all", "subscribing_twice_makes_two"},
                    broken_rule{"repeats_fail", "subscribe_to_the_same_in_one_request"},
                    broken_rule{"leaks_descriptor", "descriptors_are_given_back"},
                    broken_rule{"leaks_thread", "threads_end_with_the_connection"},
                    broken_rule{"leaks_memory", "memory_is_given_back"},
                    broken_rule{"leaks_a_little", "memory_is_given_back"},
                    broken_rule{"registers_anew", "structures_do_not_pile_up"},
                    broken_rule{"keeps_old_error", "errors_are_cleared_first"},
                    broken_rule{"wordless_errors", "errors_explain_themselves"},
                    broken_rule{"odd_log_record", "log_records_are_well_formed"}),
    [](auto const& each) { return each.param.fault; });

// Two rules are about what follows from it.
TEST(check_command, finds_issues_with_keys_that_are_nowhere) {
    auto rules = judged({"fault=names_strange_keys"}, {"check"});
    EXPECT_EQ(rules["failed"], (names{"issues_are_sound", "unknown_key_is_an_error"}));
}

TEST(check_command, finds_values_that_change_though_they_are_refused) {
    auto rules = judged({"fault=changes_what_it_refuses"}, {"check", "--allow-writes"});
    EXPECT_EQ(rules["failed"],
              (names{"text_for_a_number_is_refused", "too_large_a_number_is_refused",
                     "array_for_a_scalar_is_refused", "scalar_for_an_array_is_refused",
                     "object_for_a_scalar_is_refused", "empty_value_is_refused"}));
}

TEST(check_command, finds_writes_without_an_outcome) {
    auto rules = judged({"fault=keeps_no_outcome"}, {"check", "--allow-writes"});
    EXPECT_EQ(rules["failed"], names{"write_of_what_was_read"});
}

TEST(check_command, says_which_rules_it_could_not_judge) {
    auto rules = judged({"fault=opens_once"}, {"check"});
    EXPECT_TRUE(rules["failed"].count("browse_rules_are_judged"));
    EXPECT_TRUE(rules["failed"].count("lifetime_rules_are_judged"));
    EXPECT_TRUE(rules["ok"].count("unknown_key_is_an_error"));
}

class check_command_form : public testing::TestWithParam<broken_rule> {};

TEST_P(check_command_form, fails_the_rule_that_is_broken_and_no_other) {
    auto const [fault, rule] = GetParam();
    environment_variable const form("TEST_BACKEND_FORM", fault);
    auto rules = judged({"mode=busy"}, {"check"});
    EXPECT_EQ(rules["failed"], names{rule});
}

INSTANTIATE_TEST_SUITE_P(
    of_a_module,
    check_command_form,
    testing::Values(broken_rule{"sentence_for_a_name", "module_describes_itself"},
                    broken_rule{"key_twice", "form_is_sound"},
                    broken_rule{"key_in_two_categories", "form_is_sound"},
                    broken_rule{"default_outside_choices", "defaults_fit_their_options"},
                    broken_rule{"choice_of_another_type", "choices_fit_their_options"},
                    broken_rule{"defaults_refused", "defaults_alone_are_accepted"}),
    [](auto const& each) { return each.param.fault; });

TEST(check_command, looks_at_required_options_where_there_are_some) {
    environment_variable const form("TEST_BACKEND_FORM", "required");
    auto rules = judged({"station=south"}, {"check"});
    EXPECT_EQ(rules["failed"], names{});
    EXPECT_TRUE(rules["ok"].count("missing_value_is_an_error"));
    EXPECT_TRUE(rules["skipped"].count("defaults_alone_are_accepted"));
    rules = judged({"station=south", "fault=accepts_missing_values"}, {"check"});
    EXPECT_EQ(rules["failed"], names{"missing_value_is_an_error"});
}

TEST(check_command, prints_one_line_for_each_rule) {
    auto const finished = host({"check", TEST_BACKEND_PATH, "--set", "fault=no_interval"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(line_of(finished.out, "FAILED"),
              "FAILED    poll_interval_is_at_least_1          0 ms");
    EXPECT_NE(line_of(finished.out, "ok        read_of_nothing "), "");
    EXPECT_NE(line_of(finished.out, "51 rules: "), "");
}

TEST(check_command, reports_a_connection_that_cannot_be_opened) {
    auto const finished = host_with_backend({"fault=does_not_open"}, {"check"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "iohost: nobody\\x0aanswers\n");
}

TEST(check_command, takes_a_configuration_that_the_backend_accepts) {
    expect_refused(host_with_backend({"nonsense=1"}, {"check"}),
                   "iohost: the backend refuses the configuration: nonsense: there is no option "
                   "'nonsense'");
    expect_refused(host({"check"}), "iohost: --backend is required");
    expect_refused(host_with_backend({"check", "--write", "tank.count"}),
                   "iohost: NAME=VALUE: 'tank.count' is none");
}

} // namespace
