#include "equality_held_value.hpp"
#include "equality_oracle.hpp"
#include "equality_samples.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

// --- rows that follow from the rules ---

struct equality_row {
    char const* name;
    held_value left;
    held_value right;
    bool equals;   // left to right
    bool mirrored; // right to left
    [[nodiscard]] bool equal() const { return equals || mirrored; }
};

class EqualityRow : public ::testing::TestWithParam<equality_row> {};

TEST_P(EqualityRow, HoldsFromLeftToRight) {
    EXPECT_EQ(GetParam().left->equals(*GetParam().right), GetParam().equals);
}

TEST_P(EqualityRow, HoldsFromRightToLeft) {
    EXPECT_EQ(GetParam().right->equals(*GetParam().left), GetParam().mirrored);
}

TEST_P(EqualityRow, HoldsForTheOperators) {
    equality_row const& row = GetParam();
    EXPECT_EQ(*row.left == *row.right, row.equal());
    EXPECT_EQ(*row.right == *row.left, row.equal());
    EXPECT_EQ(*row.left != *row.right, !row.equal());
    EXPECT_EQ(*row.right != *row.left, !row.equal());
}

using u8 = unsigned char;

INSTANTIATE_TEST_SUITE_P(
    Pairs,
    EqualityRow,
    ::testing::Values(
        equality_row{"IntAndWholeDouble", 5, 5.0, true, true},
        equality_row{"IntAndBrokenDouble", 5, 5.5, false, false},
        equality_row{"MinusOneAndLargestUnsigned", -1, 4294967295U, false, false},
        equality_row{"IntegerNextToADouble", 9007199254740993LL, 9007199254740992.0, false, false},
        equality_row{"IntegerBeyondADouble", 9007199254740992LL, 9007199254740992.0, false, false},
        equality_row{"LargestIntegerOfADouble", 9007199254740991LL, 9007199254740991.0, true, true},
        equality_row{"IntBeyondAFloat", 16777216, 16777216.0F, false, false},
        equality_row{"LargestIntOfAFloat", 16777215, 16777215.0F, true, true},
        equality_row{"SameIntAsADouble", 16777216, 16777216.0, true, true},
        equality_row{"ByteByNarrowing", u8{44}, 300.0F, true, false},
        equality_row{"FloatAndRoundedDouble", 0.1F, 0.1, true, false},
        equality_row{"IntAndText", 5, "5", true, true},
        equality_row{"IntAndLongerText", 5, "05", true, false},
        equality_row{"DoubleAndText", 5.0, "5.0", true, false},
        equality_row{"OneAndTrue", 1, true, false, true},
        equality_row{"TrueAndSeven", true, 7, true, false},
        equality_row{"FalseAndZero", false, 0.0, true, false},
        equality_row{"TrueAndZero", true, 0.0, false, false},
        equality_row{"TrueAndItsText", true, "true", true, true},
        equality_row{"FalseAndItsText", false, "false", false, true},
        equality_row{"TrueAndObject", true, io_object(), true, false},
        equality_row{"FalseAndObject", false, io_object(), false, false},
        equality_row{"TrueAndArray", true, array<int>{1}, true, false},
        equality_row{"FalseAndNoElements", false, array<int>(), true, false},
        equality_row{"TrueAndNoElements", true, array<int>(), false, false},
        equality_row{"TrueAndObjects", true, array<io_object>(1), true, false},
        equality_row{"FalseAndNoObjects", false, array<io_object>(), true, false},
        equality_row{"FalseAndObjects", false, array<io_object>(1), false, false},
        equality_row{"ArraysOfNumbers", array<int>{1, 2}, array<double>{1.0, 2.0}, true, true},
        equality_row{"ArraysOfOtherCounts", array<int>{1, 2}, array<double>{1.0}, false, false},
        equality_row{"ArraysWithoutElements", array<int>(), array<double>(), true, true},
        equality_row{"ArrayAndItsOnlyElement", array<int>{1}, 1, false, false},
        equality_row{"ZeroAndEmptyText", 0, "", true, false},
        equality_row{"ZeroRealAndEmptyText", 0.0, "", true, false},
        equality_row{"FalseAndEmptyText", false, "", true, false},
        equality_row{"LongAndInt64", 5L, 5LL, true, true},
        equality_row{"CharAndByte", '\xC8', u8{200}, true, true},
        equality_row{"CharAndSignedByte", '\x05', short{5}, true, true},
        equality_row{"HighCharAndNegative", '\xC8', short{-56}, false, false},
        equality_row{"CharAndText", 'A', "65", true, true},
        equality_row{"CharAndLetter", 'A', "A", false, false}),
    [](auto const& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Arrays,
    EqualityRow,
    ::testing::Values(
        equality_row{"TruthValuesAndNumbers", array<bool>{true, false}, array<int>{7, 0}, true,
                     false},
        equality_row{"TruthValuesAndTexts", array<bool>{true, true},
                     array<utility::string>{"true", "x"}, true, false},
        equality_row{"NumbersAndTexts", array<int>{1, 2}, array<utility::string>{"1", "2"}, true,
                     true},
        equality_row{"NumbersAndValues", array<int>{1, 2}, array<io_value>::of(1.0, "2"), true,
                     true},
        equality_row{"NumbersAndTrueValue", array<int>{1}, array<io_value>::of(true), false, true},
        equality_row{"NumbersAndEmptyElement", array<int>{0}, array<io_value>::of(io_value()),
                     false, false},
        equality_row{"TruthValuesAndEmptyElement", array<bool>{false},
                     array<io_value>::of(io_value()), false, false},
        equality_row{"TruthValuesAndObjectElement", array<bool>{true},
                     array<io_value>::of(io_object()), true, true},
        equality_row{"TextsAndObjectElement", array<utility::string>{""},
                     array<io_value>::of(io_object()), false, false},
        equality_row{"CharsAndNoValues", array<char>(), array<io_value>(), true, false},
        equality_row{"CharsAndPairOfTexts", array<char>{'a', 'b', '\0'},
                     array<io_value>::of("ab", ""), false, true},
        equality_row{"CharsAndTheirNumbers", array<char>{'\x05', '\x06'}, array<io_value>::of(5, 6),
                     true, false},
        equality_row{"ObjectsAndTruthValues", array<io_object>(1), array<bool>{true}, false, false},
        equality_row{"ObjectsAndNoTruthValues", array<io_object>(), array<bool>(), false, false},
        equality_row{"ObjectsAndValues", array<io_object>(1), array<io_value>::of(io_object()),
                     false, false},
        equality_row{"ObjectsAndNoValues", array<io_object>(), array<io_value>(), false, false},
        equality_row{"ObjectsAndNoNumbers", array<io_object>(), array<int>(), false, false},
        equality_row{"ObjectsAndNoTexts", array<io_object>(), array<utility::string>(), false,
                     false}),
    [](auto const& row) { return std::string(row.param.name); });

// --- everything against everything ---

TEST(EqualityByRules, HoldsInEachDirection) {
    std::vector<io_value> const samples = natural_samples();
    for (io_value const& left : samples) {
        for (io_value const& right : samples) {
            ASSERT_EQ(left.equals(right), equals_by_rules(left, right))
                << left << " (" << left.index() << ") and " << right << " (" << right.index()
                << ")";
        }
    }
}

TEST(EqualityByRules, HoldsForTheOperators) {
    std::vector<io_value> const samples = natural_samples();
    for (io_value const& left : samples) {
        for (io_value const& right : samples) {
            bool const expected = equal_by_rules(left, right);
            ASSERT_EQ(left == right, expected) << left << " (" << left.index() << ") and " << right
                                               << " (" << right.index() << ")";
            ASSERT_EQ(left != right, !expected) << left << " and " << right;
        }
    }
}

TEST(EqualityByRules, TakesNoNoticeOfTheTypesWhereTheyDiffer) {
    io_data_type const stated{types{99}, 7, 1, 5};
    std::vector<io_value> const samples = natural_samples();
    for (io_value const& left : samples) {
        for (std::size_t i = 0; i < samples.size(); i += 7) {
            io_value const right = with_type(stated, samples[i]);
            ASSERT_EQ(left.equals(right), left.index() != 0 && equals_by_rules(left, right))
                << left << " and " << right;
        }
    }
}

// --- what cannot be promised ---

TEST(EqualityIsNoEquivalence, SinceTheOneDirectionIsAsymmetric) {
    EXPECT_TRUE(io_value(static_cast<unsigned char>(44)).equals(300.0F));
    EXPECT_FALSE(io_value(300.0F).equals(static_cast<unsigned char>(44)));
}

TEST(EqualityIsNoEquivalence, SinceItIsNotTransitive) {
    EXPECT_TRUE(io_value(1) == io_value(true));
    EXPECT_TRUE(io_value(true) == io_value(7));
    EXPECT_FALSE(io_value(1) == io_value(7));
}

TEST(EqualityIsNoEquivalence, SinceObjectsAndNaNsAreUnequalToThemselves) {
    io_value const object = sample_object();
    EXPECT_FALSE(object == object);
    EXPECT_TRUE(object != object);
    io_value const list(array<io_value>::of(1, object));
    io_value const copy(list);
    EXPECT_FALSE(list == copy);
    EXPECT_FALSE(list == list);
}

} // namespace
} // namespace whole_values
