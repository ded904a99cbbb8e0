#include "equality_oracle.hpp"
#include "equality_samples.hpp"
#include "support/alternatives.hpp"

#include <gtest/gtest.h>

/// \file
/// Two values of one stated type whose alternatives differ. The left one decides how both are read,
/// and nothing outside the right one is.

namespace whole_values {
namespace {

/// Some payloads of every alternative under the type.
std::vector<io_value> samples_of(io_data_type const& type) {
    std::vector<io_value> result;
    for (io_value const& value : natural_samples()) result.push_back(with_type(type, value));
    auto const add = [&](auto... pointers) {
        (result.push_back(io_value(type, sample<std::remove_pointer_t<decltype(pointers)>>())),
         ...);
    };
    add(static_cast<array<int>*>(nullptr), static_cast<array<long>*>(nullptr),
        static_cast<array<unsigned int>*>(nullptr), static_cast<array<unsigned long>*>(nullptr),
        static_cast<array<long long>*>(nullptr), static_cast<array<double>*>(nullptr),
        static_cast<array<float>*>(nullptr), static_cast<array<char>*>(nullptr),
        static_cast<utility::string*>(nullptr), static_cast<array<utility::string>*>(nullptr));
    return result;
}

class ForcedType : public ::testing::TestWithParam<io_data_type> {};
INSTANTIATE_TEST_SUITE_P(Types,
                         ForcedType,
                         ::testing::Values(io_data_type{},
                                           io_data_type::scalar(types::i32),
                                           io_data_type::array_of(types::i32),
                                           io_data_type{types{99}, 7, 1, 5}),
                         [](auto const& row) { return "Type" + std::to_string(row.index); });

TEST_P(ForcedType, IsHeldByEveryAlternativeInTheSamples) {
    std::vector<bool> seen(34);
    for (io_value const& value : samples_of(GetParam())) {
        seen[static_cast<std::size_t>(value.index())] = true;
    }
    EXPECT_EQ(seen, std::vector<bool>(34, true));
}

TEST_P(ForcedType, LetsTheLeftAlternativeDecide) {
    std::vector<io_value> const samples = samples_of(GetParam());
    for (io_value const& left : samples) {
        for (io_value const& right : samples) {
            bool const expected = equal_stored(left, right);
            ASSERT_EQ(left.equals_same_type(right), expected)
                << left << " (" << left.index() << ") and " << right << " (" << right.index()
                << ")";
            ASSERT_EQ(left == right, expected) << left << " and " << right;
            ASSERT_EQ(left != right, !expected) << left << " and " << right;
        }
    }
}

// --- single sentences ---

io_value stated(io_value const& value) {
    return with_type({types{99}, 7, 1, 5}, value);
}

bool same_when_stated(io_value const& left, io_value const& right) {
    return stated(left).equals_same_type(stated(right));
}

TEST(ForcedTypePair, OfNothingAndAnythingIsEqualFromTheEmptySide) {
    for (io_value const& other : natural_samples())
        EXPECT_TRUE(same_when_stated(io_value(), other)) << other;
    EXPECT_FALSE(same_when_stated(5, io_value()));
    EXPECT_TRUE(same_when_stated(0, io_value()));
    EXPECT_TRUE(same_when_stated(0.0, io_value()));
    EXPECT_FALSE(same_when_stated("", io_value()));
    EXPECT_FALSE(same_when_stated(array<int>(), io_value()));
}

TEST(ForcedTypePair, OfObjectsIsNeverEqual) {
    for (io_value const& other : natural_samples()) {
        EXPECT_FALSE(same_when_stated(io_object(), other)) << other;
        EXPECT_FALSE(same_when_stated(array<io_object>(), other)) << other;
        bool const is_empty = other.index() == 0;
        if (other.index() < 1 || other.index() > 14) {
            EXPECT_EQ(same_when_stated(other, io_object()), is_empty) << other;
            EXPECT_EQ(same_when_stated(other, array<io_object>()), is_empty) << other;
        }
    }
}

TEST(ForcedTypePair, OfIntAndLongIsComparedByValue) {
    EXPECT_TRUE(io_value(5) == io_value(5L));
    EXPECT_TRUE(io_value(-5L) == io_value(-5));
    EXPECT_TRUE(io_value(5UL) == io_value(5U));
    EXPECT_FALSE(io_value(5) == io_value(6L));
    if constexpr (sizeof(long) == 8) {
        long const wide = static_cast<long>(0x100000005LL);
        EXPECT_FALSE(io_value(5) == io_value(wide));
        EXPECT_FALSE(io_value(wide) == io_value(5));
        EXPECT_FALSE(io_value(-1) == io_value(static_cast<long>(0xFFFFFFFFLL)));
        auto const unsigned_wide = static_cast<unsigned long>(0x100000005ULL);
        EXPECT_FALSE(io_value(5U) == io_value(unsigned_wide));
        EXPECT_FALSE(io_value(unsigned_wide) == io_value(5U));
    }
}

TEST(ForcedTypePair, OfArraysOfIntAndLongIsComparedByValue) {
    EXPECT_TRUE(io_value(array<int>{5, -6}) == io_value(array<long>{5, -6}));
    EXPECT_TRUE(io_value(array<long>{5, -6}) == io_value(array<int>{5, -6}));
    EXPECT_TRUE(io_value(array<unsigned int>{5}) == io_value(array<unsigned long>{5}));
    EXPECT_FALSE(io_value(array<long>{5, 6}) == io_value(array<int>{5, 7}));
    EXPECT_FALSE(io_value(array<long>{5, 6}) == io_value(array<int>{5}));
    EXPECT_FALSE(io_value(array<int>{5, 0}) == io_value(array<long>{5}));
    if constexpr (sizeof(long) == 8) {
        array<long> const wide{static_cast<long>(0x100000005LL)};
        EXPECT_FALSE(io_value(array<int>{5}) == io_value(wide));
        EXPECT_FALSE(io_value(wide) == io_value(array<int>{5}));
    }
}

TEST(ForcedTypePair, OfArraysOfOneWidthIsComparedAsTheLeftOneIs) {
    float const one = 1.0F;
    int bits = 0;
    std::memcpy(&bits, &one, sizeof bits);
    EXPECT_TRUE(same_when_stated(array<int>{bits}, array<float>{one}));
    EXPECT_TRUE(same_when_stated(array<float>{one}, array<int>{bits}));
    int const negative_zero = -2147483647 - 1;
    EXPECT_TRUE(same_when_stated(array<float>{0.0F}, array<int>{negative_zero}));
    EXPECT_FALSE(same_when_stated(array<int>{negative_zero}, array<float>{0.0F}));
    EXPECT_TRUE(same_when_stated(array<char>{'\xC8'}, array<signed char>{-56}));
    EXPECT_TRUE(same_when_stated(array<unsigned char>{1}, array<bool>{true}));
}

TEST(ForcedTypePair, OfArraysOfOtherWidthsIsEqualOnlyWithoutElements) {
    EXPECT_FALSE(same_when_stated(array<int>{0}, array<short>{0}));
    EXPECT_FALSE(same_when_stated(array<int>{0}, array<short>{0, 0}));
    EXPECT_FALSE(same_when_stated(array<short>{0, 0}, array<int>{0}));
    EXPECT_TRUE(same_when_stated(array<int>(), array<short>()));
    EXPECT_TRUE(same_when_stated(array<double>(), array<utility::string>()));
    EXPECT_TRUE(same_when_stated(array<io_value>(), array<bool>()));
    EXPECT_FALSE(same_when_stated(array<io_value>(), array<io_object>()));
    EXPECT_FALSE(same_when_stated(array<io_value>::of("a"), array<utility::string>{"a"}));
}

TEST(ForcedTypePair, OfATextOrArrayAndAnotherKindIsUnequal) {
    EXPECT_FALSE(same_when_stated("5", 5));
    EXPECT_FALSE(same_when_stated(utility::string(), 0));
    EXPECT_FALSE(same_when_stated("", array<char>()));
    EXPECT_FALSE(same_when_stated(array<char>(), ""));
    EXPECT_FALSE(same_when_stated(array<int>{5}, 5));
}

} // namespace
} // namespace whole_values
