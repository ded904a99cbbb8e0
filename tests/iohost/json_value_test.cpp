#include <gtest/gtest.h>
#include <iohost/json_value.hpp>

#include <cmath>
#include <limits>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::utility::array;

std::string json_text(v2::io_value const& value) {
    return iohost::line_of(iohost::to_json(value));
}

TEST(json_value, shows_values_by_what_is_stored) {
    EXPECT_EQ(json_text(v2::io_value()), "null");
    EXPECT_EQ(json_text(true), "true");
    EXPECT_EQ(json_text(5), "5");
    EXPECT_EQ(json_text('A'), "65");
    EXPECT_EQ(json_text("a\"b\n"), R"("a\"b\n")");
    EXPECT_EQ(json_text(array<int>{1, -2}), "[1,-2]");
    EXPECT_EQ(json_text(array<bool>{true, false}), "[true,false]");
    EXPECT_EQ(json_text(array<char>{'\xC8'}), "[200]");
    EXPECT_EQ(json_text(array<v2::io_value>::of(v2::io_value(1), v2::io_value("a"))), "[1,\"a\"]");
}

TEST(json_value, keeps_64_bits_exact) {
    EXPECT_EQ(json_text(9007199254740993LL), "9007199254740993");
    EXPECT_EQ(json_text(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(json_text(18446744073709551615ULL), "18446744073709551615");
}

TEST(json_value, shows_floating_point_by_the_fewest_digits) {
    EXPECT_EQ(json_text(0.1), "0.1");
    EXPECT_EQ(json_text(0.1F), "0.1");
    EXPECT_EQ(json_text(2.0), "2.0");
}

TEST(json_value, names_numbers_that_are_not_finite) {
    EXPECT_EQ(json_text(std::nan("")), "\"nan\"");
    EXPECT_EQ(json_text(std::numeric_limits<double>::infinity()), "\"inf\"");
    EXPECT_EQ(json_text(-std::numeric_limits<float>::infinity()), "\"-inf\"");
}

TEST(json_value, replaces_what_is_no_utf8) {
    EXPECT_EQ(json_text("a\xFFz"), "\"a\xEF\xBF\xBDz\"");
    v2::io_object object;
    object.set("k\xFF", 1);
    EXPECT_EQ(json_text(object), "{\"k\xEF\xBF\xBD\":1}");
}

TEST(json_value, of_an_object_has_what_is_set) {
    v2::io_object object;
    object.set("name", "north");
    object.set("levels", array<double>{2.5});
    EXPECT_EQ(json_text(object), R"({"levels":[2.5],"name":"north"})");
}

TEST(json_value, of_an_error_has_all_that_it_tells) {
    EXPECT_EQ(iohost::line_of(iohost::to_json(v2::io_error(v2::io_errc::not_found))),
              R"({"code":1,"category":"generic","message":"not found","diagnostics":{}})");
    v2::io_error_diagnostics_generic details;
    details.set("address", 40001U);
    v2::io_error error(v2::io_errc::no_result);
    error.diagnostics(details);
    EXPECT_EQ(iohost::to_json(error)["diagnostics"]["address"], 40001);
}

} // namespace
