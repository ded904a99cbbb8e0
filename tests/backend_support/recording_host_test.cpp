#include <tavi/ioapi/v2/backend_query.hpp>

#include "examples/support/recording_host.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::log_record;
using test_support::recording_host;

auto const i32_type = v2::io_data_type::scalar(v2::io_data_type::basic_types::i32);
v2::plc_identifier const pump_name("pump");

v2::io_data_type registered(recording_host& host, char const* member) {
    v2::io_error error = v2::io_errc::not_found;
    auto const type = v2::backend_query(host).register_structure_type(
        pump_name, v2::io_structure_type("pump", {{member, i32_type}}), error);
    EXPECT_TRUE(error.ok());
    return type;
}

TEST(recording_host, keeps_log_records_in_order) {
    recording_host host;
    v2::backend_query(host).log(v2::log_severity_level::warning, "first");
    v2::backend_query(host).log(v2::log_severity_level::trace, "second");
    std::vector<log_record> const expected{{v2::log_severity_level::warning, "first"},
                                           {v2::log_severity_level::trace, "second"}};
    EXPECT_EQ(host.log(), expected);
}

TEST(recording_host, answers_lookups_by_name_and_by_type) {
    recording_host host;
    auto const type = registered(host, "speed");
    EXPECT_NE(type.structure_id, 0U);
    v2::io_error error = v2::io_errc::todo;
    EXPECT_EQ(host.lookup_data_type(pump_name, error), type);
    EXPECT_TRUE(error.ok());
    error = v2::io_errc::todo;
    EXPECT_EQ(host.lookup_structure_type(type, error).get_member("speed"), i32_type);
    EXPECT_TRUE(error.ok());
}

TEST(recording_host, says_not_found_for_what_is_unknown) {
    recording_host host;
    v2::io_error error;
    EXPECT_EQ(host.lookup_data_type(pump_name, error), v2::io_data_type());
    EXPECT_EQ(error, v2::io_errc::not_found);
    auto const unknown = v2::io_data_type::object(7);
    EXPECT_TRUE(host.lookup_structure_type(unknown, error).empty());
    EXPECT_EQ(error, v2::io_errc::not_found);
    host.replace_structure_type(unknown, {}, error);
    EXPECT_EQ(error, v2::io_errc::not_found);
    host.unregister_structure_type(unknown, error);
    EXPECT_EQ(error, v2::io_errc::not_found);
}

TEST(recording_host, a_name_stands_for_the_type_that_was_registered_last) {
    recording_host host;
    auto const first = registered(host, "speed");
    auto const second = registered(host, "current");
    EXPECT_NE(first, second);
    v2::io_error error;
    EXPECT_EQ(host.lookup_data_type(pump_name, error), second);
    EXPECT_TRUE(host.lookup_structure_type(first, error).has_member("speed"));
}

TEST(recording_host, replaces_and_forgets_structures) {
    recording_host host;
    auto const type = registered(host, "speed");
    v2::io_error error;
    host.replace_structure_type(type, v2::io_structure_type("pump", {{"current", i32_type}}),
                                error);
    EXPECT_TRUE(error.ok());
    EXPECT_TRUE(host.lookup_structure_type(type, error).has_member("current"));
    host.unregister_structure_type(type, error);
    EXPECT_TRUE(error.ok());
    static_cast<void>(host.lookup_data_type(pump_name, error));
    EXPECT_EQ(error, v2::io_errc::not_found);
}

TEST(recording_host, forgets_all_structures_at_once) {
    recording_host host;
    auto const first = registered(host, "speed");
    auto const second = registered(host, "current");
    host.clear_structure_types();
    EXPECT_TRUE(host.types().empty());
    for (auto const& type : {first, second}) {
        v2::io_error error;
        static_cast<void>(host.lookup_structure_type(type, error));
        EXPECT_EQ(error, v2::io_errc::not_found);
    }
}

} // namespace
