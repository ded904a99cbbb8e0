#include "endurance/growth.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// A run of a day has 24 rounds. What leaks in it is to be found, however seldom it does.

namespace {

using endurance::growth;

constexpr std::size_t rounds_of_a_day = 24;
constexpr std::size_t mib = std::size_t{1} << 20;

using count_by_round = std::size_t (*)(std::size_t round);

/// Bytes and descriptors on top of what a round begins with, by its number from 0 on.
struct watched_process {
    char const* name;
    count_by_round heap;
    count_by_round descriptors;
    bool grows_on_heap;
    bool grows_in_descriptors;
};

std::size_t nothing_more(std::size_t) {
    return 0;
}

growth watched_over_a_day(watched_process const& process) {
    growth held;
    for (std::size_t round = 0; round < rounds_of_a_day; ++round) {
        held.look({10 + process.descriptors(round), 1, 100'000 + process.heap(round)});
    }
    return held;
}

constexpr watched_process watched_processes[] = {
    {"steady", nothing_more, nothing_more, false, false},
    {"warming_up",
     [](std::size_t round) -> std::size_t { return round < 4 ? round * mib : 3 * mib; },
     [](std::size_t round) -> std::size_t { return round < 4 ? round : 3; }, false, false},
    {"unsteady_by_what_the_allocator_hands_out",
     [](std::size_t round) -> std::size_t { return round % 3 * 512; }, nothing_more, false, false},
    {"falling", [](std::size_t round) -> std::size_t { return mib - round * 1000; }, nothing_more,
     false, false},
    {"leaking_in_every_round", [](std::size_t round) -> std::size_t { return round * mib; },
     nothing_more, true, false},
    {"leaking_little_in_every_round", [](std::size_t round) -> std::size_t { return round * 64; },
     nothing_more, true, false},
    {"leaking_in_all_rounds_but_one",
     [](std::size_t round) -> std::size_t { return (round < 12 ? round : round - 1) * mib; },
     nothing_more, true, false},
    {"leaking_in_every_other_round",
     [](std::size_t round) -> std::size_t { return round / 2 * 128; }, nothing_more, true, false},
    {"leaking_once", [](std::size_t round) -> std::size_t { return round < 15 ? 0 : 2000; },
     nothing_more, true, false},
    {"leaking_in_the_last_round",
     [](std::size_t round) -> std::size_t { return round < 23 ? 0 : 2000; }, nothing_more, true,
     false},
    {"leaking_a_descriptor_in_the_last_round", nothing_more,
     [](std::size_t round) -> std::size_t { return round < 23 ? 0 : 1; }, false, true},
    {"holding_a_descriptor_for_a_round", nothing_more,
     [](std::size_t round) -> std::size_t { return round == 12 ? 1 : 0; }, false, true},
};

class growth_of : public ::testing::TestWithParam<watched_process> {};

TEST_P(growth_of, a_process_is_found_where_there_is_some) {
    auto const held = watched_over_a_day(GetParam());
    EXPECT_EQ(held.of_heap(), GetParam().grows_on_heap) << held.bytes();
    EXPECT_EQ(held.of_descriptors(), GetParam().grows_in_descriptors);
}

INSTANTIATE_TEST_SUITE_P(by_kind,
                         growth_of,
                         ::testing::ValuesIn(watched_processes),
                         [](auto const& tested) { return std::string(tested.param.name); });

TEST(growth, cannot_be_told_of_rounds_that_only_warm_up) {
    growth held;
    for (int round = 0; round < 4; ++round) held.look({10, 1, 100'000});
    EXPECT_TRUE(held.of_heap());
    EXPECT_TRUE(held.of_descriptors());
    held.look({10, 1, 100'000});
    EXPECT_FALSE(held.of_heap());
    EXPECT_FALSE(held.of_descriptors());
}

/// Looks after each of 24 rounds.
growth watched_at_work(std::function<void(std::size_t)> const& work) {
    growth held;
    for (std::size_t round = 0; round < rounds_of_a_day; ++round) {
        work(round);
        held.look();
    }
    return held;
}

TEST(growth, of_this_process_is_none_where_all_is_given_back) {
    auto const held = watched_at_work([](std::size_t round) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < 10 * round; ++i) texts.emplace_back(i, 'x');
    });
    EXPECT_FALSE(held.of_heap()) << held.bytes();
    EXPECT_FALSE(held.of_descriptors());
}

TEST(growth, of_this_process_is_what_one_round_of_many_keeps) {
    std::vector<std::string> kept;
    auto const held = watched_at_work([&](std::size_t round) {
        if (round == 20) kept.emplace_back(2000, 'x');
    });
    EXPECT_TRUE(held.of_heap());
    EXPECT_GE(held.bytes(), 2000U);
    EXPECT_FALSE(held.of_descriptors());
}

} // namespace
