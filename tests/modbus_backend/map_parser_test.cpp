#include <gtest/gtest.h>
#include <modbus_backend/map_parser.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace modbus_backend;

map_contents parse_all(std::string const& text) {
    std::istringstream stream(text);
    return parse_map(stream);
}

std::vector<variable> parse(std::string const& text) {
    return parse_all(text).variables;
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
    EXPECT_EQ(read.type.element, value_type::flt);
    EXPECT_EQ(read.type.width(), 2U);
    EXPECT_EQ(read.type.bytes, part_order::little);
    EXPECT_EQ(read.type.words, part_order::little);
}

TEST(map_parser, both_orders_are_big_unless_stated) {
    variable const silent = parse_one("a input 0 dbl");
    EXPECT_EQ(silent.type.bytes, part_order::big);
    EXPECT_EQ(silent.type.words, part_order::big);
    variable const stated = parse_one("a input 0 dbl word_order=big byte_order=little");
    EXPECT_EQ(stated.type.bytes, part_order::little);
    EXPECT_EQ(stated.type.words, part_order::big);
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
        EXPECT_EQ(read.type.element, type.type) << type.name;
        EXPECT_EQ(read.type.width(), type.width) << type.name;
        EXPECT_EQ(read.type.count, 0U) << type.name;
    }
    variable const bit = parse_one("a coil 0 boolean");
    EXPECT_EQ(bit.type.element, value_type::boolean);
    EXPECT_EQ(bit.type.width(), 1U);
}

TEST(map_parser, knows_arrays_of_every_type) {
    struct {
        char const* line;
        value_type element;
        unsigned int count;
        unsigned int width;
    } const expected[] = {
        {"a coil 0 boolean[8]", value_type::boolean, 8, 8},
        {"a discrete 0 boolean[2000]", value_type::boolean, 2000, 2000},
        {"a holding 0 u16[1]", value_type::u16, 1, 1},
        {"a holding 0 u16[125]", value_type::u16, 125, 125},
        {"a input 0 i16[3]", value_type::i16, 3, 3},
        {"a input 0 u32[62]", value_type::u32, 62, 124},
        {"a input 0 i32[2]", value_type::i32, 2, 4},
        {"a input 0 u64[31]", value_type::u64, 31, 124},
        {"a input 0 i64[2]", value_type::i64, 2, 8},
        {"a input 0 flt[8]", value_type::flt, 8, 16},
        {"a input 0 dbl[5]", value_type::dbl, 5, 20},
        {"a input 0 string(4)[3]", value_type::string, 3, 12},
        {"a input 0 string(125)[1]", value_type::string, 1, 125},
    };
    for (auto const& array : expected) {
        variable const read = parse_one(array.line);
        EXPECT_EQ(read.type.element, array.element) << array.line;
        EXPECT_EQ(read.type.count, array.count) << array.line;
        EXPECT_EQ(read.type.width(), array.width) << array.line;
    }
}

TEST(map_parser, arrays_take_the_options_of_their_elements) {
    variable const numbers = parse_one("a input 0 flt[8] word_order=little byte_order=little");
    EXPECT_EQ(numbers.type.words, part_order::little);
    EXPECT_EQ(numbers.type.bytes, part_order::little);
    variable const names = parse_one("a input 0 string(4)[2] byte_order=little");
    EXPECT_EQ(names.type.bytes, part_order::little);
}

TEST(map_parser, reads_the_members_of_a_structure) {
    auto const read = parse_all("structure pump\n  speed 1 flt word_order=little # 1/min\n\n"
                                "  names 6 string(2)[3]\n  runs 0 u16\nend\n");
    ASSERT_EQ(read.structures.size(), 1U);
    EXPECT_TRUE(read.variables.empty());
    structure const& pump = *read.structures[0];
    EXPECT_EQ(pump.name, "pump");
    EXPECT_EQ(pump.width, 12U);
    EXPECT_FALSE(pump.blank.has_value());
    ASSERT_EQ(pump.members.size(), 3U);
    EXPECT_EQ(pump.members[0].name, "speed");
    EXPECT_EQ(pump.members[0].offset, 1U);
    EXPECT_EQ(pump.members[0].type.element, value_type::flt);
    EXPECT_EQ(pump.members[0].type.words, part_order::little);
    EXPECT_EQ(pump.members[1].type.count, 3U);
    EXPECT_EQ(pump.members[1].type.element_width, 2U);
    EXPECT_EQ(pump.members[2].name, "runs");
    EXPECT_EQ(pump.members[2].offset, 0U);
}

TEST(map_parser, variables_share_the_structure_that_they_are_of) {
    auto const read = parse_all("structure s\nx 3 u32\nend\n"
                                "a holding 40 s\nb input 65531 s\n");
    ASSERT_EQ(read.variables.size(), 2U);
    for (auto const& described : read.variables) {
        EXPECT_EQ(described.type.element, value_type::object);
        EXPECT_EQ(described.type.members, read.structures.at(0));
        EXPECT_EQ(described.type.count, 0U);
        EXPECT_EQ(described.type.width(), 5U);
    }
    EXPECT_EQ(read.variables[1].address, 65531U);
}

TEST(map_parser, a_structure_may_fill_a_request) {
    auto const read = parse_all("structure s\nx 124 u16\ny 0 u16[125]\nend\na holding 0 s\n");
    EXPECT_EQ(read.variables.at(0).type.width(), 125U);
}

TEST(map_parser, structures_and_variables_and_members_may_have_one_name) {
    auto const read = parse_all("structure a\na 0 u16\nend\nstructure b\na 0 u16\nend\n"
                                "a holding 0 a\nb holding 1 b\n");
    EXPECT_EQ(read.structures.size(), 2U);
    EXPECT_EQ(read.variables.at(1).type.members, read.structures[1]);
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
    std::string reason;
};

std::string unknown_type(std::string const& word) {
    return "unknown type '" + word +
           "', not boolean, u16, i16, u32, i32, u64, i64, flt, dbl, string(N), an array of these "
           "as u16[N], or a structure that stands above";
}

class map_parser_errors : public ::testing::TestWithParam<wrong_line> {};

// Every wrong line is the third one.
TEST_P(map_parser_errors, name_the_line_and_the_reason) {
    try {
        parse("first holding 0 u16\n\n" + std::string(GetParam().text) +
              "\nlast holding bad bad\n");
        FAIL() << "no error";
    } catch (map_error const& error) {
        EXPECT_EQ(error.line(), 3U);
        EXPECT_STREQ(error.what(), ("line 3: " + GetParam().reason).c_str());
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
        wrong_line{"a holding 1 word", unknown_type("word")},
        wrong_line{"a holding 1 string", unknown_type("string")},
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
        wrong_line{"a holding 1 u16[0]", "array size '0' is no number from 1 to 2000"},
        wrong_line{"a holding 1 u16[]", "array size '' is no number from 1 to 2000"},
        wrong_line{"a holding 1 u16[-1]", "array size '-1' is no number from 1 to 2000"},
        wrong_line{"a holding 1 u16[2][3]", "array size '2][3' is no number from 1 to 2000"},
        wrong_line{"a coil 1 boolean[2001]", "array size '2001' is no number from 1 to 2000"},
        wrong_line{"a holding 1 u16[4294967297]",
                   "array size '4294967297' is no number from 1 to 2000"},
        wrong_line{"a holding 1 u16[", unknown_type("u16[")},
        wrong_line{"a holding 1 u16[2", unknown_type("u16[2")},
        wrong_line{"a holding 1 [2]", unknown_type("")},
        wrong_line{"a holding 1 word[2]", unknown_type("word")},
        wrong_line{"a holding 1 pump_state", unknown_type("pump_state")},
        wrong_line{"a holding 1 u16[126]",
                   "'u16[126]' takes 126 registers, and one request gives no more than 125"},
        wrong_line{"a holding 1 dbl[32]",
                   "'dbl[32]' takes 128 registers, and one request gives no more than 125"},
        wrong_line{"a input 1 string(63)[2]",
                   "'string(63)[2]' takes 126 registers, and one request gives no more than 125"},
        wrong_line{"a holding 65529 flt[4]", "reaches beyond the last address, 65535"},
        wrong_line{"a coil 65529 boolean[8]", "reaches beyond the last address, 65535"},
        wrong_line{"a holding 1 boolean[8]", "'boolean[8]' does not fit into kind 'holding'"},
        wrong_line{"a coil 1 u16[8]", "'u16[8]' does not fit into kind 'coil'"},
        wrong_line{"a holding 1 u16[4] word_order=little",
                   "word_order means nothing for this type"},
        wrong_line{"a coil 1 boolean[4] byte_order=little",
                   "byte_order means nothing for this type"},
        wrong_line{"structure", "expected structure NAME"},
        wrong_line{"structure a b", "expected structure NAME"},
        wrong_line{"structure flt", "'flt' is no name for a structure, but for another type"},
        wrong_line{"structure string(4)",
                   "'string(4)' is no name for a structure, but for another type"},
        wrong_line{"structure a[2]", "'a[2]' is no name for a structure, but for another type"},
        wrong_line{"end", "'end' without a structure"},
        wrong_line{"first holding 1 u16", "'first' stands on line 1 already"}));

// A structure `s` of five registers stands above, on the lines 1 to 3; the wrong line is the 5th,
// the first one within another structure.
class map_parser_member_errors : public ::testing::TestWithParam<wrong_line> {};

TEST_P(map_parser_member_errors, name_the_line_and_the_reason) {
    try {
        parse("structure s\nx 3 u32\nend\nstructure t\n" + std::string(GetParam().text) +
              "\nend\n");
        FAIL() << "no error";
    } catch (map_error const& error) {
        EXPECT_EQ(error.line(), 5U);
        EXPECT_EQ(error.what(), "line 5: " + GetParam().reason);
    }
}

INSTANTIATE_TEST_SUITE_P(
    all,
    map_parser_member_errors,
    ::testing::Values(
        wrong_line{"x", "expected MEMBER OFFSET TYPE [OPTION...]"},
        wrong_line{"x 1", "expected MEMBER OFFSET TYPE [OPTION...]"},
        wrong_line{"x -1 u16", "offset '-1' is no number from 0 to 124"},
        wrong_line{"x 125 u16", "offset '125' is no number from 0 to 124"},
        wrong_line{"tank.level input 0 flt", "offset 'input' is no number from 0 to 124"},
        wrong_line{"x 1 word", unknown_type("word")},
        wrong_line{"x 1 t", unknown_type("t")},
        wrong_line{"x 1 u16[0]", "array size '0' is no number from 1 to 2000"},
        wrong_line{"x 1 boolean", "'boolean' does not fit into a structure"},
        wrong_line{"x 1 boolean[2]", "'boolean[2]' does not fit into a structure"},
        wrong_line{"x 1 s", "'s' does not fit into a structure"},
        wrong_line{"x 1 s[2]", "'s[2]' is an array of structures, which cannot be read"},
        wrong_line{"x 124 u32",
                   "the structure takes 126 registers, and one request gives no more than 125"},
        wrong_line{"x 1 u16[125]",
                   "the structure takes 126 registers, and one request gives no more than 125"},
        wrong_line{"x 1 u16 little", "option 'little' is not NAME=VALUE"},
        wrong_line{"x 1 u16 word_order=little", "word_order means nothing for this type"},
        wrong_line{"x 1 flt byte_order=little byte_order=big",
                   "option 'byte_order=big' comes a second time"},
        wrong_line{"structure u", "structure 't' has no end yet, and none stands within another"},
        wrong_line{"end u", "expected end and no more"},
        wrong_line{"end", "structure 't' has no members"}));

// A whole structure `s` stands above, on the lines 1 to 3; the wrong line is the last one.
class map_parser_structure_errors : public ::testing::TestWithParam<wrong_line> {};

TEST_P(map_parser_structure_errors, name_the_line_and_the_reason) {
    std::string const map = std::string("structure s\nx 3 u32\nend\n") + GetParam().text;
    auto const line = static_cast<unsigned int>(1 + std::count(map.begin(), map.end(), '\n'));
    try {
        parse(map);
        FAIL() << "no error";
    } catch (map_error const& error) {
        EXPECT_EQ(error.line(), line);
        EXPECT_EQ(error.what(), "line " + std::to_string(line) + ": " + GetParam().reason);
    }
}

INSTANTIATE_TEST_SUITE_P(
    all,
    map_parser_structure_errors,
    ::testing::Values(
        wrong_line{"structure s", "'s' stands on line 1 already"},
        wrong_line{"structure t\ny 0 u16\nz 1 u16\ny 2 u16", "'y' stands on line 5 already"},
        wrong_line{"a coil 0 s", "'s' does not fit into kind 'coil'"},
        wrong_line{"a discrete 0 s", "'s' does not fit into kind 'discrete'"},
        wrong_line{"a holding 0 s[2]", "'s[2]' is an array of structures, which cannot be read"},
        wrong_line{"a holding 65532 s", "reaches beyond the last address, 65535"},
        wrong_line{"a holding 0 s byte_order=little", "byte_order means nothing for this type"},
        wrong_line{"a holding 0 s word_order=little", "word_order means nothing for this type"}));

TEST(map_parser, a_structure_without_an_end_is_named_by_its_own_line) {
    try {
        parse("a holding 0 u16\nstructure s\nx 0 u16\n\n# the last line\n");
        FAIL() << "no error";
    } catch (map_error const& error) {
        EXPECT_STREQ(error.what(), "line 2: structure 's' has no end");
    }
}

} // namespace
