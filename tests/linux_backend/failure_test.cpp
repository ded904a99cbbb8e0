#include "opened_machine.hpp"

#include <cerrno>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::expect_file_error;
using linux_test::opened_machine;

constexpr int absent_code = 1;
constexpr int unreadable_code = 2;
constexpr int malformed_code = 3;
constexpr int value_absent_code = 4;

/// Which variables a file gives.
struct file_use {
    std::string file;
    std::vector<std::string> variables;
};

std::vector<file_use> const uses_of_files{
    {"proc/loadavg",
     {"load.one", "load.five", "load.fifteen", "system.tasks_running", "system.tasks_total"}},
    {"proc/uptime", {"uptime.total", "uptime.idle"}},
    {"proc/meminfo",
     {"memory.total", "memory.free", "memory.available", "memory.buffers", "memory.cached",
      "memory.swap_total", "memory.swap_free"}},
    {"proc/stat",
     {"cpu.total", "cpu.cores", "system.processes_started", "system.context_switches",
      "system.boot_time"}},
    {"proc/sys/kernel/hostname", {"system.hostname"}},
    {"proc/sys/kernel/osrelease", {"system.kernel"}},
    {"proc/net/dev", {"network.interfaces", "network.eth0"}},
    {"sys/class/net/eth0/operstate", {"link.eth0"}},
    {"sys/class/net/eth0/mtu", {"link.eth0"}},
    {"sys/block/sda/size", {"block.sda"}},
    {"sys/block/sda/stat", {"block.sda"}},
    {"sys/class/thermal/thermal_zone0/temp", {"thermal.zone0"}},
};

TEST(linux_failures, of_an_absent_file_are_told_by_each_variable_in_it) {
    for (auto const& [file, variables] : uses_of_files) {
        opened_machine const machine;
        machine.files().remove(file);
        for (auto const& variable : variables) {
            SCOPED_TRACE(variable);
            expect_file_error(machine, variable, absent_code, file);
            auto const entry = machine.read(variable);
            EXPECT_EQ(entry.error().diagnostics().get("device_code"), ENOENT);
        }
    }
}

TEST(linux_failures, of_a_folder_in_place_of_a_file_are_told) {
    for (auto const& [file, variables] : uses_of_files) {
        opened_machine const machine;
        machine.files().remove(file);
        machine.files().write(file + "/inside", "");
        for (auto const& variable : variables) {
            SCOPED_TRACE(variable);
            expect_file_error(machine, variable, unreadable_code, file);
        }
    }
}

bool is_found_by_its_line(std::string const& file) {
    return file == "proc/meminfo" || file == "proc/stat";
}

TEST(linux_failures, of_an_empty_file_are_told) {
    for (auto const& [file, variables] : uses_of_files) {
        opened_machine const machine;
        machine.files().write(file, "");
        for (auto const& variable : variables) {
            SCOPED_TRACE(variable);
            expect_file_error(machine, variable,
                              is_found_by_its_line(file) ? value_absent_code : malformed_code,
                              file);
        }
    }
}

TEST(linux_failures, leave_the_variables_of_other_files_alone) {
    for (auto const& [broken, ignored] : uses_of_files) {
        opened_machine const machine;
        machine.files().remove(broken);
        for (auto const& [file, variables] : uses_of_files) {
            for (auto const& variable : variables) {
                bool const is_shared = variable == "block.sda" || variable == "link.eth0";
                if (file == broken || is_shared) continue;
                EXPECT_TRUE(machine.read(variable).ok()) << variable << " without " << broken;
            }
        }
    }
}

/// A content that gives no value of this variable.
struct bad_content {
    std::string file;
    std::string text;
    std::string variable;
    int code = malformed_code;
};

std::string const beyond_64_bits = "18446744073709551616";

std::string processor_line(std::string const& name, std::string const& last) {
    return name + " 1 2 3 4 5 6 7 " + last + "\n";
}

std::string const net_heading = "a|b\nc|d\n";

std::vector<bad_content> bad_contents() {
    return {
        {"proc/loadavg", "0.1 0.2", "load.one"},
        {"proc/loadavg", "a 0.2 0.3 1/2 3", "load.one"},
        {"proc/loadavg", "nan 0.2 0.3 1/2 3", "load.one"},
        {"proc/loadavg", "0.1 0.2 0.3", "system.tasks_total"},
        {"proc/loadavg", "0.1 0.2 0.3 12 3", "system.tasks_total"},
        {"proc/loadavg", "0.1 0.2 0.3 1/ 3", "system.tasks_total"},
        {"proc/loadavg", "0.1 0.2 0.3 1/" + beyond_64_bits, "system.tasks_total"},
        {"proc/uptime", "12.5", "uptime.total"},
        {"proc/uptime", "1e999 1", "uptime.total"},
        {"proc/uptime", std::string("\0\0\0\0", 4), "uptime.total"},
        {"proc/meminfo", "MemTotal: 5\n", "memory.total"},
        {"proc/meminfo", "MemTotal: 5 MB\n", "memory.total"},
        {"proc/meminfo", "MemTotal: -5 kB\n", "memory.total"},
        {"proc/meminfo", "MemTotal: " + beyond_64_bits + " kB\n", "memory.total"},
        {"proc/meminfo", "MemTotal: 18014398509481984 kB\n", "memory.total"},
        {"proc/meminfo", "MemFree: 5 kB\n", "memory.total", value_absent_code},
        {"proc/meminfo", "MemTotal 5 kB\n", "memory.total", value_absent_code},
        {"proc/stat", "ctxt\n", "system.context_switches"},
        {"proc/stat", "ctxt " + beyond_64_bits + "\n", "system.context_switches"},
        {"proc/stat", "ctxtx 5\n", "system.context_switches", value_absent_code},
        {"proc/stat", "cpu 1 2 3 4 5 6 7\n", "cpu.total"},
        {"proc/stat", processor_line("cpu", "x"), "cpu.total"},
        {"proc/stat", processor_line("cpu", beyond_64_bits), "cpu.total"},
        {"proc/stat", processor_line("cpu0", "8"), "cpu.total", value_absent_code},
        {"proc/stat", processor_line("cpu", "8"), "cpu.cores", value_absent_code},
        {"proc/stat", processor_line("cpu0", "8") + processor_line("cpu1", "-8"), "cpu.cores"},
        {"proc/sys/kernel/hostname", "\nname\n", "system.hostname"},
        {"proc/net/dev", "eth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n", "network.eth0"},
        {"proc/net/dev", net_heading + "eth0 1 2 3\n", "network.interfaces"},
        {"proc/net/dev", net_heading + "eth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n",
         "network.eth0"},
        {"proc/net/dev",
         net_heading + "eth0: 1 2 3 4 5 6 7 8 9 10 11 " + beyond_64_bits + " 13 14 15 16\n",
         "network.eth0"},
        {"sys/class/net/eth0/mtu", "big\n", "link.eth0"},
        {"sys/class/net/eth0/mtu", "4294967296\n", "link.eth0"},
        {"sys/block/sda/size", "36028797018963968\n", "block.sda"},
        {"sys/block/sda/stat", "1 2 3 4 5 6 7 8 9 10\n", "block.sda"},
        {"sys/block/sda/stat", "1 2 " + beyond_64_bits + " 4 5 6 7 8 9 10 11\n", "block.sda"},
        {"sys/class/thermal/thermal_zone0/temp", "warm\n", "thermal.zone0"},
        {"sys/class/thermal/thermal_zone0/temp", "9223372036854775808\n", "thermal.zone0"},
    };
}

TEST(linux_failures, of_a_file_that_is_not_understood_are_told) {
    opened_machine const machine;
    linux_test::made_up_machine const sound;
    for (auto const& [file, text, variable, code] : bad_contents()) {
        SCOPED_TRACE(variable + " of " + text);
        machine.files().write(file, text);
        expect_file_error(machine, variable, code, file);
        auto const reason = machine.read(variable).error().diagnostics().get("reason");
        EXPECT_FALSE(reason.as<std::string>().empty());
        std::filesystem::copy_file(sound.path(file), machine.files().path(file),
                                   std::filesystem::copy_options::overwrite_existing);
    }
}

TEST(linux_failures, of_one_line_leave_the_others_alone) {
    opened_machine const machine;
    machine.files().write("proc/meminfo", "MemTotal: many kB\nMemFree: 2 kB\n");
    EXPECT_FALSE(machine.read("memory.total").ok());
    EXPECT_EQ(machine.value("memory.free"), 2048);
    machine.files().write("proc/net/dev", net_heading + "eth0: 1\nlo: 1 2 3 4 5 6 7 8 9 10 11 12 "
                                                        "13 14 15 16\n");
    EXPECT_FALSE(machine.read("network.eth0").ok());
    EXPECT_EQ(machine.member("network.lo", "transmit.bytes"), 9);
}

TEST(linux_failures, of_a_member_are_those_of_its_variable) {
    opened_machine const machine;
    machine.files().remove("proc/stat");
    auto const entry = machine.read(v2::plc_identifier("cpu.total", "user"));
    linux_test::expect_linux_error(entry.error(), absent_code, "read", "cpu.total");
    EXPECT_EQ(machine.read(v2::plc_identifier("cpu.total", "none")).error(),
              v2::io_errc::not_found);
}

TEST(linux_failures, numbers_of_64_bits_are_none) {
    opened_machine const machine;
    machine.files().write("proc/stat", "ctxt 18446744073709551615\n");
    EXPECT_TRUE(identical(machine.value("system.context_switches"), v2::io_value::from_u64(~0ULL)));
    machine.files().write("proc/meminfo", "MemTotal: 18014398509481983 kB\n");
    EXPECT_TRUE(
        identical(machine.value("memory.total"), v2::io_value::from_u64(18446744073709550592U)));
}

TEST(linux_failures, very_long_lines_are_none) {
    opened_machine const machine;
    std::string const name(1'000'000, 'n');
    machine.files().write("proc/sys/kernel/hostname", name);
    EXPECT_TRUE(machine.value("system.hostname") == name);
    std::string interrupts = "intr 1";
    for (int i = 0; i < 500'000; ++i) interrupts += " 0";
    machine.files().write("proc/stat", interrupts + "\nctxt 7\n");
    EXPECT_EQ(machine.value("system.context_switches"), 7);
}

TEST(linux_failures, a_very_long_word_is_cut_in_the_message) {
    opened_machine const machine;
    machine.files().write("proc/uptime", std::string(1'000'000, '9') + "x 1\n");
    auto const error = machine.read("uptime.total").error();
    EXPECT_EQ(error.code(), malformed_code);
    EXPECT_LT(describe(error).size(), 500U);
}

TEST(linux_failures, lines_may_end_without_a_line_feed) {
    opened_machine const machine;
    machine.files().write("proc/uptime", "1.5 2.5");
    EXPECT_EQ(machine.value("uptime.idle"), 2.5);
    machine.files().write("proc/stat", "ctxt 7");
    EXPECT_EQ(machine.value("system.context_switches"), 7);
}

TEST(linux_failures, an_interface_that_has_gone_is_not_found) {
    opened_machine const machine;
    EXPECT_TRUE(machine.read("network.eth0").ok());
    machine.files().write("proc/net/dev", net_heading);
    EXPECT_EQ(machine.read("network.eth0").error(), v2::io_errc::not_found);
    EXPECT_TRUE(
        identical(machine.value("network.interfaces"), v2::utility::array<v2::utility::string>()));
    machine.files().remove("sys/class/net/eth0");
    EXPECT_EQ(machine.read("link.eth0").error(), v2::io_errc::not_found);
}

TEST(linux_failures, where_devices_cannot_be_listed_nobody_says_that_one_is_not_there) {
    opened_machine const machine;
    for (auto const& [folder, variable] :
         std::vector<std::pair<std::string, std::string>>{{"sys/block", "block.sdb"},
                                                          {"sys/class/net", "link.eth9"},
                                                          {"sys/class/thermal", "thermal.zone9"}}) {
        EXPECT_EQ(machine.read(variable).error(), v2::io_errc::not_found);
        machine.files().remove(folder);
        expect_file_error(machine, variable, absent_code, folder);
    }
}

TEST(linux_failures, of_all_files_at_once_are_entries_and_no_failed_read) {
    opened_machine const machine;
    machine.files().remove("");
    std::vector<v2::plc_identifier> all;
    for (auto const& [file, variables] : uses_of_files) {
        for (auto const& variable : variables) all.emplace_back(variable);
    }
    v2::read_result result(all);
    v2::io_error error;
    machine.backend().read(result, error);
    EXPECT_TRUE(error.ok());
    for (auto const& entry : result) {
        EXPECT_STREQ(entry.error().category().name(), "linux") << entry.identifier();
        EXPECT_EQ(entry.error().code(), absent_code) << entry.identifier();
    }
}

TEST(linux_failures, an_interface_that_is_told_twice_is_one) {
    opened_machine const machine;
    machine.files().write("proc/net/dev", net_heading +
                                              "eth0: 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n"
                                              "eth0: 2 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n");
    EXPECT_TRUE(identical(machine.value("network.interfaces"),
                          v2::utility::array<v2::utility::string>{"eth0"}));
    EXPECT_EQ(machine.member("network.eth0", "receive.bytes"), 1);
}

TEST(linux_failures, of_an_interface_with_the_name_of_the_list_hide_nothing) {
    opened_machine const machine;
    machine.files().write("proc/net/dev", net_heading + "interfaces: 1 2 3 4 5 6 7 8 9 10 11 12 13 "
                                                        "14 15 16\n");
    EXPECT_TRUE(identical(machine.value("network.interfaces"),
                          v2::utility::array<v2::utility::string>{"interfaces"}));
}

} // namespace
