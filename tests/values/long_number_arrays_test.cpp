#include <tavi/ioapi/v2/ioapi.hpp>

#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

/// \file
/// Arrays of numbers are worked on several elements at once, in steps and blocks. Whatever their
/// lengths are, each element counts by itself: none may land in the place of another or go unseen.

namespace long_number_arrays {
namespace {

namespace v2 = tavi::ioapi::v2;
using v2::io_error;
using v2::io_value;
using v2::utility::array;

/// Two kinds of element, and twice a number of the first that the second does not hold; 0 where it
/// holds them all.
template <class From, class To, long long TwiceMisfit = 0>
struct element_pair {
    using from = From;
    using to = To;
    static constexpr bool has_misfit = TwiceMisfit != 0;
    static constexpr From misfit() {
        return static_cast<From>(static_cast<double>(TwiceMisfit) / 2);
    }
};

using element_pairs = ::testing::Types<element_pair<double, int, 1>,
                                       element_pair<double, short, 3>,
                                       element_pair<float, int, 5>,
                                       element_pair<double, float>,
                                       element_pair<int, short, 80000>,
                                       element_pair<int, unsigned int, -2>,
                                       element_pair<unsigned int, int, 6000000000>,
                                       element_pair<long long, int, 6000000000>,
                                       element_pair<int, float, 40000002>,
                                       element_pair<short, unsigned char, 600>,
                                       element_pair<unsigned char, signed char, 256>,
                                       element_pair<int, double>,
                                       element_pair<double, double>,
                                       element_pair<float, double>,
                                       element_pair<int, long long>,
                                       element_pair<short, int>>;

struct pair_names {
    template <class Pair>
    static std::string GetName(int index) {
        return "pair" + std::to_string(index);
    }
};

// Around the steps of vectors, around the length from which wide ones are asked for, and around one
// block and two.
constexpr unsigned int lengths[] = {0,  1,  2,  3,  4,    5,    7,    8,    9,
                                    63, 64, 65, 67, 1023, 1024, 1025, 2047, 2050};

/// No two neighbours are alike, and every kind of element holds all.
template <class T>
T number_at(unsigned int place) {
    return static_cast<T>((place * 7 + 3) % 101);
}

template <class T>
array<T> numbers(unsigned int length) {
    array<T> made(length);
    for (unsigned int i = 0; i < length; ++i) made[i] = number_at<T>(i);
    return made;
}

/// All places of a short array; in a long one those around its start, its blocks and its end.
std::vector<unsigned int> places_of(unsigned int length) {
    std::vector<unsigned int> places;
    for (unsigned int i = 0; i < length; ++i) {
        if (length <= 67 || i < 4 || i % 1024 >= 1020 || i % 1024 < 4 || i + 4 >= length) {
            places.push_back(i);
        }
    }
    return places;
}

template <class Pair>
class LongNumberArrays : public ::testing::Test {
protected:
    static v2::io_data_type target_type() {
        return io_value(array<typename Pair::to>()).data_type();
    }
};
TYPED_TEST_SUITE(LongNumberArrays, element_pairs, pair_names);

TYPED_TEST(LongNumberArrays, ConvertEachElementInItsOwnPlace) {
    using from = typename TypeParam::from;
    using to = typename TypeParam::to;
    for (unsigned int const length : lengths) {
        io_value const value(numbers<from>(length));
        auto const converted = value.as<array<to>>();
        ASSERT_EQ(converted.size(), length);
        for (unsigned int i = 0; i < length; ++i) {
            ASSERT_EQ(converted[i], number_at<to>(i)) << i << " of " << length;
        }
        EXPECT_TRUE(value.converts_to(this->target_type())) << length;
    }
}

TYPED_TEST(LongNumberArrays, AreRefusedForOneMisfitWhereverItStands) {
    if constexpr (TypeParam::has_misfit) {
        using from = typename TypeParam::from;
        using to = typename TypeParam::to;
        for (unsigned int const length : lengths) {
            for (unsigned int const place : places_of(length)) {
                array<from> elements = numbers<from>(length);
                elements[place] = TypeParam::misfit();
                io_value const value(std::move(elements));
                io_error error;
                EXPECT_TRUE(value.as<array<to>>(error).empty());
                ASSERT_EQ(error, v2::io_errc::value_too_large) << place << " of " << length;
                ASSERT_FALSE(value.converts_to(this->target_type())) << place << " of " << length;
            }
        }
    }
}

TYPED_TEST(LongNumberArrays, AreEqualWhereAllElementsAre) {
    for (unsigned int const length : lengths) {
        io_value const left(numbers<typename TypeParam::from>(length));
        io_value const right(numbers<typename TypeParam::to>(length));
        EXPECT_TRUE(left == right) << length;
        EXPECT_TRUE(right == left) << length;
        EXPECT_TRUE(left.equals(right)) << length;
        EXPECT_TRUE(right.equals(left)) << length;
    }
}

TYPED_TEST(LongNumberArrays, AreUnequalForOneElementWhereverItStands) {
    for (unsigned int const length : lengths) {
        for (unsigned int const place : places_of(length)) {
            io_value const left(numbers<typename TypeParam::from>(length));
            auto elements = numbers<typename TypeParam::to>(length);
            elements[place] = static_cast<typename TypeParam::to>(elements[place] + 1);
            io_value const right(std::move(elements));
            ASSERT_FALSE(left == right) << place << " of " << length;
            ASSERT_FALSE(right == left) << place << " of " << length;
            ASSERT_FALSE(left.equals(right)) << place << " of " << length;
            ASSERT_FALSE(right.equals(left)) << place << " of " << length;
        }
    }
}

TEST(LongArrayOfReals, ClampsOneElementAndLeavesTheOthersAsTheyAre) {
    for (unsigned int const length : lengths) {
        for (unsigned int const place : places_of(length)) {
            auto elements = numbers<double>(length);
            elements[place] = -3e9;
            auto const converted = io_value(std::move(elements)).as<array<int>>();
            ASSERT_EQ(converted.size(), length);
            for (unsigned int i = 0; i < length; ++i) {
                int const expected =
                    i == place ? std::numeric_limits<int>::min() : number_at<int>(i);
                ASSERT_EQ(converted[i], expected) << i << ", " << place << " of " << length;
            }
        }
    }
}

TEST(LongArrayOfReals, IsUnequalForOneNaNWhereverItStands) {
    for (unsigned int const length : lengths) {
        for (unsigned int const place : places_of(length)) {
            auto elements = numbers<double>(length);
            elements[place] = std::numeric_limits<double>::quiet_NaN();
            io_value const value(std::move(elements));
            ASSERT_FALSE(value == io_value(value)) << place << " of " << length;
            ASSERT_FALSE(value == io_value(numbers<int>(length))) << place << " of " << length;
        }
    }
}

} // namespace
} // namespace long_number_arrays
