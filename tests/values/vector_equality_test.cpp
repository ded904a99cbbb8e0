#include <tavi/ioapi/v2/io_value.hpp>

#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

// Arrays of numbers are compared several elements at a time, and what is left over one by one. No
// place and no length may make a difference to what is equal.

namespace whole_values {
namespace {

using tavi::ioapi::v2::io_value;
namespace compared = tavi::ioapi::v2::utility;

constexpr unsigned int compared_lengths[] = {1, 2, 3, 4, 5, 7, 8, 9, 63, 1025};

/// 1, 2, 3 and so on, which every kind of number of 16 bits or more holds.
template <class T>
compared::array<T> ascending(unsigned int length) {
    compared::array<T> numbers(length);
    for (unsigned int i = 0; i < length; ++i) numbers[i] = static_cast<T>(i + 1);
    return numbers;
}

/// `length` ascending numbers, but for one.
template <class T>
io_value ascending_but(unsigned int length, unsigned int place, T other) {
    auto numbers = ascending<T>(length);
    numbers[place] = other;
    return io_value(std::move(numbers));
}

std::string place_of(unsigned int length, unsigned int place) {
    return std::to_string(place) + " of " + std::to_string(length);
}

/// The first and the last places of all, which include each one of a step and of the rest behind.
std::vector<unsigned int> compared_places(unsigned int length) {
    std::vector<unsigned int> places;
    for (unsigned int i = 0; i < length; ++i) {
        if (i < 9 || i + 9 >= length) places.push_back(i);
    }
    return places;
}

/// By the kinds of the elements on the left and on the right.
template <class Kinds>
class LongArraysInEquality : public ::testing::Test {};
using compared_kinds = ::testing::Types<std::pair<double, double>,
                                        std::pair<float, float>,
                                        std::pair<int, int>,
                                        std::pair<int, double>,
                                        std::pair<double, int>,
                                        std::pair<float, double>,
                                        std::pair<double, short>,
                                        std::pair<unsigned int, long long>>;
TYPED_TEST_SUITE(LongArraysInEquality, compared_kinds);

TYPED_TEST(LongArraysInEquality, AreEqualWhereAllNumbersAre) {
    for (unsigned int const length : compared_lengths) {
        io_value const left(ascending<typename TypeParam::first_type>(length));
        io_value const right(ascending<typename TypeParam::second_type>(length));
        EXPECT_TRUE(left == right) << length;
        EXPECT_FALSE(left != right) << length;
    }
}

TYPED_TEST(LongArraysInEquality, DifferByOneNumberWhereverItStands) {
    using second = typename TypeParam::second_type;
    for (unsigned int const length : compared_lengths) {
        io_value const left(ascending<typename TypeParam::first_type>(length));
        for (unsigned int const place : compared_places(length)) {
            io_value const right = ascending_but<second>(length, place, second{0});
            EXPECT_FALSE(left == right) << place_of(length, place);
            EXPECT_FALSE(right == left) << place_of(length, place);
        }
    }
}

TEST(LongArraysOfDoubles, WithANumberThatIsNoneEqualNothing) {
    double const none = std::numeric_limits<double>::quiet_NaN();
    for (unsigned int const length : compared_lengths) {
        for (unsigned int const place : compared_places(length)) {
            io_value const left = ascending_but(length, place, none);
            EXPECT_FALSE(left == ascending_but(length, place, none)) << place_of(length, place);
            EXPECT_FALSE(io_value(ascending<int>(length)) == left) << place_of(length, place);
        }
    }
}

TEST(LongArraysOfDoubles, DoNotTellTheTwoZeros) {
    for (unsigned int const length : compared_lengths) {
        for (unsigned int const place : compared_places(length)) {
            io_value const left = ascending_but(length, place, 0.0);
            EXPECT_TRUE(left == ascending_but(length, place, -0.0)) << place_of(length, place);
            EXPECT_TRUE(ascending_but(length, place, 0) == ascending_but(length, place, -0.0))
                << place_of(length, place);
        }
    }
}

} // namespace
} // namespace whole_values
