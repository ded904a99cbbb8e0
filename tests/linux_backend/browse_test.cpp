#include "opened_machine.hpp"

#include <set>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::opened_machine;
using v2::browsing::node_class;

v2::browse_result browsed(opened_machine const& machine, v2::plc_identifier const& folder) {
    v2::browse_result result;
    v2::io_error error = v2::io_errc::todo;
    machine.backend().browse(folder, result, error);
    EXPECT_EQ(error, v2::io_error()) << folder;
    return result;
}

/// The names below a folder; those of folders end with a slash.
std::vector<std::string> names_below(opened_machine const& machine, std::string const& folder) {
    auto const identifier = folder.empty() ? v2::plc_identifier() : v2::plc_identifier(folder);
    auto const result = browsed(machine, identifier);
    std::vector<std::string> names;
    for (auto const& node : result) {
        bool const is_folder = node.node_class == node_class::folder;
        names.push_back(node.browse_name.primary().text().str() + (is_folder ? "/" : ""));
    }
    return names;
}

using node_names = std::vector<std::string>;

TEST(linux_browse, has_a_folder_for_each_kind_at_the_top) {
    opened_machine const machine;
    EXPECT_EQ(names_below(machine, ""),
              (node_names{"load/", "uptime/", "memory/", "system/", "cpu/", "network/", "link/",
                          "block/", "thermal/"}));
}

TEST(linux_browse, has_the_variables_in_their_folders) {
    opened_machine const machine;
    EXPECT_EQ(names_below(machine, "load"), (node_names{"one", "five", "fifteen"}));
    EXPECT_EQ(names_below(machine, "uptime"), (node_names{"total", "idle"}));
    EXPECT_EQ(names_below(machine, "memory"), (node_names{"total", "free", "available", "buffers",
                                                          "cached", "swap_total", "swap_free"}));
    EXPECT_EQ(names_below(machine, "system"),
              (node_names{"hostname", "kernel", "tasks_running", "tasks_total", "processes_started",
                          "context_switches", "boot_time"}));
    EXPECT_EQ(names_below(machine, "cpu"), (node_names{"total", "cores"}));
    EXPECT_EQ(names_below(machine, "link"), (node_names{"eth0", "lo"}));
    EXPECT_EQ(names_below(machine, "block"), node_names{"sda"});
    EXPECT_EQ(names_below(machine, "thermal"), node_names{"zone0"});
}

TEST(linux_browse, an_interface_that_another_begins_with_is_variable_and_folder) {
    opened_machine const machine;
    EXPECT_EQ(names_below(machine, "network"), (node_names{"interfaces", "lo", "eth0", "eth0/"}));
    EXPECT_EQ(names_below(machine, "network.eth0"), node_names{"20"});
}

/// All nodes below a folder, those of its folders included.
void collect(opened_machine const& machine,
             v2::plc_identifier const& folder,
             std::vector<v2::browsing::node>& nodes) {
    auto const result = browsed(machine, folder);
    for (auto const& node : result) {
        nodes.push_back(node);
        if (node.node_class == node_class::folder) collect(machine, node.identifier, nodes);
    }
}

TEST(linux_browse, every_variable_can_be_read_and_is_of_the_type_it_says) {
    opened_machine const machine;
    std::vector<v2::browsing::node> nodes;
    collect(machine, v2::plc_identifier(), nodes);
    std::set<std::string> seen;
    for (auto const& node : nodes) {
        if (node.node_class != node_class::variable) continue;
        auto const value = machine.value(node.identifier);
        EXPECT_EQ(value.data_type(), node.data_type) << node.identifier;
        EXPECT_FALSE(node.description.empty()) << node.identifier;
        EXPECT_TRUE(seen.insert(node.identifier.primary().text().str()).second);
    }
    // 3 loads, 2 times, 7 of memory, 7 of the system, 2 of processors, 4 of networks, 2 links, and
    // one device of each kind
    EXPECT_EQ(seen.size(), 29U);
}

TEST(linux_browse, tells_interfaces_and_devices_of_the_moment) {
    opened_machine const machine;
    machine.files().write("proc/net/dev", "|\n|\nwlan0: 1\n");
    machine.files().write("sys/block/nvme0n1/size", "5\n");
    EXPECT_EQ(names_below(machine, "network"), (node_names{"interfaces", "wlan0"}));
    EXPECT_EQ(names_below(machine, "block"), (node_names{"nvme0n1", "sda"}));
}

TEST(linux_browse, has_one_variable_of_a_name) {
    opened_machine const machine;
    machine.files().write("proc/net/dev", "|\n|\ninterfaces: 1\n");
    EXPECT_EQ(names_below(machine, "network"), node_names{"interfaces"});
}

TEST(linux_browse, leaves_out_what_cannot_be_listed) {
    opened_machine const machine;
    machine.files().remove("proc/net/dev");
    machine.files().remove("sys");
    EXPECT_EQ(names_below(machine, ""),
              (node_names{"load/", "uptime/", "memory/", "system/", "cpu/", "network/"}));
    EXPECT_EQ(names_below(machine, "network"), node_names{"interfaces"});
}

TEST(linux_browse, of_what_is_no_folder_is_not_found_and_adds_nothing) {
    opened_machine const machine;
    for (v2::plc_identifier const& other :
         {v2::plc_identifier("load.one"), v2::plc_identifier("nothing"), v2::plc_identifier(""),
          v2::plc_identifier("load", "one"), v2::plc_identifier(4)}) {
        v2::browse_result result;
        v2::io_error error;
        machine.backend().browse(other, result, error);
        EXPECT_EQ(error, v2::io_errc::not_found) << other;
        EXPECT_TRUE(result.empty()) << other;
    }
}

} // namespace
