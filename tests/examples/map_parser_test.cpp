#include <gtest/gtest.h>
#include <modbus_backend/map_parser.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace modbus_backend;

std::vector<variable> parse(std::string const& text) {
    std::istringstream stream(text);
    return parse_map(stream);
}

variable parse_one(std::string const& line) {
    auto const variables = parse(line);
    EXPECT_EQ(variables.size(), 1U);
    return variables.at(0);
}

TEST(map_parser, reads_every_field) {
    variable const read = parse_one("tank.level input 17 flt byte_order=little word_order=little");
    EXPECT_EQ(read.name, "tank.level");
    EXPECT_EQ(read.kind, register_kind::input);
    EXPECT_EQ(read.address, 17U);
    EXPECT_EQ(read.type, value_type::flt);
    EXPECT_EQ(read.width, 2U);
    EXPECT_EQ(read.bytes, part_order::little);
    EXPECT_EQ(read.words, part_order::little);
}

TEST(map_parser, both_orders_are_big_unless_stated) {
    variable const silent = parse_one("a input 0 dbl");
    EXPECT_EQ(silent.bytes, part_order::big);
    EXPECT_EQ(silent.words, part_order::big);
    variable const stated = parse_one("a input 0 dbl word_order=big byte_order=little");
    EXPECT_EQ(stated.bytes, part_order::little);
    EXPECT_EQ(stated.words, part_order::big);
}

TEST(map_parser, knows_every_kind) {
    EXPECT_EQ(parse_one("a coil 0 boolean").kind, register_kind::coil);
    EXPECT_EQ(parse_one("a discrete 0 boolean").kind, register_kind::discrete);
    EXPECT_EQ(parse_one("a holding 0 u16").kind, register_kind::holding);
    EXPECT_EQ(parse_one("a input 0 u16").kind, register_kind::input);
}

TEST(map_parser, knows_every_type_and_its_width) {
    struct {
        char const* name;
        value_type type;
        unsigned int width;
    } const expected[] = {
        {"u16", value_type::u16, 1},          {"i16", value_type::i16, 1},
        {"u32", value_type::u32, 2},          {"i32", value_type::i32, 2},
        {"u64", value_type::u64, 4},          {"i64", value_type::i64, 4},
        {"flt", value_type::flt, 2},          {"dbl", value_type::dbl, 4},
        {"string(1)", value_type::string, 1}, {"string(125)", value_type::string, 125},
    };
    for (auto const& type : expected) {
        variable const read = parse_one(std::string("a holding 0 ") + type.name);
        EXPECT_EQ(read.type, type.type) << type.name;
        EXPECT_EQ(read.width, type.width) << type.name;
    }
    variable const bit = parse_one("a coil 0 boolean");
    EXPECT_EQ(bit.type, value_type::boolean);
    EXPECT_EQ(bit.width, 1U);
}

TEST(map_parser, skips_comments_empty_lines_and_blanks_of_any_kind) {
    auto const read =
        parse("# a map\n\n  \t\r\n\ta \t holding  1 u16 # a comment\r\nb coil 2 boolean");
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].name, "a");
    EXPECT_EQ(read[1].name, "b");
    EXPECT_EQ(read[1].address, 2U);
}

TEST(map_parser, keeps_the_order_of_the_lines) {
    auto const read = parse("z holding 9 u16\na holding 1 u16\n");
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].name, "z");
    EXPECT_EQ(read[1].name, "a");
}

TEST(map_parser, takes_the_last_address) {
    EXPECT_EQ(parse_one("a holding 65535 u16").address, 65535U);
    EXPECT_EQ(parse_one("a holding 65532 dbl").address, 65532U);
    EXPECT_EQ(parse_one("a coil 65535 boolean").address, 65535U);
}

TEST(map_parser, an_empty_map_has_no_variables) {
    EXPECT_TRUE(parse("").empty());
    EXPECT_TRUE(parse("# nothing\n").empty());
}

struct wrong_line {
    char const* text;
    char const* reason;
};

class map_parser_errors : public ::testing::TestWithParam<wrong_line> {};

// Every wrong line is the third one.
TEST_P(map_parser_errors, name_the_line_and_the_reason) {
    try {
        parse("first holding 0 u16\n\n" + std::string(GetParam().text) +
              "\nlast holding bad bad\n");
        FAIL() << "no error";
    } catch (map_error const& error) {
        EXPECT_EQ(error.line(), 3U);
        EXPECT_STREQ(error.what(), (std::string("line 3: ") + GetParam().reason).c_str());
    }
}

INSTANTIATE_TEST_SUITE_P(
    all,
    map_parser_errors,
    ::testing::Values(
        wrong_line{"a", "expected NAME KIND ADDRESS TYPE [OPTION...]"},
        wrong_line{"a holding 1", "expected NAME KIND ADDRESS TYPE [OPTION...]"},
        wrong_line{"a holding 1 # u16", "expected NAME KIND ADDRESS TYPE [OPTION...]"},
        wrong_line{"a coils 1 boolean",
                   "unknown kind 'coils', not coil, discrete, holding or input"},
        wrong_line{"a holding x u16", "address 'x' is no number from 0 to 65535"},
        wrong_line{"a holding -1 u16", "address '-1' is no number from 0 to 65535"},
        wrong_line{"a holding 0x10 u16", "address '0x10' is no number from 0 to 65535"},
        wrong_line{"a holding 65536 u16", "address '65536' is no number from 0 to 65535"},
        wrong_line{"a holding 99999999999 u16",
                   "address '99999999999' is no number from 0 to 65535"},
        wrong_line{"a holding 1 word", "unknown type 'word', not boolean, u16, i16, u32, i32, "
                                       "u64, i64, flt, dbl or string(N)"},
        wrong_line{"a holding 1 string", "unknown type 'string', not boolean, u16, i16, u32, i32, "
                                         "u64, i64, flt, dbl or string(N)"},
        wrong_line{"a holding 1 string()", "string size '' is no number from 1 to 125"},
        wrong_line{"a holding 1 string(0)", "string size '0' is no number from 1 to 125"},
        wrong_line{"a holding 1 string(126)", "string size '126' is no number from 1 to 125"},
        wrong_line{"a holding 1 string(two)", "string size 'two' is no number from 1 to 125"},
        wrong_line{"a holding 1 boolean", "'boolean' does not fit into kind 'holding'"},
        wrong_line{"a input 1 boolean", "'boolean' does not fit into kind 'input'"},
        wrong_line{"a coil 1 u16", "'u16' does not fit into kind 'coil'"},
        wrong_line{"a discrete 1 string(2)", "'string(2)' does not fit into kind 'discrete'"},
        wrong_line{"a holding 65535 u32", "reaches beyond the last address, 65535"},
        wrong_line{"a holding 65533 dbl", "reaches beyond the last address, 65535"},
        wrong_line{"a holding 1 u16 little", "option 'little' is not NAME=VALUE"},
        wrong_line{"a holding 1 u16 scale=2",
                   "unknown option 'scale', not byte_order or word_order"},
        wrong_line{"a holding 1 u32 word_order=middle",
                   "unknown order 'middle', not big or little"},
        wrong_line{"a holding 1 u32 word_order=", "unknown order '', not big or little"},
        wrong_line{"a holding 1 u32 word_order=big word_order=little",
                   "option 'word_order=little' comes a second time"},
        wrong_line{"a holding 1 u16 word_order=little", "word_order means nothing for this type"},
        wrong_line{"a holding 1 string(4) word_order=little",
                   "word_order means nothing for this type"},
        wrong_line{"a coil 1 boolean byte_order=little", "byte_order means nothing for this type"},
        wrong_line{"first holding 1 u16", "'first' stands on line 1 already"}));

} // namespace
