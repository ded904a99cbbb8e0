#include "opened_machine.hpp"

#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::opened_machine;
using variable_names = std::vector<v2::plc_identifier>;

v2::plc_identifier const load_one("load.one");
v2::plc_identifier const hostname("system.hostname");
v2::plc_identifier const eth0("network.eth0");
v2::plc_identifier const cpu_total("cpu.total");
v2::plc_identifier const cpu_user("cpu.total", "user");

v2::subscription_result subscribed(opened_machine const& machine, variable_names const& wanted) {
    v2::subscription_result result;
    v2::io_error error = v2::io_errc::todo;
    machine.backend().subscribe(wanted, result, error);
    EXPECT_EQ(error, v2::io_error());
    return result;
}

v2::read_result polled(opened_machine const& machine) {
    v2::read_result changes(variable_names{v2::plc_identifier("of an earlier poll")});
    v2::io_error error = v2::io_errc::todo;
    machine.backend().poll(changes, error);
    EXPECT_EQ(error, v2::io_error());
    return changes;
}

variable_names polled_names(opened_machine const& machine) {
    variable_names names;
    auto const changes = polled(machine);
    for (auto const& entry : changes) names.push_back(entry.identifier());
    return names;
}

v2::io_error unsubscribed(opened_machine const& machine, v2::subscription_id const& id) {
    v2::io_error error = v2::io_errc::todo;
    machine.backend().unsubscribe(id, error);
    return error;
}

TEST(linux_subscription, gives_type_and_id_of_each_variable) {
    opened_machine const machine;
    auto const result = subscribed(machine, {load_one, eth0});
    for (auto const& [variable, type] :
         std::vector<std::pair<v2::plc_identifier, v2::io_data_type>>{
             {load_one, v2::io_data_type::scalar(v2::io_data_type::basic_types::dbl)},
             {eth0, machine.value(eth0).data_type()}}) {
        auto const& entry = result.get(variable);
        EXPECT_TRUE(result.has(variable));
        EXPECT_TRUE(entry.ok()) << entry.error;
        EXPECT_EQ(entry.data_type, type);
        EXPECT_NE(entry.id.kind(), v2::subscription_id_kind::none);
    }
    EXPECT_NE(result.get(load_one).id.number(), result.get(eth0).id.number());
}

TEST(linux_subscription, delivers_first_what_there_is_and_then_each_change_once) {
    opened_machine const machine;
    static_cast<void>(subscribed(machine, {load_one, hostname}));
    auto const first = polled(machine);
    ASSERT_EQ(first.size(), 2U);
    EXPECT_EQ(first[0].identifier(), load_one);
    EXPECT_EQ(first[0].value().value(), 0.42);
    EXPECT_EQ(first[1].identifier(), hostname);
    EXPECT_EQ(first[1].value().value(), "station-7");
    EXPECT_TRUE(polled(machine).empty());

    machine.files().write("proc/loadavg", "0.50 0.36 0.30 2/345 6789\n");
    auto const changed = polled(machine);
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].identifier(), load_one);
    EXPECT_EQ(changed[0].value().value(), 0.5);
    EXPECT_TRUE(polled(machine).empty());
}

TEST(linux_subscription, delivers_a_structure_when_a_member_changes) {
    opened_machine const machine;
    static_cast<void>(subscribed(machine, {cpu_total}));
    EXPECT_EQ(polled_names(machine), variable_names{cpu_total});
    EXPECT_EQ(polled_names(machine), variable_names());
    machine.files().write("proc/stat", "cpu 3001 200 1000 40000 500 60 70 80 0 0\n");
    EXPECT_EQ(polled_names(machine), variable_names{cpu_total});
}

TEST(linux_subscription, delivers_an_error_as_a_change_once) {
    opened_machine const machine;
    static_cast<void>(subscribed(machine, {load_one}));
    EXPECT_EQ(polled_names(machine), variable_names{load_one});
    machine.files().remove("proc/loadavg");
    auto const lost = polled(machine);
    ASSERT_EQ(lost.size(), 1U);
    linux_test::expect_linux_error(lost[0].error(), 1, "read", "load.one");
    EXPECT_TRUE(polled(machine).empty());
    machine.files().write("proc/loadavg", "0.42 0.36 0.30 2/345 6789\n");
    EXPECT_EQ(polled_names(machine), variable_names{load_one});
}

TEST(linux_subscription, outlives_its_interface) {
    opened_machine const machine;
    static_cast<void>(subscribed(machine, {eth0}));
    EXPECT_EQ(polled_names(machine), variable_names{eth0});
    machine.files().write("proc/net/dev", "|\n|\n");
    auto const gone = polled(machine);
    ASSERT_EQ(gone.size(), 1U);
    EXPECT_EQ(gone[0].error(), v2::io_errc::not_found);
    machine.files().write("proc/net/dev", "|\neth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n");
    EXPECT_EQ(polled_names(machine), variable_names{eth0});
}

TEST(linux_subscription, twice_is_two_until_both_have_ended) {
    opened_machine const machine;
    auto const first = subscribed(machine, {load_one});
    EXPECT_EQ(polled_names(machine), variable_names{load_one});
    auto const second = subscribed(machine, {load_one});
    EXPECT_NE(first.get(load_one).id.number(), second.get(load_one).id.number());
    EXPECT_EQ(polled_names(machine), variable_names{load_one});

    EXPECT_TRUE(unsubscribed(machine, first.get(load_one).id).ok());
    machine.files().write("proc/loadavg", "0.50 0.36 0.30 2/345 6789\n");
    EXPECT_EQ(polled_names(machine), variable_names{load_one});
    EXPECT_TRUE(unsubscribed(machine, second.get(load_one).id).ok());
    machine.files().write("proc/loadavg", "0.60 0.36 0.30 2/345 6789\n");
    EXPECT_EQ(polled_names(machine), variable_names());
}

TEST(linux_subscription, ends_once) {
    opened_machine const machine;
    auto const result = subscribed(machine, {load_one});
    EXPECT_EQ(unsubscribed(machine, result.get(load_one).id), v2::io_error());
    EXPECT_EQ(unsubscribed(machine, result.get(load_one).id), v2::io_errc::not_found);
    EXPECT_EQ(unsubscribed(machine, {}), v2::io_errc::not_found);
    EXPECT_EQ(unsubscribed(machine, v2::subscription_id::from_number(99)), v2::io_errc::not_found);
}

TEST(linux_subscription, is_refused_for_members_and_strangers) {
    opened_machine const machine;
    v2::plc_identifier const stranger("nothing");
    v2::plc_identifier const no_member("load.one", "none");
    auto const result = subscribed(machine, {cpu_user, stranger, no_member});
    EXPECT_EQ(result.get(cpu_user).error, v2::io_errc::not_supported);
    EXPECT_EQ(result.get(stranger).error, v2::io_errc::not_found);
    EXPECT_EQ(result.get(no_member).error, v2::io_errc::not_found);
    for (auto const& refused : {cpu_user, stranger}) {
        auto const told = result.get(refused).error.diagnostics();
        EXPECT_EQ(told.get("operation"), v2::io_value("subscribe")) << refused;
    }
    EXPECT_EQ(result.get(stranger).error.diagnostics().get("variable"), v2::io_value("nothing"));
    EXPECT_EQ(result.get(no_member).error.diagnostics().get("variable"),
              v2::io_value("load.one/none"));
    EXPECT_EQ(result.get(stranger).id.kind(), v2::subscription_id_kind::none);
    EXPECT_EQ(polled_names(machine), variable_names());
}

TEST(linux_subscription, a_refused_member_does_not_hide_the_variable) {
    opened_machine const machine;
    auto const result = subscribed(machine, {cpu_total, cpu_user});
    EXPECT_TRUE(result.get(cpu_total).ok());
    EXPECT_EQ(polled_names(machine), variable_names{cpu_total});
    EXPECT_TRUE(unsubscribed(machine, result.get(cpu_total).id).ok());
}

TEST(linux_subscription, is_refused_where_it_cannot_be_known_what_there_is) {
    opened_machine const machine;
    machine.files().remove("proc/net/dev");
    auto const result = subscribed(machine, {eth0});
    linux_test::expect_linux_error(result.get(eth0).error, 1, "subscribe", "network.eth0");
}

TEST(linux_subscription, to_a_variable_whose_file_is_absent_waits_for_it) {
    opened_machine const machine;
    machine.files().remove("proc/loadavg");
    auto const result = subscribed(machine, {load_one});
    EXPECT_TRUE(result.get(load_one).ok());
    auto const first = polled(machine);
    ASSERT_EQ(first.size(), 1U);
    EXPECT_FALSE(first[0].ok());
}

TEST(linux_subscription, to_nothing_delivers_nothing) {
    opened_machine const machine;
    EXPECT_TRUE(subscribed(machine, {}).empty());
    EXPECT_TRUE(polled(machine).empty());
}

TEST(linux_subscription, polls_in_the_interval_of_the_configuration) {
    opened_machine const machine;
    EXPECT_EQ(machine.backend().poll_interval(), 1000U);
    auto values = machine.files().options();
    values.set("poll_interval_ms", 250);
    EXPECT_EQ(linux_test::linux_module_file().open(values)->poll_interval(), 250U);
}

TEST(linux_subscription, belongs_to_one_backend) {
    opened_machine const one;
    opened_machine const other;
    auto const result = subscribed(one, {load_one});
    EXPECT_EQ(polled_names(other), variable_names());
    EXPECT_EQ(unsubscribed(other, result.get(load_one).id), v2::io_errc::not_found);
}

} // namespace
