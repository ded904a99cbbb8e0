#include "toy.hpp"

#include <gtest/gtest.h>

namespace {

TEST(Toy, TellsTheLargerOfTwoNumbers) {
    EXPECT_EQ(toy::larger(2, 3), 3);
    EXPECT_EQ(toy::larger(3, 2), 3);
    EXPECT_EQ(toy::larger(3, 3), 3);
}

TEST(Toy, TakesTenForLarge) {
    EXPECT_TRUE(toy::is_small(9));
    EXPECT_FALSE(toy::is_small(10));
}

TEST(Toy, ReadsADigit) {
    EXPECT_EQ(toy::first_digit("7"), 7);
}

TEST(Toy, TakesNoTextForZero) {
    EXPECT_EQ(toy::first_digit(nullptr), 0);
}

} // namespace
