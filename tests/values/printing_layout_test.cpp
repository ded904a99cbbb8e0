#include "equality_held_value.hpp"
#include "sample_payloads.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace whole_values {
namespace {

using namespace values_test;

/// As in the examples: two blanks for each level.
std::string text_of(io_value const& value, unsigned int level = 0) {
    return value.printable_string(' ', 2, level).str();
}

// --- worked examples, byte by byte ---

TEST(PrintedExample, IntStandsOnOneLine) {
    EXPECT_EQ(text_of(42), "(i32) 42");
    EXPECT_EQ(text_of(42, 3), "      (i32) 42");
}

TEST(PrintedExample, ArrayOfInts) {
    EXPECT_EQ(text_of(array<int>{1, 2, 3}), "array (3) {\n"
                                            "  (i32) 1\n"
                                            "  (i32) 2\n"
                                            "  (i32) 3\n"
                                            "}");
}

TEST(PrintedExample, ObjectWithTwoMembersInTheOrderOfTheirKeys) {
    io_object object(7, io_structure_type({{"name", io_data_type::scalar(types::string)},
                                           {"count", io_data_type::scalar(types::u16)},
                                           {"never set", io_data_type::scalar(types::i32)}}));
    object.set("name", "pump");
    object.set("count", static_cast<unsigned short>(3));
    EXPECT_EQ(text_of(object), "object<7> {\n"
                               "[count] =>\n"
                               "  (u16) 3\n"
                               "[name] =>\n"
                               "  (string) \"pump\"\n"
                               "}");
}

TEST(PrintedExample, ObjectInAnObjectOfFreeKeys) {
    io_object inner(9, io_structure_type({{"b", io_data_type::scalar(types::boolean)}}));
    inner.set("b", true);
    io_object outer;
    outer.set("s", inner);
    outer.set("a", array<double>{1.5, 2.0});
    EXPECT_EQ(text_of(outer), "object<?> {\n"
                              "[a] =>\n"
                              "  array (2) {\n"
                              "    (dbl) 1.5\n"
                              "    (dbl) 2\n"
                              "  }\n"
                              "[s] =>\n"
                              "  object<9> {\n"
                              "  [b] =>\n"
                              "    (boolean) true\n"
                              "  }\n"
                              "}");
}

TEST(PrintedExample, ArrayOfValuesOnItsLevel) {
    io_value const value(array<io_value>::of('A', static_cast<signed char>(-1), io_value()));
    EXPECT_EQ(text_of(value, 1), "  array (3) {\n"
                                 "    (i8) 65\n"
                                 "    (i32) -1\n"
                                 "    empty\n"
                                 "  }");
}

// --- indentation ---

TEST(PrintedIndentation, IsNoneWithoutWidthOrLevel) {
    EXPECT_EQ(io_value(1).printable_string('x', 0, 7), "(i32) 1");
    EXPECT_EQ(io_value(1).printable_string('x', 7, 0), "(i32) 1");
    EXPECT_EQ(io_value(array<int>{1}).printable_string('x', 0, 9), "array (1) {\n(i32) 1\n}");
}

TEST(PrintedIndentation, IsMadeOfTheFill) {
    EXPECT_EQ(io_value().printable_string('.', 4, 2), "........empty");
    EXPECT_EQ(io_value(array<int>{1}).printable_string('\t', 1, 1),
              "\tarray (1) {\n\t\t(i32) 1\n\t}");
    EXPECT_EQ(io_value(true).printable_string('\0', 2, 1).str(),
              std::string("\0\0(boolean) true", 16));
}

TEST(PrintedIndentation, IsAProductOf32Bits) {
    EXPECT_EQ(io_value(1).printable_string('x', 65536, 65536), "(i32) 1");
    EXPECT_EQ(io_value(1).printable_string('x', 0x80000001U, 2), "xx(i32) 1");
    EXPECT_EQ(io_value(1).printable_string('x', 0x55555556U, 3), "xx(i32) 1");
    EXPECT_EQ(io_value(1).printable_string('x', 0xFFFFFFFFU, 0xFFFFFFFFU), "x(i32) 1");
}

TEST(PrintedIndentation, OfElementsIsThatOfTheNextLevel) {
    EXPECT_EQ(io_value(array<int>{1}).printable_string('x', 65536, 65536).str(),
              "array (1) {\n" + std::string(65536, 'x') + "(i32) 1\n}");
}

TEST(PrintedIndentation, BeyondTheLongestStringIsRefused) {
    // With words of 64 bits no product of 32 bits is refused: it would only take gigabytes.
    if (test_support::has_wide_words) {
        GTEST_SKIP() << "a string is longer here than any product of 32 bits";
    }
    io_value const in_array(array<int>{1});
    for (auto const& [width, level] :
         {std::pair{0x80000000U, 1U}, {1U, 0x80000000U}, {0x40000000U, 3U}, {0xFFFFFFFFU, 1U}}) {
        EXPECT_THROW((void)io_value(1).printable_string('x', width, level), std::length_error)
            << width << " * " << level;
        EXPECT_THROW((void)in_array.printable_string('x', width, level), std::length_error)
            << width << " * " << level;
    }
    // Only the element stands too deep.
    EXPECT_THROW((void)in_array.printable_string('x', 0x80000000U, 0), std::length_error);
}

// --- arrays ---

TEST(PrintedArray, WithoutElementsIsTwoLines) {
    EXPECT_EQ(text_of(array<int>()), "array (0) {\n}");
    EXPECT_EQ(text_of(array<int>(), 1), "  array (0) {\n  }");
    EXPECT_EQ(text_of(array<io_value>(), 2), "    array (0) {\n    }");
    EXPECT_EQ(text_of(array<io_object>()), "array (0) {\n}");
}

struct array_row {
    char const* name;
    held_value value;
    char const* first;
    char const* second;
};

class PrintedArrayOf : public ::testing::TestWithParam<array_row> {};

TEST_P(PrintedArrayOf, ElementsCarryTheLabelOfTheScalar) {
    array_row const& row = GetParam();
    EXPECT_EQ(text_of(*row.value),
              std::string("array (2) {\n  ") + row.first + "\n  " + row.second + "\n}");
}

INSTANTIATE_TEST_SUITE_P(
    Elements,
    PrintedArrayOf,
    ::testing::Values(
        array_row{"Bool", array<bool>{true, false}, "(boolean) true", "(boolean) false"},
        array_row{"SignedChar", array<signed char>{-128, 127}, "(i32) -128", "(i32) 127"},
        array_row{"Short", array<short>{-32768, 5}, "(i16) -32768", "(i16) 5"},
        array_row{"Int", array<int>{-1, 0}, "(i32) -1", "(i32) 0"},
        array_row{"Long", array<long>{-1, 5}, "(i32) -1", "(i32) 5"},
        array_row{"LongLong", array<long long>{-5000000000, 5}, "(i64) -5000000000", "(i64) 5"},
        array_row{"UnsignedChar", array<unsigned char>{255, 0}, "(u8) 255", "(u8) 0"},
        array_row{"UnsignedShort", array<unsigned short>{65535, 1}, "(u16) 65535", "(u16) 1"},
        array_row{"UnsignedInt", array<unsigned int>{4294967295U, 1}, "(u32) 4294967295",
                  "(u32) 1"},
        array_row{"UnsignedLong", array<unsigned long>{4294967295UL, 1}, "(u32) 4294967295",
                  "(u32) 1"},
        array_row{"UnsignedLongLong", array<unsigned long long>{18446744073709551615ULL, 1},
                  "(u64) 18446744073709551615", "(u64) 1"},
        array_row{"Float", array<float>{0.1F, 1e20F}, "(flt) 0.1", "(flt) 1e+20"},
        array_row{"Double", array<double>{0.1, 1e20}, "(dbl) 0.1", "(dbl) 1e+20"},
        array_row{"Char", array<char>{'A', '\xC8'}, "(i8) 65", "(i8) 200"},
        array_row{"String", array<utility::string>{"a\"b", ""}, "(string) \"a\"b\"",
                  "(string) \"\""},
        array_row{"Object", array<io_object>{sample_object(), io_object()}, "object<77> {\n  }",
                  "object<?> {\n  }"},
        array_row{"Value", array<io_value>::of(array<int>{7}, io_value()),
                  "array (1) {\n    (i32) 7\n  }", "empty"}),
    [](auto const& row) { return std::string(row.param.name); });

TEST(PrintedArray, TellsItsCountInDecimalDigits) {
    std::string expected = "array (1000) {\n";
    for (int i = 0; i < 1000; ++i) expected += "(u8) 0\n";
    EXPECT_EQ(io_value(array<unsigned char>(1000)).printable_string(' ', 0, 0).str(),
              expected + "}");
}

// --- objects ---

TEST(PrintedObject, WithoutMembersIsTwoLines) {
    EXPECT_EQ(text_of(io_object(5, io_structure_type())), "object<5> {\n}");
    EXPECT_EQ(text_of(io_object()), "object<?> {\n}");
    EXPECT_EQ(text_of(io_object(), 1), "  object<?> {\n  }");
}

TEST(PrintedObject, TellsTheLargestId) {
    EXPECT_EQ(text_of(io_object(18446744073709551615ULL, io_structure_type())),
              "object<18446744073709551615> {\n}");
}

TEST(PrintedObject, TakesTheIdFromTheObjectAndNotFromTheStatedType) {
    EXPECT_EQ(text_of(io_value(io_data_type::object(1), io_object(2, io_structure_type()))),
              "object<2> {\n}");
    io_data_type const odd{types::i32, 6, 2, 8};
    EXPECT_EQ(text_of(io_object(odd, io_structure_type())), "object<6> {\n}");
}

TEST(PrintedObject, PutsKeysOnItsOwnLevelAndWithoutQuotes) {
    io_object object;
    object.set("", 1);
    object.set("a] =>\n", 2);
    EXPECT_EQ(object.empty(), false);
    EXPECT_EQ(io_value(object).printable_string('.', 2, 1), "..object<?> {\n"
                                                            "..[] =>\n"
                                                            "....(i32) 1\n"
                                                            "..[a] =>\n] =>\n"
                                                            "....(i32) 2\n"
                                                            "..}");
}

TEST(PrintedObject, PutsKeysInTheOrderOfUnsignedBytes) {
    io_object object;
    for (char const* const key : {"b", "\xC3", "ab", "a", "B"}) object.set(key, io_value());
    EXPECT_EQ(io_value(object).printable_string(' ', 0, 0),
              "object<?> {\n[B] =>\nempty\n[a] =>\nempty\n[ab] =>\nempty\n[b] =>\nempty\n"
              "[\xC3] =>\nempty\n}");
}

TEST(PrintedObject, StandsAmongOthersInAnArray) {
    io_object object;
    object.set("k", array<io_value>::of("x"));
    EXPECT_EQ(text_of(array<io_object>{object, io_object()}), "array (2) {\n"
                                                              "  object<?> {\n"
                                                              "  [k] =>\n"
                                                              "    array (1) {\n"
                                                              "      (string) \"x\"\n"
                                                              "    }\n"
                                                              "  }\n"
                                                              "  object<?> {\n"
                                                              "  }\n"
                                                              "}");
}

// --- ways to print ---

TEST(Printing, DefaultsToTwoBlanksOnTheOutermostLevel) {
    io_value const value(array<io_value>::of(1, array<int>{2}));
    EXPECT_EQ(value.printable_string(), value.printable_string(' ', 2, 0));
    EXPECT_EQ(value.printable_string('-'), value.printable_string('-', 2, 0));
    EXPECT_EQ(value.printable_string('-', 3), value.printable_string('-', 3, 0));
}

TEST(Printing, ToAStreamIsTheSameText) {
    for (io_value const& value :
         {io_value(), io_value(5), io_value("a\nb"), io_value(std::string("a\0b", 3)),
          io_value(array<double>{0.5}), io_value(sample_object())}) {
        std::ostringstream out;
        out << value << '|';
        EXPECT_EQ(out.str(), value.printable_string().str() + "|");
    }
}

} // namespace
} // namespace whole_values
