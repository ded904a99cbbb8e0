#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/operators.hpp"
#include "support/printed.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using part = plc_identifier_part;
using id = plc_identifier;
using test_support::allocation_counter;
using test_support::allocation_failure;

TEST(Identifier, HasTwoPartsWithoutPayloadByDefault) {
    id const identifier;
    EXPECT_TRUE(identifier.primary().is_none());
    EXPECT_TRUE(identifier.secondary().is_none());
    static_assert(std::is_nothrow_default_constructible_v<id>);
}

TEST(Identifier, IsMadeFromItsParts) {
    id const one("level");
    EXPECT_EQ(one.primary().text(), "level");
    EXPECT_TRUE(one.secondary().is_none());
    id const two(4, "level");
    EXPECT_EQ(two.primary().number(), 4U);
    EXPECT_EQ(two.secondary().text(), "level");
    id const reversed(part(), 4);
    EXPECT_TRUE(reversed.primary().is_none());
    EXPECT_EQ(reversed.secondary().number(), 4U);
}

TEST(Identifier, IsNotMadeSilently) {
    static_assert(!std::is_convertible_v<int, id>);
    static_assert(!std::is_convertible_v<char const*, id>);
    static_assert(!std::is_convertible_v<part, id>);
    static_assert(std::is_constructible_v<id, int>);
    static_assert(std::is_constructible_v<id, char const*>);
    static_assert(!std::is_constructible_v<id, std::nullptr_t>);
    static_assert(!std::is_constructible_v<id, bool>);
}

TEST(IdentifierCopy, IsDeep) {
    id const original("level", "unit");
    id const copy(original);
    EXPECT_TRUE(copy == original);
    EXPECT_NE(copy.primary().text().data(), original.primary().text().data());
    EXPECT_NE(copy.secondary().text().data(), original.secondary().text().data());
}

TEST(IdentifierCopy, LeavesNothingBehindWhenMemoryIsExhausted) {
    id const original("level", "unit");
    EXPECT_EQ(test_support::count_survived_failures([&] { id const copy(original); }), 2);
}

TEST(IdentifierMove, LeavesBothPartsWithoutPayload) {
    id source("level", 4);
    char const* const bytes = source.primary().text().data();
    allocation_counter const counter;
    id const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(target.primary().text().data(), bytes);
    EXPECT_EQ(target.secondary().number(), 4U);
    EXPECT_TRUE(source.primary().is_none());
    EXPECT_TRUE(source.secondary().is_none());
    EXPECT_TRUE(source == id());
}

TEST(IdentifierMove, NeverFails) {
    static_assert(std::is_nothrow_move_constructible_v<id>);
    static_assert(std::is_nothrow_move_assignable_v<id>);
    static_assert(std::is_nothrow_destructible_v<id>);
}

TEST(IdentifierAssignment, ReplacesBothParts) {
    id target("old", 1);
    id const source(4, "level");
    target = source;
    EXPECT_TRUE(target == source);
    id taker("old", "unit");
    taker = std::move(target);
    EXPECT_TRUE(taker == source);
    EXPECT_TRUE(target == id());
}

TEST(IdentifierAssignment, ToItselfChangesNothing) {
    id identifier("level", "unit");
    id& same = identifier;
    char const* const bytes = identifier.primary().text().data();
    identifier = static_cast<id const&>(same);
    EXPECT_TRUE(identifier == id("level", "unit"));
    identifier = std::move(same);
    EXPECT_TRUE(identifier == id("level", "unit"));
    EXPECT_EQ(identifier.primary().text().data(), bytes);
}

TEST(IdentifierAssignment, ThatFailsInThePrimaryPartKeepsTheSecondaryOne) {
    id target(7, "unit");
    id const source("level", 9);
    {
        allocation_failure const failure(1);
        EXPECT_THROW(target = source, std::bad_alloc);
    }
    EXPECT_EQ(target.primary().kind(), plc_identifier_kind::text);
    EXPECT_EQ(target.primary().text(), "");
    EXPECT_EQ(target.secondary().text(), "unit");
}

TEST(IdentifierAssignment, ThatFailsInTheSecondaryPartHasReplacedThePrimaryOne) {
    id target(7, 8);
    id const source("level", "unit");
    {
        allocation_failure const failure(2);
        EXPECT_THROW(target = source, std::bad_alloc);
    }
    EXPECT_EQ(target.primary().text(), "level");
    EXPECT_EQ(target.secondary().kind(), plc_identifier_kind::text);
    EXPECT_EQ(target.secondary().text(), "");
}

struct pair_case {
    char const* name;
    id left;
    id right;
    bool equal;
    bool less;
    bool greater;
};

class IdentifierPair : public ::testing::TestWithParam<pair_case> {};

TEST_P(IdentifierPair, IsEqualOrNot) {
    auto const& row = GetParam();
    EXPECT_EQ(row.left == row.right, row.equal);
    EXPECT_EQ(row.right == row.left, row.equal);
    EXPECT_EQ(row.left != row.right, !row.equal);
}

TEST_P(IdentifierPair, IsOrderedByThePrimaryParts) {
    auto const& row = GetParam();
    EXPECT_EQ(row.left < row.right, row.less);
    EXPECT_EQ(row.right < row.left, row.greater);
}

TEST_P(IdentifierPair, HasOneHashWhereItIsEqual) {
    auto const& row = GetParam();
    if (row.equal) {
        EXPECT_EQ(std::hash<id>{}(row.left), std::hash<id>{}(row.right));
    }
    EXPECT_EQ(std::hash<id>{}(id(row.left)), std::hash<id>{}(row.left));
}

INSTANTIATE_TEST_SUITE_P(
    Rows,
    IdentifierPair,
    ::testing::Values(
        pair_case{"Defaults", id(), id(), true, false, false},
        pair_case{"SameNumbers", id(7), id(7), true, false, false},
        pair_case{"Numbers", id(7), id(8), false, true, false},
        pair_case{"NumbersAreUnsigned", id(1), id(0xFFFFFFFFFFFFFFFFULL), false, true, false},
        pair_case{"NegativeNumbersSortLast", id(1), id(-1), false, true, false},
        pair_case{"SameTexts", id("level"), id("level"), true, false, false},
        pair_case{"Texts", id("a"), id("b"), false, true, false},
        pair_case{"ShorterTextFirst", id("a"), id("aa"), false, true, false},
        pair_case{"BytesBeforeLength", id("aa"), id("b"), false, true, false},
        pair_case{"TextsAreUnsigned", id("z"), id("\xC3\xA4"), false, true, false},
        pair_case{"TextsWithZeroBytes", id("a\0a"sv), id("a\0b"sv), false, true, false},
        pair_case{"EmptyTexts", id(""), id(""), true, false, false},
        pair_case{"EmptyTextsWithoutABlock", id(""), id(utility::string()), true, false, false},
        pair_case{"EmptyTextFirst", id(""), id("a"), false, true, false},
        pair_case{"NumberAndItsDigits", id(5), id("5"), false, true, false},
        pair_case{"NumberBeforeText", id(0xFFFFFFFFFFFFFFFFULL), id(""), false, true, false},
        pair_case{"NumberBeforeNone", id(5), id(), false, true, false},
        pair_case{"NoneAndText", id(), id("a"), false, false, false},
        pair_case{"NoneAndEmptyText", id(), id(""), false, false, false},
        pair_case{"ZeroAndNone", id(0), id(), false, true, false},
        pair_case{"SecondaryNumbersDiffer", id(7, 1), id(7, 2), false, false, false},
        pair_case{"SecondaryTextsDiffer", id("a", "x"), id("a", "y"), false, false, false},
        pair_case{"SecondaryMissing", id(7), id(7, 0), false, false, false},
        pair_case{"SecondaryKindsDiffer", id(7, 5), id(7, "5"), false, false, false},
        pair_case{"BothEqual", id("a", 5), id("a", 5), true, false, false},
        pair_case{"SecondaryDoesNotOrder", id(7, 9), id(8, 1), false, true, false},
        pair_case{"PartsSwapped", id(1, 2), id(2, 1), false, true, false},
        pair_case{"NonesWithSecondaries", id(part(), 1), id(part(), 2), false, false, false}),
    [](auto const& test) { return std::string(test.param.name); });

TEST(IdentifierOrder, HasNoOtherOperators) {
    static_assert(test_support::has_less<id>);
    static_assert(test_support::has_equal<id>);
    static_assert(test_support::has_not_equal<id>);
    static_assert(!test_support::has_less_equal<id>);
    static_assert(!test_support::has_greater<id>);
    static_assert(!test_support::has_greater_equal<id>);
    static_assert(!test_support::has_three_way<id>);
}

TEST(IdentifierOrder, ComparesOnlyWithIdentifiers) {
    static_assert(!test_support::has_equal<id, int>);
    static_assert(!test_support::has_equal<id, char const*>);
    static_assert(!test_support::has_less<id, int>);
}

TEST(IdentifierHash, TellsFullIdentitiesApart) {
    std::unordered_set<id> identifiers;
    identifiers.insert(id(7, 1));
    identifiers.insert(id(7, 2));
    identifiers.insert(id(7, 2));
    identifiers.insert(id("7", 2));
    identifiers.insert(id());
    identifiers.insert(id(""));
    EXPECT_EQ(identifiers.size(), 5U);
    EXPECT_EQ(identifiers.count(id(7, 2)), 1U);
    EXPECT_EQ(identifiers.count(id(7, 3)), 0U);
}

TEST(Identifier, NeverAllocatesWhenComparedOrHashed) {
    id const left("a text that is longer than small buffers are", 1);
    id const right(left);
    allocation_counter const counter;
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left < right);
    EXPECT_EQ(std::hash<id>{}(left), std::hash<id>{}(right));
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(Identifier, PrintsItsParts) {
    EXPECT_EQ(test_support::printed(id("level")), "\"level\"");
    EXPECT_EQ(test_support::printed(id("level", 4)), "\"level\"/4");
    EXPECT_EQ(test_support::printed(id(4, "level")), "4/\"level\"");
    EXPECT_EQ(test_support::printed(id()), "none");
    EXPECT_EQ(test_support::printed(id(part(), 4)), "none/4");
    EXPECT_EQ(test_support::printed(id(4, "")), "4/\"\"");
    EXPECT_EQ(test_support::printed_by_own_traits(id("level", 4)), "\"level\"/4");
}

TEST(Identifier, StandsAsPrimaryThenSecondary) {
    id const identifier(1, 2);
    EXPECT_EQ(test_support::offset_of(identifier, identifier.primary()), 0U);
    EXPECT_EQ(test_support::offset_of(identifier, identifier.secondary()), sizeof(part));
    static_assert(sizeof(id) == test_support::by_word(48, 64));
}

} // namespace
