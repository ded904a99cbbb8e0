#include <gtest/gtest.h>
#include <modbus_backend/map_parser.hpp>

#include <sstream>
#include <string>

namespace {

using modbus_backend::map_contents;
using modbus_backend::part_order;
using modbus_backend::part_orders;

map_contents map_of(std::string const& text, part_orders orders = {}) {
    std::istringstream stream(text);
    return parse_map(stream, orders);
}

std::string description_in(std::string const& line) {
    return map_of(line).variables.at(0).description;
}

TEST(map_description, is_what_follows_the_number_sign) {
    EXPECT_EQ(description_in("a input 0 flt # level of the tank, m"), "level of the tank, m");
    EXPECT_EQ(description_in("a input 0 flt word_order=little # l/s"), "l/s");
    EXPECT_EQ(description_in("a input 0 flt #m"), "m");
}

TEST(map_description, has_no_blanks_around_it) {
    EXPECT_EQ(description_in("a input 0 flt\t#\t  two  words \t\r\n"), "two  words");
}

TEST(map_description, may_hold_number_signs) {
    EXPECT_EQ(description_in("a input 0 u16 # pump #2 # left"), "pump #2 # left");
    EXPECT_EQ(description_in("a input 0 u16 ## twice"), "# twice");
}

TEST(map_description, is_empty_where_there_is_none) {
    EXPECT_EQ(description_in("a input 0 u16"), "");
    EXPECT_EQ(description_in("a input 0 u16 #"), "");
    EXPECT_EQ(description_in("a input 0 u16 #   "), "");
}

TEST(map_description, of_another_line_belongs_to_nothing) {
    EXPECT_EQ(description_in("# the tank\na input 0 u16\n# the end\n"), "");
}

TEST(map_description, structures_have_one_too) {
    auto const read = map_of("structure pump # one of two\nx 0 u16 # a member\nend # of it\n"
                             "p holding 0 pump # the first\n");
    EXPECT_EQ(read.structures.at(0)->description, "one of two");
    EXPECT_EQ(read.variables.at(0).description, "the first");
}

constexpr part_orders both_little{part_order::little, part_order::little};

TEST(map_order, lines_that_state_none_have_those_of_the_map) {
    auto const read = map_of("a input 0 u32\nb input 2 u32 byte_order=big\n"
                             "c input 4 u32 word_order=big\nstructure s\nx 0 flt\nend\n",
                             both_little);
    EXPECT_EQ(read.variables.at(0).type.bytes, part_order::little);
    EXPECT_EQ(read.variables.at(0).type.words, part_order::little);
    EXPECT_EQ(read.variables.at(1).type.bytes, part_order::big);
    EXPECT_EQ(read.variables.at(1).type.words, part_order::little);
    EXPECT_EQ(read.variables.at(2).type.bytes, part_order::little);
    EXPECT_EQ(read.variables.at(2).type.words, part_order::big);
    EXPECT_EQ(read.structures.at(0)->members.at(0).type.bytes, part_order::little);
    EXPECT_EQ(read.structures.at(0)->members.at(0).type.words, part_order::little);
}

TEST(map_order, that_of_the_map_counts_where_it_means_something) {
    auto const read = map_of("a input 0 u16\nb input 2 string(2)\nc coil 0 boolean\n", both_little);
    EXPECT_EQ(read.variables.at(0).type.bytes, part_order::little);
    EXPECT_EQ(read.variables.at(0).type.words, part_order::big);
    EXPECT_EQ(read.variables.at(1).type.bytes, part_order::little);
    EXPECT_EQ(read.variables.at(1).type.words, part_order::big);
    EXPECT_EQ(read.variables.at(2).type.bytes, part_order::big);
}

} // namespace
