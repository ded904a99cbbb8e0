#include <gtest/gtest.h>
#include <iohost/printable.hpp>
#include <iohost/table.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using quality = v2::io_data_value::value_quality;

v2::read_result result_for(std::vector<v2::plc_identifier> const& identifiers) {
    return v2::read_result(identifiers);
}

TEST(table, shows_values_and_errors_in_columns) {
    auto result = result_for({v2::plc_identifier("level"), v2::plc_identifier("x")});
    result.set(0U, v2::io_data_value(2.5, v2::io_timestamp(1), quality::good));
    result.set(1U, v2::io_error(v2::io_errc::not_found));
    std::ostringstream out;
    EXPECT_FALSE(iohost::print_table(out, result));
    EXPECT_EQ(out.str(), "identifier  type  value  time                          quality  error\n"
                         "level       dbl   2.5    1970-01-01T00:00:00.0000001Z  good     -\n"
                         "x           -     -      -                             -        "
                         "generic:1 not found\n");
}

TEST(table, is_all_well_when_no_entry_failed) {
    auto result = result_for({v2::plc_identifier("unit 4", "level")});
    result.set(0U, v2::io_data_value(true, quality::uncertain));
    std::ostringstream out;
    EXPECT_TRUE(iohost::print_table(out, result));
    EXPECT_NE(out.str().find("\"unit 4\"/\"level\"  boolean  true   -     uncertain  -\n"),
              std::string::npos)
        << out.str();
}

TEST(table, an_entry_that_was_never_answered_is_an_error) {
    std::ostringstream out;
    EXPECT_FALSE(iohost::print_table(out, result_for({v2::plc_identifier("a")})));
    EXPECT_NE(out.str().find("generic:5 no result"), std::string::npos);
}

TEST(table, a_value_that_is_no_text_is_an_error) {
    auto result = result_for({v2::plc_identifier("a")});
    v2::io_value const numbers = v2::utility::array<int>{1, 2};
    result.set(0U, v2::io_data_value(numbers, quality::bad));
    std::ostringstream out;
    EXPECT_FALSE(iohost::print_table(out, result));
    EXPECT_NE(out.str().find("a           i32[]  -      -     bad      "
                             "generic:3 incompatible type\n"),
              std::string::npos)
        << out.str();
}

TEST(table, of_nothing_is_its_head) {
    std::ostringstream out;
    EXPECT_TRUE(iohost::print_table(out, v2::read_result()));
    EXPECT_EQ(out.str(), "identifier  type  value  time  quality  error\n");
}

TEST(printable, replaces_what_controls_a_terminal) {
    EXPECT_EQ(iohost::printable("plain text"), "plain text");
    EXPECT_EQ(iohost::printable("a\nb\x1b[2J\x7f"), "a\\x0ab\\x1b[2J\\x7f");
    EXPECT_EQ(iohost::printable("\xC3\xA4"), "\xC3\xA4");
}

} // namespace
