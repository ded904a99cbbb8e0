#include <tavi/ioapi/v2/plc_identifier_part.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/operators.hpp"
#include "support/printed.hpp"
#include "support/raw_text.hpp"
#include "support/typed_tests.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using part = plc_identifier_part;
using kind = plc_identifier_kind;
using test_support::allocation_counter;
using test_support::allocation_failure;

TEST(IdentifierKind, HasItsNumbers) {
    static_assert(static_cast<int>(kind::none) == 0);
    static_assert(static_cast<int>(kind::text) == 1);
    static_assert(static_cast<int>(kind::number) == 2);
    static_assert(sizeof(kind) == 4);
}

TEST(IdentifierPart, IsNoneByDefault) {
    part const none;
    EXPECT_EQ(none.kind(), kind::none);
    EXPECT_TRUE(none.is_none());
    EXPECT_EQ(none.number(), 0U);
    EXPECT_EQ(none.text().size(), 0U);
    EXPECT_EQ(none.text().data(), nullptr);
}

TEST(IdentifierPart, HasAZeroPayloadByDefault) {
    alignas(part) unsigned char place[sizeof(part)];
    std::memset(place, 0xFF, sizeof place);
    auto* const none = ::new (static_cast<void*>(place)) part();
    unsigned char payload[sizeof(utility::string)];
    std::memcpy(payload, reinterpret_cast<unsigned char const*>(none) + 8, sizeof payload);
    EXPECT_THAT(payload, ::testing::Each(0));
    none->~part();
}

template <class T>
class IdentifierNumber : public ::testing::Test {};
using number_types = ::testing::Types<short,
                                      unsigned short,
                                      int,
                                      unsigned int,
                                      long,
                                      unsigned long,
                                      long long,
                                      unsigned long long,
                                      std::int64_t,
                                      std::uint64_t,
                                      std::size_t>;
TYPED_TEST_SUITE(IdentifierNumber, number_types);

TYPED_TEST(IdentifierNumber, IsMadeFromIt) {
    part const number = TypeParam{7};
    EXPECT_EQ(number.kind(), kind::number);
    EXPECT_FALSE(number.is_none());
    EXPECT_EQ(number.number(), 7U);
    EXPECT_EQ(number.text().size(), 0U);
    EXPECT_EQ(number.text().data(), nullptr);
}

TYPED_TEST(IdentifierNumber, KeepsItsLargestValue) {
    auto const largest = std::numeric_limits<TypeParam>::max();
    EXPECT_EQ(part(largest).number(), static_cast<unsigned long long>(largest));
}

TYPED_TEST(IdentifierNumber, KeepsTheTwosComplementOfANegativeOne) {
    if constexpr (std::is_signed_v<TypeParam>) {
        EXPECT_EQ(part(TypeParam{-1}).number(), 0xFFFFFFFFFFFFFFFFULL);
        EXPECT_EQ(part(TypeParam{-5}).number(), 0xFFFFFFFFFFFFFFFBULL);
        auto const least = static_cast<long long>(std::numeric_limits<TypeParam>::min());
        EXPECT_EQ(part(std::numeric_limits<TypeParam>::min()).number(),
                  static_cast<unsigned long long>(least));
        EXPECT_TRUE(part(TypeParam{-1}) == part(-1LL));
    } else {
        EXPECT_EQ(part(static_cast<TypeParam>(-1)).number(), std::numeric_limits<TypeParam>::max());
    }
}

TEST(IdentifierNumber, OfTheLeast64BitsHasTheHighestBitAlone) {
    EXPECT_EQ(part(std::numeric_limits<long long>::min()).number(), 0x8000000000000000ULL);
    EXPECT_EQ(part(std::numeric_limits<unsigned long long>::max()).number(), 0xFFFFFFFFFFFFFFFFULL);
}

TEST(IdentifierPart, IsNotMadeFromWhatCouldBeConfused) {
    static_assert(!std::is_constructible_v<part, bool>);
    static_assert(!std::is_constructible_v<part, char>);
    static_assert(!std::is_constructible_v<part, wchar_t>);
    static_assert(!std::is_constructible_v<part, char8_t>);
    static_assert(!std::is_constructible_v<part, char16_t>);
    static_assert(!std::is_constructible_v<part, char32_t>);
    static_assert(!std::is_constructible_v<part, std::nullptr_t>);
    static_assert(!std::is_constructible_v<part, double>);
    static_assert(!std::is_constructible_v<part, float>);
    static_assert(!std::is_constructible_v<part, void*>);
    static_assert(!std::is_constructible_v<part, plc_identifier_kind>);
}

template <class T>
class IdentifierText : public ::testing::Test {};
using text_types = ::testing::
    Types<char const*, std::string, std::string_view, utility::string, utility::string_view>;
TYPED_TEST_SUITE(IdentifierText, text_types);

TYPED_TEST(IdentifierText, IsMadeFromIt) {
    TypeParam const source = "level";
    part const text = source;
    EXPECT_EQ(text.kind(), kind::text);
    EXPECT_EQ(text.text(), "level");
    EXPECT_EQ(text.number(), 0U);
    EXPECT_STREQ(text.text().data(), "level") << "an owned text is terminated";
}

TYPED_TEST(IdentifierText, MayBeEmpty) {
    TypeParam const source = "";
    part const text = source;
    EXPECT_EQ(text.kind(), kind::text);
    EXPECT_EQ(text.text().size(), 0U);
    EXPECT_NE(text.text().data(), nullptr);
}

TEST(IdentifierText, KeepsZeroBytes) {
    EXPECT_EQ(part("a\0b"sv).text(), "a\0b"sv);
}

TEST(IdentifierText, IsOwned) {
    std::string source = "level";
    part const text = source;
    source[0] = 'L';
    EXPECT_EQ(text.text(), "level");
}

TEST(IdentifierText, IsTakenOverFromAMovedText) {
    utility::string source("level");
    char const* const bytes = source.data();
    allocation_counter const counter;
    part const text(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(text.text().data(), bytes);
}

TEST(IdentifierText, WithoutABlockReadsAsTheSharedEmptyText) {
    part const text{utility::string()};
    EXPECT_EQ(text.kind(), kind::text);
    EXPECT_EQ(text.text().size(), 0U);
    EXPECT_EQ(text.text().data(), &utility::string::S_empty);
}

TEST(IdentifierText, ThatIsTooLongIsRefused) {
    char const* volatile opaque = "few bytes"; // a compiler must not foresee the reads refused here
    char const* const few = opaque;
    EXPECT_THROW(part(std::string_view(few, 0xFFFFFFFF)), std::bad_alloc);
    EXPECT_THROW(part(utility::string_view(few, 0xFFFFFFFF)), std::bad_alloc);
}

TEST(IdentifierPartCopy, KeepsKindAndPayload) {
    part const none;
    part const number(7);
    part const text("level");
    EXPECT_TRUE(part(none) == none);
    EXPECT_TRUE(part(number) == number);
    part const copy(text);
    EXPECT_TRUE(copy == text);
    EXPECT_NE(copy.text().data(), text.text().data());
}

TEST(IdentifierPartCopy, OfAnEmptyTextOwnsABlockOfOneByte) {
    part const with_block("");
    part const without_block{utility::string()};
    for (part const* const source : {&with_block, &without_block}) {
        allocation_counter const counter;
        part const copy(*source);
        EXPECT_EQ(counter.allocations(), 1U);
        EXPECT_EQ(test_support::last_aligned_allocation().size, 1U);
        EXPECT_EQ(copy.kind(), kind::text);
        EXPECT_EQ(copy.text(), "");
    }
}

TEST(IdentifierPartCopy, OfATextTakesOneBlock) {
    part const text("level");
    allocation_counter const counter;
    part const copy(text);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 6U);
}

TEST(IdentifierPartCopy, OfANumberAllocatesNothing) {
    part const number(7);
    allocation_counter const counter;
    part const copy(number);
    part const none_copy{part()};
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(IdentifierPartMove, LeavesNone) {
    part number(7);
    part const taken_number(std::move(number));
    EXPECT_EQ(taken_number.number(), 7U);
    EXPECT_TRUE(number.is_none());

    part text("level");
    char const* const bytes = text.text().data();
    allocation_counter const counter;
    part const taken_text(std::move(text));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(taken_text.text().data(), bytes);
    EXPECT_TRUE(text.is_none());
    EXPECT_EQ(text.text().data(), nullptr);

    part none;
    part const taken_none(std::move(none));
    EXPECT_TRUE(taken_none.is_none());
}

// All pairs of kinds, for copy and for move.
part make_part(int which) {
    switch (which) {
    case 0: return {};
    case 1: return "level";
    case 2: return 7;
    default: return "";
    }
}

class IdentifierPartPair : public ::testing::TestWithParam<std::tuple<int, int>> {
protected:
    part target = make_part(std::get<0>(GetParam()));
    part source = make_part(std::get<1>(GetParam()));
    part const expected = make_part(std::get<1>(GetParam()));
};
INSTANTIATE_TEST_SUITE_P(AllKinds,
                         IdentifierPartPair,
                         ::testing::Combine(::testing::Range(0, 4), ::testing::Range(0, 4)));

TEST_P(IdentifierPartPair, IsCopyAssigned) {
    target = source;
    EXPECT_TRUE(target == expected);
    EXPECT_TRUE(source == expected);
}

TEST_P(IdentifierPartPair, IsMoveAssigned) {
    target = std::move(source);
    EXPECT_TRUE(target == expected);
    EXPECT_TRUE(source.is_none());
}

TEST_P(IdentifierPartPair, IsEqualExactlyWhereBothAreAlike) {
    bool const alike = std::get<0>(GetParam()) == std::get<1>(GetParam());
    EXPECT_EQ(target == source, alike);
    EXPECT_EQ(target != source, !alike);
}

TEST(IdentifierPartAssignment, OfATextTakesANewBlockEvenOfTheSameLength) {
    part target("old!!");
    part const source("level");
    allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(target.text(), "level");
}

TEST(IdentifierPartAssignment, ToItselfChangesNothing) {
    for (int which = 0; which < 4; ++which) {
        part target = make_part(which);
        part& same = target;
        char const* const bytes = target.text().data();
        allocation_counter const counter;
        target = static_cast<part const&>(same);
        EXPECT_TRUE(target == make_part(which));
        EXPECT_EQ(target.text().data(), bytes);
        target = std::move(same);
        EXPECT_TRUE(target == make_part(which));
        EXPECT_EQ(target.text().data(), bytes);
    }
}

TEST(IdentifierPartAssignment, ThatFailsLeavesTheNewKindWithAnEmptyText) {
    for (int which = 0; which < 4; ++which) {
        part target = make_part(which);
        part const source("level");
        {
            allocation_failure const failure(1);
            EXPECT_THROW(target = source, std::bad_alloc);
        }
        EXPECT_EQ(target.kind(), kind::text);
        EXPECT_EQ(target.text(), "");
        target = source; // nothing is released twice, here or at the end
        EXPECT_EQ(target.text(), "level");
    }
}

TEST(IdentifierPartAssignment, SurvivesExhaustedMemory) {
    part const source("level");
    EXPECT_EQ(test_support::count_survived_failures([&] {
                  part target("old");
                  target = source;
              }),
              2);
    EXPECT_EQ(test_support::count_survived_failures([&] { part const copy(source); }), 1);
}

TEST(IdentifierPartEquality, ReadsKindsThenPayloads) {
    EXPECT_TRUE(part() == part());
    EXPECT_TRUE(part(7) == part(7));
    EXPECT_FALSE(part(7) == part(8));
    EXPECT_TRUE(part("level") == part("level"));
    EXPECT_FALSE(part("level") == part("Level"));
    EXPECT_FALSE(part("level") == part("levels"));
    EXPECT_FALSE(part("5") == part(5));
    EXPECT_FALSE(part("") == part());
    EXPECT_FALSE(part(0) == part());
    EXPECT_FALSE(part("a\0b"sv) == part("a\0c"sv));
}

TEST(IdentifierPartEquality, ReadsEmptyTextsWithAndWithoutABlockAlike) {
    EXPECT_TRUE(part("") == part(utility::string()));
    EXPECT_TRUE(part(utility::string()) == part(utility::string()));
}

TEST(IdentifierPart, OffersNoOrder) {
    static_assert(!test_support::has_less<part>);
    static_assert(!test_support::has_less_equal<part>);
    static_assert(!test_support::has_greater<part>);
    static_assert(!test_support::has_greater_equal<part>);
    static_assert(!test_support::has_three_way<part>);
}

TEST(IdentifierPart, PrintsItsPayload) {
    EXPECT_EQ(test_support::printed(part()), "none");
    EXPECT_EQ(test_support::printed(part(7)), "7");
    EXPECT_EQ(test_support::printed(part(-1)), "18446744073709551615");
    EXPECT_EQ(test_support::printed(part("level")), "\"level\"");
    EXPECT_EQ(test_support::printed(part("")), "\"\"");
    EXPECT_EQ(test_support::printed(part(utility::string())), "\"\"");
    EXPECT_EQ(test_support::printed_by_own_traits(part("level")), "\"level\"");
}

TEST(IdentifierPart, StandsAsKindThenPayload) {
    part const number(7);
    EXPECT_EQ(test_support::field_at<unsigned int>(number, 0), 2U);
    EXPECT_EQ(test_support::field_at<unsigned long long>(number, 8), 7U);
    part const text("level");
    EXPECT_EQ(test_support::field_at<unsigned int>(text, 0), 1U);
    EXPECT_EQ(test_support::field_at<unsigned int>(text, 8 + sizeof(void*)), 5U);
    EXPECT_EQ(test_support::field_at<char const*>(text, 8 + test_support::by_word(8, 16)),
              text.text().data());
    static_assert(sizeof(part) == test_support::by_word(24, 32));
}

} // namespace
