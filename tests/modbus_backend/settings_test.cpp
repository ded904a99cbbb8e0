#include <gtest/gtest.h>
#include <modbus_backend/settings.hpp>
#include <modbus_backend/setup_error.hpp>

#include <string>
#include <vector>

namespace {

using namespace modbus_backend;
using example::setting;
using given_settings = std::vector<setting>;

TEST(settings, are_taken_by_name_in_any_order) {
    given_settings const given{
        {"timeout_ms", 250}, {"port", 1502}, {"host", "plc"}, {"map", "a.map"}};
    settings const read = read_settings(given);
    EXPECT_EQ(read.map, "a.map");
    EXPECT_EQ(read.host, "plc");
    EXPECT_EQ(read.port, 1502);
    EXPECT_EQ(read.timeout_ms, std::chrono::milliseconds(250));
}

TEST(settings, have_defaults_but_for_map_and_host) {
    given_settings const given{{"map", "a.map"}, {"host", "plc"}};
    settings const read = read_settings(given);
    EXPECT_EQ(read.port, 502);
    EXPECT_EQ(read.timeout_ms, std::chrono::milliseconds(2000));
}

TEST(settings, a_number_may_come_as_text) {
    given_settings const given{{"map", "a.map"}, {"host", "plc"}, {"port", "1502"}};
    EXPECT_EQ(read_settings(given).port, 1502);
}

void expect_refused(setting const& wrong, std::string const& problem) {
    given_settings const given{{"map", "a.map"}, {"host", "plc"}, wrong};
    try {
        static_cast<void>(read_settings(given));
        FAIL() << "taken: " << problem;
    } catch (setup_error const& error) {
        EXPECT_EQ(error.what(), problem);
        EXPECT_EQ(error.code(), modbus_errc::bad_setting);
    }
}

TEST(settings, unusable_ones_are_named) {
    expect_refused({"color", 1}, "unknown setting 'color'");
    expect_refused({"port", 0}, "setting 'port' is no number from 1 to 65535");
    expect_refused({"port", 65536}, "setting 'port' is no number from 1 to 65535");
    expect_refused({"port", "first"}, "setting 'port' is no number from 1 to 65535");
    expect_refused({"timeout_ms", -5}, "setting 'timeout_ms' is no number from 1 to 600000");
    expect_refused({"map", ""}, "setting 'map' is empty or no text");
    expect_refused({"host", tavi::ioapi::v2::utility::array<int>{1}},
                   "setting 'host' is empty or no text");
}

TEST(settings, missing_ones_are_named) {
    given_settings const no_map{{"host", "plc"}};
    given_settings const no_host{{"map", "a.map"}};
    EXPECT_THROW(static_cast<void>(read_settings(no_map)), setup_error);
    EXPECT_THROW(static_cast<void>(read_settings(no_host)), setup_error);
}

} // namespace
