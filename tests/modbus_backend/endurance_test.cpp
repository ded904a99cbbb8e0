#include "endurance/restarts.hpp"
#include "endurance/simulated_days.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

// The long runs in short: ./dev endurance takes 1,000 restarts and 24 hours.

namespace {

using endurance::watch_for;
using findings_in_words = std::vector<std::string>;

TEST(restarted_controller, has_all_that_was_told_to_be_written_and_its_host_gets_the_newest) {
    auto const figures = endurance::restart(10, 1, BACKEND_PATH);
    EXPECT_EQ(figures.wrong.words(), findings_in_words());
    EXPECT_EQ(figures.lost, 0U);
    EXPECT_EQ(figures.restarts, 10U);
    EXPECT_GE(figures.told, 10U * 4U);
    EXPECT_GE(figures.failed, 10U * 4U);
    EXPECT_GE(figures.delivered, 10U * 4U);
    EXPECT_FALSE(figures.held.of_descriptors());
    EXPECT_FALSE(figures.held.of_heap()) << figures.held.bytes();
}

class simulated_minutes : public ::testing::TestWithParam<unsigned int> {};

TEST_P(simulated_minutes, deliver_every_change_that_stands_and_keep_the_intervals) {
    auto const figures = watch_for(std::chrono::minutes(10), GetParam());
    EXPECT_EQ(figures.wrong.words(), findings_in_words());
    EXPECT_EQ(figures.missed, 0U);
    EXPECT_EQ(figures.requests, figures.requests_due);
    EXPECT_EQ(figures.connections, figures.connections_due);
    for (auto const count : figures.met) EXPECT_GE(count, 1U);
    EXPECT_GT(figures.delivered, 0U);
    EXPECT_FALSE(figures.held.of_descriptors());
    EXPECT_FALSE(figures.held.of_heap()) << figures.held.bytes();
}

INSTANTIATE_TEST_SUITE_P(by_seed, simulated_minutes, ::testing::Range(1U, 3U));

} // namespace
