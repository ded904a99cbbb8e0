#include <gtest/gtest.h>
#include <iohost/listing.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using quality = v2::io_data_value::value_quality;

v2::read_result result_for(std::vector<v2::plc_identifier> const& identifiers) {
    return v2::read_result(identifiers);
}

TEST(listing, shows_each_value_below_its_identifier) {
    auto result = result_for({v2::plc_identifier("level"), v2::plc_identifier("unit 4", "all")});
    v2::io_object object(
        7, v2::io_structure_type(
               {{"count", v2::io_data_type::scalar(v2::io_data_type::basic_types::u16)}}));
    object.set("count", 3);
    result.set(0U, v2::io_data_value(2.5, quality::good));
    result.set(1U, v2::io_data_value(object, quality::good));
    std::ostringstream out;
    EXPECT_TRUE(iohost::print_listing(out, result));
    EXPECT_EQ(out.str(), "level:\n"
                         "  (dbl) 2.5\n"
                         "unit 4/all:\n"
                         "  object<7> {\n"
                         "  [count] =>\n"
                         "    (u16) 3\n"
                         "  }\n");
}

TEST(listing, shows_errors_behind_their_identifiers) {
    auto result = result_for({v2::plc_identifier("x"), v2::plc_identifier("y")});
    result.set(0U, v2::io_error(v2::io_errc::not_found));
    std::ostringstream out;
    EXPECT_FALSE(iohost::print_listing(out, result));
    EXPECT_EQ(out.str(), "x: generic:1 not found\ny: generic:5 no result\n");
}

TEST(listing, lets_nothing_control_the_terminal) {
    auto result = result_for({v2::plc_identifier("x\x1b")});
    result.set(0U, v2::io_data_value("a\x1b[2J", quality::good));
    std::ostringstream out;
    EXPECT_TRUE(iohost::print_listing(out, result));
    EXPECT_EQ(out.str(), "x\\x1b:\n  (string) \"a\\x1b[2J\"\n");
}

} // namespace
