#include <gtest/gtest.h>
#include <modbus_backend/error_category.hpp>

#include <set>
#include <string>

namespace {

using namespace modbus_backend;

TEST(error_category, describes_exceptions_by_their_number_in_the_protocol) {
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::illegal_function)),
              "modbus:1 illegal function");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::illegal_data_address)),
              "modbus:2 illegal data address");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::illegal_data_value)),
              "modbus:3 illegal data value");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::device_failure)), "modbus:4 device failure");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::device_busy)), "modbus:6 device busy");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::gateway_target_silent)),
              "modbus:11 device behind the gateway does not answer");
}

TEST(error_category, describes_failures_of_the_connection) {
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::connection_lost)),
              "modbus:257 connection lost");
    EXPECT_EQ(describe(make_modbus_error(modbus_errc::timeout)), "modbus:258 no answer in time");
}

TEST(error_category, every_code_has_a_message_of_its_own) {
    std::set<std::string> messages;
    for (int code = 1; code <= 300; ++code) {
        auto const message = modbus_error_category().message(code);
        if (!message.empty()) {
            EXPECT_TRUE(messages.insert(message.str()).second) << code;
        }
    }
    EXPECT_EQ(messages.size(), 20U); // 10 exceptions, and 10 of the backend's own
}

TEST(error_category, tells_exceptions_of_the_controller_from_all_other_errors) {
    namespace v2 = tavi::ioapi::v2;
    EXPECT_EQ(exception_in(make_modbus_error(modbus_errc::gateway_target_silent)), 11);
    EXPECT_EQ(exception_in(make_modbus_error(modbus_errc::not_connected)), 0);
    EXPECT_EQ(exception_in(v2::io_errc::invalid_property), 0); // the number of an illegal address
    EXPECT_EQ(exception_in({}), 0);
}

TEST(error_category, a_code_without_a_meaning_has_no_message) {
    for (int const code : {0, -1, 9, 12, 255, 0x7FFFFFFF}) {
        EXPECT_TRUE(modbus_error_category().message(code).empty()) << code;
    }
    EXPECT_EQ(&make_modbus_error(modbus_errc::timeout).category(), &modbus_error_category());
}

} // namespace
