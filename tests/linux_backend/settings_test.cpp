#include "made_up_machine.hpp"

#include <gtest/gtest.h>
#include <linux_backend/settings.hpp>

#include <string>
#include <utility>
#include <vector>

namespace {

namespace config = tavi::ioapi::v2::config;
using severity = config::verification_result::severity_type;
using basic_types = tavi::ioapi::v2::io_data_type::basic_types;

TEST(linux_settings, the_form_has_source_and_timing) {
    auto const form = linux_backend::settings_form();
    ASSERT_EQ(form.categories().size(), 2U);
    auto const& source = form.categories()[0];
    EXPECT_EQ(source.name(), "source");
    EXPECT_FALSE(source.collapsed());
    auto const& timing = form.categories()[1];
    EXPECT_EQ(timing.name(), "timing");
    EXPECT_TRUE(timing.collapsed());
    for (auto const& category : form.categories()) {
        EXPECT_FALSE(category.description().empty());
        EXPECT_FALSE(category.wants_connection());
        for (auto const& option : category.options()) {
            EXPECT_FALSE(option.display_name().empty()) << option.key();
            EXPECT_FALSE(option.description().empty()) << option.key();
            EXPECT_TRUE(option.optional()) << option.key();
        }
    }
}

struct expected_option {
    char const* category;
    char const* key;
    basic_types type;
    char const* default_value;
};

TEST(linux_settings, each_option_has_a_type_and_a_default) {
    auto const form = linux_backend::settings_form();
    unsigned int count = 0;
    for (auto const& expected :
         {expected_option{"source", "proc", basic_types::string, "/proc"},
          expected_option{"source", "sys", basic_types::string, "/sys"},
          expected_option{"timing", "poll_interval_ms", basic_types::u32, "1000"}}) {
        auto const* const category = form.get_category(expected.category);
        ASSERT_NE(category, nullptr);
        auto const* const option = category->get_option(expected.key);
        ASSERT_NE(option, nullptr) << expected.key;
        EXPECT_EQ(option->value_type(), expected.type);
        EXPECT_EQ(option->default_value().as<std::string>(), expected.default_value);
        ++count;
    }
    EXPECT_EQ(form.categories()[0].options().size() + form.categories()[1].options().size(), count);
}

TEST(linux_settings, have_the_defaults_of_the_form) {
    auto const read = linux_backend::read_settings({});
    EXPECT_EQ(read.proc, "/proc");
    EXPECT_EQ(read.sys, "/sys");
    EXPECT_EQ(read.poll_interval_ms, 1000U);
}

TEST(linux_settings, are_taken_by_key_and_converted) {
    config::store values;
    values.set("proc", "/a");
    values.set("sys", "/b");
    values.set("poll_interval_ms", "250");
    auto const read = linux_backend::read_settings(values);
    EXPECT_EQ(read.proc, "/a");
    EXPECT_EQ(read.sys, "/b");
    EXPECT_EQ(read.poll_interval_ms, 250U);
}

/// What there is to say to the options of a made-up machine with one of them changed.
config::verification_result verdict_on(linux_test::made_up_machine const& machine,
                                       std::string const& key,
                                       tavi::ioapi::v2::io_value const& value) {
    auto values = machine.options();
    values.set(key, value);
    return linux_backend::verify_settings(values);
}

struct said {
    severity worst;
    std::string message;
};

said said_of(config::verification_result const& verdict, std::string const& key) {
    EXPECT_EQ(verdict.end() - verdict.begin(), 1);
    auto const issues = verdict.issues_for_option(key);
    EXPECT_EQ(issues.size(), 1U);
    return issues.empty() ? said{} : said{issues[0].severity, issues[0].message.str()};
}

TEST(linux_settings, nothing_is_said_to_good_ones) {
    linux_test::made_up_machine const machine;
    EXPECT_TRUE(linux_backend::verify_settings({}).empty());
    for (int const interval : {100, 1000, 60000}) {
        EXPECT_TRUE(verdict_on(machine, "poll_interval_ms", interval).empty()) << interval;
    }
}

TEST(linux_settings, a_folder_that_is_not_there_is_an_error_of_its_option) {
    linux_test::made_up_machine const machine;
    for (char const* const key : {"proc", "sys"}) {
        for (std::string const& path :
             {machine.path("nowhere"), machine.path("proc/loadavg"), std::string()}) {
            auto const told = said_of(verdict_on(machine, key, path), key);
            EXPECT_EQ(told.worst, severity::error);
            EXPECT_EQ(told.message, "'" + std::string(key) + "' names no folder: '" + path + "'");
        }
    }
}

TEST(linux_settings, an_interval_out_of_range_is_an_error) {
    linux_test::made_up_machine const machine;
    for (long long const interval : {0LL, 60001LL, 4294967295LL}) {
        auto const told = said_of(
            verdict_on(machine, "poll_interval_ms", tavi::ioapi::v2::io_value::from_i64(interval)),
            "poll_interval_ms");
        EXPECT_EQ(told.worst, severity::error) << interval;
        EXPECT_EQ(told.message, "'poll_interval_ms' takes a number from 1 to 60000");
    }
}

TEST(linux_settings, an_interval_that_is_no_number_is_an_error_told_once) {
    linux_test::made_up_machine const machine;
    for (tavi::ioapi::v2::io_value const& wrong :
         {tavi::ioapi::v2::io_value(-1), tavi::ioapi::v2::io_value("soon"),
          tavi::ioapi::v2::io_value(1.5)}) {
        auto const told =
            said_of(verdict_on(machine, "poll_interval_ms", wrong), "poll_interval_ms");
        EXPECT_EQ(told.worst, severity::error) << wrong;
    }
}

TEST(linux_settings, a_very_short_interval_is_warned_of) {
    linux_test::made_up_machine const machine;
    for (int const interval : {1, 99}) {
        auto const told =
            said_of(verdict_on(machine, "poll_interval_ms", interval), "poll_interval_ms");
        EXPECT_EQ(told.worst, severity::warning) << interval;
    }
}

TEST(linux_settings, an_unknown_key_is_an_error) {
    linux_test::made_up_machine const machine;
    auto const told = said_of(verdict_on(machine, "etc", "/etc"), "etc");
    EXPECT_EQ(told.worst, severity::error);
    EXPECT_EQ(told.message, "'etc' is no option of this backend");
}

} // namespace
