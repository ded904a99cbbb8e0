#include "deep_stack.hpp"
#include "equality_oracle.hpp"
#include "equality_samples.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

/// \file
/// Arrays of values in arrays of values: each pair of elements is looked at in both directions,
/// which must not double the work on every level.

namespace whole_values {
namespace {

/// `value` in arrays of one element, whose type tells the level and the side.
io_value nested(io_value value, int depth, unsigned int side) {
    for (int level = 0; level < depth; ++level) {
        array<io_value> wrapper(1);
        wrapper[0] = std::move(value);
        value = io_value(io_data_type{types{50}, static_cast<unsigned long long>(level), 2, side},
                         std::move(wrapper));
    }
    return value;
}

TEST(NestedEquality, EndsSoonWhereTheInnermostElementsDiffer) {
    io_value const left = nested(1, 200, 1);
    io_value const right = nested(2, 200, 2);
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
    EXPECT_FALSE(left.equals(right));
    EXPECT_FALSE(right.equals(left));
}

TEST(NestedEquality, EndsSoonWhereTheInnermostElementsAreEqual) {
    EXPECT_TRUE(nested(5, 200, 1) == nested("5", 200, 2));
    EXPECT_TRUE(nested(5, 200, 1).equals(nested("5", 200, 2)));
    EXPECT_FALSE(nested(5, 200, 1) != nested("5", 200, 2));
}

TEST(NestedEquality, EndsSoonWhereOnlyOneDirectionHolds) {
    EXPECT_TRUE(nested(0, 200, 1) == nested("", 200, 2));
    EXPECT_TRUE(nested("", 200, 1) == nested(0, 200, 2));
    EXPECT_TRUE(nested("", 200, 1).equals(nested(0, 200, 2)));
}

TEST(NestedEquality, EndsSoonWhereTypesDifferOnSomeLevelsOnly) {
    io_value left = nested(1, 60, 1);
    io_value right = nested(2, 60, 1);
    left = nested(std::move(left), 60, 1);
    right = nested(std::move(right), 60, 2);
    left = nested(std::move(left), 60, 1);
    right = nested(std::move(right), 60, 1);
    EXPECT_FALSE(left == right);
    EXPECT_FALSE(right == left);
}

TEST(NestedEquality, EndsSoonAmongSiblings) {
    io_value left = 1;
    io_value right = 2;
    for (unsigned int level = 0; level < 60; ++level) {
        left = io_value(io_data_type{types{50}, 0, 2, 1}, array<io_value>::of(3, std::move(left)));
        right =
            io_value(io_data_type{types{50}, 0, 2, 2}, array<io_value>::of("3", std::move(right)));
    }
    EXPECT_FALSE(left == right);
    EXPECT_FALSE(right == left);
}

TEST(NestedEquality, ReachesTenThousandLevels) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value const left = nested("innermost", 10000, 1);
        io_value const twin = nested("innermost", 10000, 1);
        EXPECT_TRUE(left == twin);
        EXPECT_TRUE(left == nested("innermost", 10000, 2));
        EXPECT_FALSE(left == nested("other", 10000, 2));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

// An empty value and one of the all-zero type are equal from one side only; where the arrays around
// them differ in type, one side is enough.
TEST(NestedEquality, KeepsBothDirectionsApart) {
    std::vector<io_value> corners{io_value(), io_value(io_data_type(), 5), io_value(5), io_value(0),
                                  io_value(io_data_type::scalar(types::i32), nullptr)};
    for (int level = 0; level < 2; ++level) {
        std::vector<io_value> next = corners;
        for (io_value const& each : corners) {
            for (unsigned int const side : {1U, 2U}) {
                next.push_back(
                    io_value(io_data_type{types::empty, 0, 2, side}, array<io_value>::of(each)));
                next.push_back(io_value(io_data_type{types::empty, 0, 2, side},
                                        array<io_value>::of(corners[1], each)));
                next.push_back(io_value(io_data_type{types::empty, 0, 2, side},
                                        array<io_value>::of(io_value(), each)));
            }
        }
        corners = std::move(next);
    }
    for (io_value const& left : corners) {
        for (io_value const& right : corners) {
            ASSERT_EQ(left == right, equal_by_rules(left, right)) << left << " and " << right;
            ASSERT_EQ(left.equals(right), equals_by_rules(left, right)) << left << " and " << right;
            ASSERT_NE(left == right, left != right) << left << " and " << right;
        }
    }
}

} // namespace
} // namespace whole_values
