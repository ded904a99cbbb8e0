#include "endurance/file_days.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

// The long run in short: ./dev endurance takes 24 hours.

namespace {

TEST(simulated_files, are_delivered_as_they_are_and_with_every_change_that_stands) {
    auto const figures = endurance::watch_files_for(std::chrono::minutes(10), 1);
    EXPECT_EQ(figures.wrong.words(), std::vector<std::string>());
    EXPECT_EQ(figures.missed, 0U);
    EXPECT_EQ(figures.polls, 600U);
    EXPECT_GT(figures.delivered, 0U);
    EXPECT_GT(figures.read, 0U);
    for (std::size_t i = 1; i < endurance::mishap_count; ++i) {
        EXPECT_GE(figures.met[i], 1U) << endurance::mishap_names[i];
    }
    EXPECT_FALSE(figures.held.of_descriptors());
    EXPECT_FALSE(figures.held.of_heap()) << figures.held.bytes();
}

} // namespace
