#include <tavi/ioapi/v2/utility/string.hpp>
#include <tavi/ioapi/v2/utility/string_view.hpp>

#include "support/printed.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>

namespace {

using tavi::ioapi::v2::utility::string;
using tavi::ioapi::v2::utility::string_view;

int sign(int number) {
    return (number > 0) - (number < 0);
}

struct comparison_case {
    std::string_view left;
    std::string_view right;
    int sign;
};

using namespace std::string_view_literals;

constexpr comparison_case comparison_cases[] = {
    {"", "", 0},
    {"", "a", -1},
    {"a", "", 1},
    {"ab", "abc", -1},
    {"ab", "a", 1},
    {"ab", "ab", 0},
    {"ab", "ac", -1},
    {"ac", "ab", 1},
    {"b", "abc", 1},
    {"B", "a", -1},
    {"\x7F", "\x80", -1},
    {"\xFF", "a", 1},
    {"a\0b"sv, "a\0c"sv, -1},
    {"a\0"sv, "a"sv, 1},
    {"a\0b"sv, "a\0b"sv, 0},
};

TEST(StringCompare, FollowsUnsignedBytesThenLength) {
    for (auto const& [left, right, expected] : comparison_cases) {
        EXPECT_EQ(sign(string(left).compare(string_view(right))), expected)
            << left << " against " << right;
    }
}

TEST(StringCompare, GivesOneWhereOneTextBeginsWithTheOther) {
    EXPECT_EQ(string("ab").compare("abc"), -1);
    EXPECT_EQ(string("ab").compare("a"), 1);
    EXPECT_EQ(string("ab").compare("ab"), 0);
    EXPECT_EQ(string("ab").compare(""), 1);
    EXPECT_EQ(string("").compare("a"), -1);
}

TEST(StringCompare, ReadsATextWithoutABlockAsEmpty) {
    string const text;
    EXPECT_EQ(text.compare(string_view()), 0);
    EXPECT_EQ(text.compare(""), 0);
    EXPECT_EQ(text.compare("a"), -1);
    EXPECT_EQ(string("a").compare(string_view()), 1);
    EXPECT_EQ(string("").compare(string_view()), 0);
}

TEST(StringCompare, TakesEveryText) {
    string const text("level");
    EXPECT_EQ(text.compare(text), 0);
    EXPECT_EQ(text.compare(std::string("level")), 0);
    EXPECT_EQ(text.compare(std::string_view("level")), 0);
    EXPECT_EQ(text.compare("level"), 0);
}

template <class Pair>
class TextOperators : public ::testing::Test {};

// One side is ours, the other any text.
using text_pairs = ::testing::Types<std::tuple<string, string>,
                                    std::tuple<string, string_view>,
                                    std::tuple<string, std::string>,
                                    std::tuple<string, std::string_view>,
                                    std::tuple<string_view, string>,
                                    std::tuple<string_view, string_view>,
                                    std::tuple<string_view, std::string>,
                                    std::tuple<string_view, std::string_view>,
                                    std::tuple<std::string, string>,
                                    std::tuple<std::string, string_view>,
                                    std::tuple<std::string_view, string>,
                                    std::tuple<std::string_view, string_view>>;
TYPED_TEST_SUITE(TextOperators, text_pairs);

template <class Left, class Right>
void expect_order(Left const& left, Right const& right, int expected) {
    EXPECT_EQ(left == right, expected == 0);
    EXPECT_EQ(left != right, expected != 0);
    EXPECT_EQ(left < right, expected < 0);
    EXPECT_EQ(left <= right, expected <= 0);
    EXPECT_EQ(left > right, expected > 0);
    EXPECT_EQ(left >= right, expected >= 0);
}

TYPED_TEST(TextOperators, AgreeWithTheOrderOfBytes) {
    for (auto const& [left, right, expected] : comparison_cases) {
        SCOPED_TRACE(std::string(left) + " against " + std::string(right));
        expect_order(std::tuple_element_t<0, TypeParam>(left),
                     std::tuple_element_t<1, TypeParam>(right), expected);
    }
}

template <class Text>
class TextAgainstLiteral : public ::testing::Test {};
using own_texts = ::testing::Types<string, string_view>;
TYPED_TEST_SUITE(TextAgainstLiteral, own_texts);

TYPED_TEST(TextAgainstLiteral, ComparesOnBothSides) {
    TypeParam const text("ab");
    expect_order(text, "ab", 0);
    expect_order("ab", text, 0);
    expect_order(text, "abc", -1);
    expect_order("abc", text, 1);
    expect_order(text, "a", 1);
    expect_order("a", text, -1);
    char const* const pointer = "ab";
    expect_order(text, pointer, 0);
    expect_order(pointer, text, 0);
}

TYPED_TEST(TextAgainstLiteral, ReadsTheDefaultAsEmpty) {
    TypeParam const text;
    expect_order(text, "", 0);
    expect_order(text, std::string(), 0);
    expect_order(text, std::string_view(), 0);
    expect_order(text, "a", -1);
    expect_order(text, string(""), 0);
    expect_order(text, string(), 0);
    expect_order(text, string_view(), 0);
}

TYPED_TEST(TextAgainstLiteral, HashesLikeTheStandardTextsThatAreEqual) {
    for (std::string_view const bytes : {""sv, "level"sv, "a\0b"sv, "\xFF"sv}) {
        TypeParam const text(bytes);
        EXPECT_EQ(std::hash<TypeParam>{}(text), std::hash<std::string_view>{}(bytes));
        EXPECT_EQ(std::hash<TypeParam>{}(text), std::hash<std::string>{}(std::string(bytes)));
    }
    EXPECT_EQ(std::hash<TypeParam>{}(TypeParam()), std::hash<std::string_view>{}(""));
}

TYPED_TEST(TextAgainstLiteral, PrintsItsBytes) {
    EXPECT_EQ(test_support::printed(TypeParam("level")), "level");
    EXPECT_EQ(test_support::printed(TypeParam()), "");
    EXPECT_EQ(test_support::printed(TypeParam("a\0b"sv)), "a\0b"sv);
    EXPECT_EQ(test_support::printed_by_own_traits(TypeParam("a\0b"sv)), "a\0b"sv);
}

TYPED_TEST(TextAgainstLiteral, PrintsByWidthAndFill) {
    std::ostringstream out;
    out.width(7);
    out.fill('.');
    out << TypeParam("level") << '|';
    EXPECT_EQ(out.str(), "..level|");
}

} // namespace
