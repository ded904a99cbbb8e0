#include "opened_machine.hpp"

#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::opened_machine;

constexpr int read_only_code = 5;

v2::write_result written(opened_machine const& machine,
                         std::vector<v2::plc_identifier> const& variables) {
    std::vector<v2::io_value> const values(variables.size(), v2::io_value(1));
    v2::write_result result(variables);
    v2::io_error error = v2::io_errc::todo;
    machine.backend().write(values, result, error);
    EXPECT_EQ(error, v2::io_error());
    return result;
}

TEST(linux_write, every_variable_refuses) {
    opened_machine const machine;
    for (char const* const variable :
         {"load.one", "system.hostname", "cpu.total", "cpu.cores", "network.interfaces",
          "network.eth0", "link.eth0", "block.sda", "thermal.zone0"}) {
        SCOPED_TRACE(variable);
        auto const result = written(machine, {v2::plc_identifier(variable)});
        linux_test::expect_linux_error(result[0].error(), read_only_code, "write", variable);
    }
    EXPECT_EQ(machine.value("system.hostname"), "station-7");
}

TEST(linux_write, members_refuse_as_well) {
    opened_machine const machine;
    auto const result = written(machine, {v2::plc_identifier("network.eth0", "receive.bytes")});
    linux_test::expect_linux_error(result[0].error(), read_only_code, "write", "network.eth0");
}

TEST(linux_write, what_is_unknown_is_not_found) {
    opened_machine const machine;
    std::vector<v2::plc_identifier> const unknown{
        v2::plc_identifier("nothing"), v2::plc_identifier("cpu.total", "none"),
        v2::plc_identifier("network.eth9"), v2::plc_identifier(4), v2::plc_identifier()};
    auto const result = written(machine, unknown);
    char const* const names[] = {"nothing", "cpu.total/none", "network.eth9", "4", ""};
    for (unsigned int i = 0; i < result.size(); ++i) {
        EXPECT_EQ(result[i].error().diagnostics().get("variable"), v2::io_value(names[i]));
    }
    for (auto const& entry : result) {
        EXPECT_EQ(entry.error(), v2::io_errc::not_found) << entry.identifier();
        EXPECT_EQ(entry.error().diagnostics().get("operation"), v2::io_value("write"));
    }
}

TEST(linux_write, what_may_be_there_has_the_error_of_its_file) {
    opened_machine const machine;
    machine.files().remove("proc/net/dev");
    auto const result = written(machine, {v2::plc_identifier("network.eth0")});
    linux_test::expect_linux_error(result[0].error(), 1, "write", "network.eth0");
}

TEST(linux_write, fills_in_each_entry_of_a_request_that_repeats) {
    opened_machine const machine;
    v2::plc_identifier const load("load.one");
    auto const result = written(machine, {load, v2::plc_identifier("nothing"), load});
    EXPECT_EQ(result[0].error().code(), read_only_code);
    EXPECT_EQ(result[1].error(), v2::io_errc::not_found);
    EXPECT_EQ(result[2].error().code(), read_only_code);
}

TEST(linux_write, of_nothing_is_a_success) {
    opened_machine const machine;
    EXPECT_TRUE(written(machine, {}).empty());
}

} // namespace
