#include "opened_machine.hpp"

#include <unistd.h>

#include <ctime>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;

/// The machine that the tests run on, by the defaults of the configuration.
class real_machine : public testing::Test {
protected:
    [[nodiscard]] v2::io_value value(v2::plc_identifier const& variable) const {
        auto const entry = linux_test::read_entry(*opened_, variable);
        EXPECT_TRUE(entry.ok()) << variable << ' ' << entry.error();
        return entry.value().value();
    }
    [[nodiscard]] v2::io_value value(std::string const& variable) const {
        return value(v2::plc_identifier(variable));
    }
    [[nodiscard]] double number(std::string const& variable) const {
        return value(variable).as<double>();
    }

private:
    test_support::opened_backend opened_ = linux_test::linux_module_file().open({});
};

TEST_F(real_machine, has_memory) {
    EXPECT_GT(number("memory.total"), 1024.0 * 1024.0);
    EXPECT_GT(number("memory.free"), 0.0);
    EXPECT_LE(number("memory.free"), number("memory.total"));
    EXPECT_LE(number("memory.swap_free"), number("memory.swap_total"));
}

TEST_F(real_machine, has_run_for_a_while) {
    auto const before = number("uptime.total");
    EXPECT_GT(before, 0.0);
    EXPECT_GE(number("uptime.total"), before);
    EXPECT_GE(number("load.fifteen"), 0.0);
    auto const now = static_cast<double>(std::time(nullptr));
    EXPECT_LT(number("system.boot_time"), now);
    EXPECT_GT(number("system.boot_time"), 0.0);
}

TEST_F(real_machine, has_as_many_processors_as_the_system_says) {
    auto const cores = value("cpu.cores");
    auto const* const list = cores.get_if<v2::utility::array<v2::io_object>>();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(static_cast<long>(list->size()), ::sysconf(_SC_NPROCESSORS_ONLN));
    EXPECT_GT(value(v2::plc_identifier("cpu.total", "user")).as<double>(), 0.0);
}

TEST_F(real_machine, runs_at_least_this_test) {
    EXPECT_GE(number("system.tasks_running"), 1.0);
    EXPECT_GE(number("system.tasks_total"), number("system.tasks_running"));
    EXPECT_GE(number("system.processes_started"), 1.0);
    EXPECT_GE(number("system.context_switches"), 1.0);
}

TEST_F(real_machine, has_a_name_and_a_kernel) {
    char name[256] = {};
    ASSERT_EQ(::gethostname(name, sizeof(name) - 1), 0);
    EXPECT_EQ(value("system.hostname").as<std::string>(), name);
    EXPECT_FALSE(value("system.kernel").as<std::string>().empty());
}

TEST_F(real_machine, every_interface_that_is_named_has_counters) {
    for (auto const& name : value("network.interfaces").as<std::vector<std::string>>()) {
        auto const received = value(v2::plc_identifier("network." + name, "receive.bytes"));
        EXPECT_TRUE(received.data_type() ==
                    v2::io_data_type::scalar(v2::io_data_type::basic_types::u64))
            << name;
    }
}

} // namespace
