#include "opened_machine.hpp"

#include <unistd.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::opened_machine;
using basic_types = v2::io_data_type::basic_types;

constexpr unsigned long long kilo = 1024;

TEST(linux_read, gives_load_and_uptime) {
    opened_machine const machine;
    for (auto const& [name, expected] :
         std::vector<std::pair<std::string, double>>{{"load.one", 0.42},
                                                     {"load.five", 0.36},
                                                     {"load.fifteen", 0.30},
                                                     {"uptime.total", 5025.5},
                                                     {"uptime.idle", 9000.25}}) {
        EXPECT_TRUE(identical(machine.value(name), v2::io_value(expected))) << name;
    }
}

TEST(linux_read, gives_memory_in_bytes_and_counters) {
    opened_machine const machine;
    for (auto const& [name, expected] : std::vector<std::pair<std::string, unsigned long long>>{
             {"memory.total", 2048000 * kilo},
             {"memory.free", 512000 * kilo},
             {"memory.available", 1024000 * kilo},
             {"memory.buffers", 64000 * kilo},
             {"memory.cached", 256000 * kilo},
             {"memory.swap_total", 128000 * kilo},
             {"memory.swap_free", 100000 * kilo},
             {"system.tasks_running", 2},
             {"system.tasks_total", 345},
             {"system.processes_started", 4321},
             {"system.context_switches", 123456789},
             {"system.boot_time", 1700000000}}) {
        EXPECT_TRUE(identical(machine.value(name), v2::io_value::from_u64(expected))) << name;
    }
}

TEST(linux_read, gives_the_names_of_machine_and_kernel) {
    opened_machine const machine;
    EXPECT_TRUE(identical(machine.value("system.hostname"), "station-7"));
    EXPECT_TRUE(identical(machine.value("system.kernel"), "6.1.0-made-up"));
}

/// The members of `linux.cpu_times` in the order of the file, for a rate of ticks of this machine.
void expect_times(v2::io_object const& times, std::vector<double> const& ticks) {
    auto const rate = static_cast<double>(::sysconf(_SC_CLK_TCK));
    std::vector<char const*> const names{"user",   "nice", "system",  "idle",
                                         "iowait", "irq",  "softirq", "steal"};
    ASSERT_EQ(names.size(), ticks.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto const seconds = times.get(names[i]);
        EXPECT_EQ(seconds.data_type(), v2::io_data_type::scalar(basic_types::dbl)) << names[i];
        EXPECT_DOUBLE_EQ(seconds.as<double>(), ticks[i] / rate) << names[i];
    }
}

TEST(linux_read, gives_the_times_of_all_processors_as_a_structure) {
    opened_machine const machine;
    auto const value = machine.value("cpu.total");
    auto const* const times = value.get_if<v2::io_object>();
    ASSERT_NE(times, nullptr);
    expect_times(*times, {3000, 200, 1000, 40000, 500, 60, 70, 80});
    v2::io_error error;
    auto const known =
        machine.host().lookup_data_type(v2::plc_identifier("linux.cpu_times"), error);
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(value.data_type(), known);
    EXPECT_EQ(times->type(), known);
}

TEST(linux_read, gives_the_times_of_each_processor_as_an_array_of_structures) {
    opened_machine const machine;
    auto const value = machine.value("cpu.cores");
    auto const* const cores = value.get_if<v2::utility::array<v2::io_object>>();
    ASSERT_NE(cores, nullptr);
    ASSERT_EQ(cores->size(), 2U);
    expect_times((*cores)[0], {1000, 150, 400, 20000, 300, 10, 20, 30});
    expect_times((*cores)[1], {2000, 50, 600, 20000, 200, 50, 50, 50});
    EXPECT_TRUE(value.data_type().is_array());
    EXPECT_EQ(value.data_type().basic_type, basic_types::object);
    EXPECT_EQ(value.data_type().structure_id, (*cores)[0].type().structure_id);
}

TEST(linux_read, gives_the_names_of_the_interfaces) {
    opened_machine const machine;
    EXPECT_TRUE(identical(machine.value("network.interfaces"),
                          v2::utility::array<v2::utility::string>{"lo", "eth0", "eth0.20"}));
}

void expect_counters(v2::io_value const& direction, std::vector<unsigned long long> const& counts) {
    std::vector<char const*> const names{"bytes", "packets", "errors", "dropped"};
    auto const* const counters = direction.get_if<v2::io_object>();
    ASSERT_NE(counters, nullptr);
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_TRUE(identical(counters->get(names[i]), v2::io_value::from_u64(counts[i])))
            << names[i];
    }
}

TEST(linux_read, gives_the_traffic_of_an_interface_as_structures_in_a_structure) {
    opened_machine const machine;
    auto const value = machine.value("network.eth0");
    auto const* const traffic = value.get_if<v2::io_object>();
    ASSERT_NE(traffic, nullptr);
    expect_counters(traffic->get("receive"), {5000, 50, 3, 4});
    expect_counters(traffic->get("transmit"), {6000, 60, 13, 14});
}

TEST(linux_read, an_interface_may_have_a_dot_in_its_name) {
    opened_machine const machine;
    auto const value = machine.value("network.eth0.20");
    ASSERT_NE(value.get_if<v2::io_object>(), nullptr);
    expect_counters(value.get_if<v2::io_object>()->get("transmit"), {9, 10, 11, 12});
}

TEST(linux_read, gives_state_and_largest_packet_of_an_interface) {
    opened_machine const machine;
    auto const value = machine.value("link.eth0");
    auto const* const link = value.get_if<v2::io_object>();
    ASSERT_NE(link, nullptr);
    EXPECT_TRUE(identical(link->get("state"), "up"));
    EXPECT_TRUE(identical(link->get("mtu"), 1500U));
}

TEST(linux_read, gives_size_and_work_of_a_block_device) {
    opened_machine const machine;
    auto const value = machine.value("block.sda");
    auto const* const device = value.get_if<v2::io_object>();
    ASSERT_NE(device, nullptr);
    for (auto const& [name, expected] :
         std::vector<std::pair<char const*, unsigned long long>>{{"size", 1000 * 512},
                                                                 {"reads", 11},
                                                                 {"read_bytes", 33 * 512},
                                                                 {"writes", 55},
                                                                 {"written_bytes", 77 * 512}}) {
        EXPECT_TRUE(identical(device->get(name), v2::io_value::from_u64(expected))) << name;
    }
    EXPECT_TRUE(identical(device->get("busy"), 1.5));
}

TEST(linux_read, gives_temperatures_in_degrees) {
    opened_machine const machine;
    EXPECT_TRUE(identical(machine.value("thermal.zone0"), -1.5));
}

TEST(linux_read, takes_members_by_the_secondary_part) {
    opened_machine const machine;
    auto const rate = static_cast<double>(::sysconf(_SC_CLK_TCK));
    EXPECT_EQ(machine.member("cpu.total", "user").as<double>(), 3000 / rate);
    EXPECT_EQ(machine.member("link.lo", "state"), "unknown");
    EXPECT_EQ(machine.member("block.sda", "reads"), 11);
    expect_counters(machine.member("network.eth0", "transmit"), {6000, 60, 13, 14});
    EXPECT_EQ(machine.member("network.eth0", "receive.dropped"), 4);
}

TEST(linux_read, values_are_good_and_bear_the_time_of_reading) {
    opened_machine const machine;
    auto const before = v2::io_timestamp::now();
    auto const entry = machine.read("load.one");
    EXPECT_TRUE(entry.value().good());
    EXPECT_GE(entry.value().timestamp(), before);
    EXPECT_LE(entry.value().timestamp(), v2::io_timestamp::now());
}

TEST(linux_read, unknown_variables_and_members_are_not_found) {
    opened_machine const machine;
    std::vector<v2::plc_identifier> const unknown{
        v2::plc_identifier(),
        v2::plc_identifier(""),
        v2::plc_identifier("load"),
        v2::plc_identifier("Load.one"),
        v2::plc_identifier("load.one."),
        v2::plc_identifier(4),
        v2::plc_identifier({}, "load.one"),
        v2::plc_identifier("load.one", "user"),
        v2::plc_identifier("load.one", ""),
        v2::plc_identifier("cpu.total", "User"),
        v2::plc_identifier("cpu.total", "user."),
        v2::plc_identifier("cpu.total", ".user"),
        v2::plc_identifier("cpu.total", "user.user"),
        v2::plc_identifier("cpu.total", ""),
        v2::plc_identifier("cpu.total", 0),
        v2::plc_identifier("cpu.cores", "user"),
        v2::plc_identifier("cpu.cores", 0),
        v2::plc_identifier("network."),
        v2::plc_identifier("network.eth9"),
        v2::plc_identifier("network.interfaces", "0"),
        v2::plc_identifier("link.bonding_masters"),
        v2::plc_identifier("block.sdb"),
        v2::plc_identifier("block.../../proc"),
        v2::plc_identifier("block."),
        v2::plc_identifier("thermal.cooling_device0"),
        v2::plc_identifier(std::string("load.one\0", 9)),
    };
    for (auto const& variable : unknown) {
        EXPECT_EQ(machine.read(variable).error(), v2::io_errc::not_found) << variable;
    }
}

TEST(linux_read, fills_in_every_entry_of_a_request_that_mixes_and_repeats) {
    opened_machine const machine;
    v2::read_result result(std::vector{
        v2::plc_identifier("load.one"), v2::plc_identifier("nothing"),
        v2::plc_identifier("network.lo", "receive.bytes"), v2::plc_identifier("load.one")});
    v2::io_error error;
    machine.backend().read(result, error);
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(result[0].value().value(), 0.42);
    EXPECT_EQ(result[1].error(), v2::io_errc::not_found);
    EXPECT_EQ(describe(result[1].error()), "generic:1 not found {operation: (string) \"read\", "
                                           "variable: (string) \"nothing\"}");
    EXPECT_EQ(result[2].value().value(), 100);
    EXPECT_EQ(result[3].value().value(), 0.42);
}

TEST(linux_read, of_no_variables_is_a_success) {
    opened_machine const machine;
    v2::read_result nothing;
    v2::io_error error = v2::io_errc::todo;
    machine.backend().read(nothing, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_TRUE(nothing.empty());
}

TEST(linux_read, gives_what_the_files_say_at_the_time) {
    opened_machine const machine;
    EXPECT_EQ(machine.value("system.hostname"), "station-7");
    machine.files().write("proc/sys/kernel/hostname", "station-8\n");
    EXPECT_EQ(machine.value("system.hostname"), "station-8");
}

} // namespace
