#include "opened_machine.hpp"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using linux_test::opened_machine;
using test_support::log_record;
using v2::log_severity_level;

TEST(linux_module, says_what_it_is) {
    example::module_info info;
    v2::io_error error = v2::io_errc::todo;
    linux_test::linux_module_file()->describe(info, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(info.name, "linux");
    EXPECT_FALSE(info.summary.empty());
    EXPECT_NE(info.summary[info.summary.size() - 1], '.');
    EXPECT_EQ(info.version.major_version, 1U);
}

TEST(linux_module, replaces_a_form_by_its_own) {
    v2::config::config_template form;
    form.add_category({"of another", "", false, false, {}});
    v2::io_error error = v2::io_errc::todo;
    linux_test::linux_module_file()->form(form, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_FALSE(form.has_category("of another"));
    EXPECT_TRUE(form.has_category("source"));
}

TEST(linux_module, replaces_a_verdict_by_its_own) {
    v2::config::verification_result verdict;
    verdict.add_issue({v2::config::verification_result::severity_type::error, "of another", {}});
    v2::io_error error = v2::io_errc::todo;
    linux_test::linux_module_file()->verify({}, verdict, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_TRUE(verdict.empty());
}

/// What a failed `open` says.
struct refused_open {
    std::string problem;
    v2::io_error error;
};

refused_open refused(v2::config::store const& values, v2::host_interface& host) {
    v2::utility::string problem = "of another";
    v2::io_error error;
    auto* const opened =
        linux_test::linux_module_file()->open(values, v2::backend_query(host), problem, error);
    EXPECT_EQ(opened, nullptr);
    EXPECT_TRUE(error.failed());
    return {problem.str(), error};
}

TEST(linux_module, refuses_to_open_what_verify_calls_wrong) {
    linux_test::made_up_machine const files;
    test_support::recording_host host;
    auto values = files.options();
    values.set("poll_interval_ms", 0);
    auto const [problem, error] = refused(values, host);
    EXPECT_EQ(problem, "'poll_interval_ms' takes a number from 1 to 60000");
    EXPECT_EQ(describe(error), "linux:6 unusable configuration");
    EXPECT_TRUE(host.types().empty());
    EXPECT_TRUE(host.log().empty());
}

TEST(linux_module, opens_with_a_warning) {
    linux_test::made_up_machine const files;
    auto values = files.options();
    values.set("poll_interval_ms", 1);
    EXPECT_EQ(linux_test::linux_module_file().open(values)->poll_interval(), 1U);
}

TEST(linux_module, tells_the_log_of_opening_and_closing) {
    opened_machine machine;
    std::vector<log_record> expected{
        {log_severity_level::information,
         "linux: opened, on " + machine.files().proc() + " and " + machine.files().sys()}};
    EXPECT_EQ(machine.host().log(), expected);
    machine.opened().close();
    expected.push_back({log_severity_level::information, "linux: closed"});
    EXPECT_EQ(machine.host().log(), expected);
}

v2::io_structure_type structure_of(opened_machine const& machine, std::string const& name) {
    v2::io_error error;
    auto const type = machine.host().lookup_data_type(v2::plc_identifier(name), error);
    EXPECT_TRUE(error.ok()) << name;
    auto structure = machine.host().lookup_structure_type(type, error);
    EXPECT_TRUE(error.ok()) << name;
    EXPECT_EQ(structure.name(), name);
    return structure;
}

std::vector<std::string> member_names(v2::io_structure_type const& structure) {
    std::vector<std::string> names;
    for (auto const& [name, type] : structure) names.push_back(name.str());
    return names;
}

TEST(linux_module, registers_its_structures_with_the_host) {
    opened_machine const machine;
    EXPECT_EQ(machine.host().types().size(), 5U);
    for (auto const& [name, members] :
         std::vector<std::pair<std::string, std::vector<std::string>>>{
             {"linux.cpu_times",
              {"idle", "iowait", "irq", "nice", "softirq", "steal", "system", "user"}},
             {"linux.network_counters", {"bytes", "dropped", "errors", "packets"}},
             {"linux.network_traffic", {"receive", "transmit"}},
             {"linux.network_link", {"mtu", "state"}},
             {"linux.block_device",
              {"busy", "read_bytes", "reads", "size", "writes", "written_bytes"}}}) {
        EXPECT_THAT(member_names(structure_of(machine, name)),
                    testing::UnorderedElementsAreArray(members))
            << name;
    }
}

TEST(linux_module, registers_the_inner_structure_of_another) {
    opened_machine const machine;
    v2::io_error error;
    auto const counters =
        machine.host().lookup_data_type(v2::plc_identifier("linux.network_counters"), error);
    auto const traffic = structure_of(machine, "linux.network_traffic");
    EXPECT_EQ(traffic.get_member("receive"), counters);
    EXPECT_EQ(traffic.get_member("transmit"), counters);
}

/// A host that takes no structures, or fails when it is told something.
class unwilling_host final : public v2::host_interface {
public:
    v2::backend_version_info backend_version() const override { return {}; }
    v2::utility::string p_backend_data_directory() const override { return {}; }
    v2::utility::string p_project_directory() const override { return {}; }
    v2::utility::string p_shared_extension_directory() const override { return {}; }
    v2::utility::string p_private_extension_directory() const override { return {}; }
    void push_log_record(log_severity_level, v2::utility::string_view) const override {
        if (fails_in_log) throw std::runtime_error("disk full");
    }
    v2::io_data_type lookup_data_type(v2::plc_identifier const&, v2::io_error&) const override {
        return {};
    }
    v2::io_structure_type lookup_structure_type(v2::io_data_type const&,
                                                v2::io_error&) const override {
        return {};
    }
    v2::io_data_type register_structure_type(v2::plc_identifier const&,
                                             v2::io_structure_type structure,
                                             v2::io_error& error) override {
        error.reset();
        if (structure.name() == refused) error = v2::io_errc::invalid_backend_context;
        return v2::io_data_type::object(++registered);
    }
    void replace_structure_type(v2::io_data_type const&,
                                v2::io_structure_type,
                                v2::io_error&) override {}
    void unregister_structure_type(v2::io_data_type const&, v2::io_error&) override {}
    void clear_structure_types() override {}

    std::string refused;
    unsigned long long registered = 0;
    bool fails_in_log = false;
};

TEST(linux_module, does_not_open_where_the_host_refuses_a_structure) {
    linux_test::made_up_machine const files;
    unwilling_host host;
    host.refused = "linux.network_traffic";
    auto const [problem, error] = refused(files.options(), host);
    EXPECT_EQ(problem, "the host does not take the structure 'linux.network_traffic'");
    EXPECT_EQ(error, v2::io_errc::invalid_backend_context);
}

TEST(linux_module, an_exception_of_the_host_becomes_an_error) {
    linux_test::made_up_machine const files;
    unwilling_host host;
    host.fails_in_log = true;
    auto const [problem, error] = refused(files.options(), host);
    EXPECT_EQ(error, v2::io_errc::unhandled_exception);
}

TEST(linux_module, closes_although_the_host_fails) {
    linux_test::made_up_machine const files;
    unwilling_host host;
    v2::utility::string problem = "of another";
    v2::io_error error;
    auto* const opened = linux_test::linux_module_file()->open(
        files.options(), v2::backend_query(host), problem, error);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(problem, "");
    host.fails_in_log = true;
    opened->release();
}

TEST(linux_module, may_be_opened_several_times_at_once) {
    opened_machine const one;
    opened_machine const other;
    other.files().write("proc/sys/kernel/hostname", "station-8\n");
    EXPECT_EQ(one.value("system.hostname"), "station-7");
    EXPECT_EQ(other.value("system.hostname"), "station-8");
}

TEST(linux_module, reads_while_its_values_live_on) {
    v2::io_value kept;
    {
        opened_machine const machine;
        kept = machine.value("network.eth0");
    }
    ASSERT_NE(kept.get_if<v2::io_object>(), nullptr);
    auto const receive = kept.get_if<v2::io_object>()->get("receive");
    EXPECT_EQ(receive.get_if<v2::io_object>()->get("bytes"), 5000);
}

} // namespace
