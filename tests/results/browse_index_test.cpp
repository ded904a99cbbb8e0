#include <tavi/ioapi/v2/browse_result.hpp>

#include "sample_nodes.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using results_test::numbered_nodes;
using results_test::numbers_in;

constexpr unsigned int indices[] = {0, 1, 2, 3, 7, 1000, 14913080, 0xFFFFFFFFU};

// What is computed must not be taken for the address of a node, which is never null.
template <class Result>
std::uintptr_t address_at(Result& result, unsigned int index) {
    std::uintptr_t const volatile address = reinterpret_cast<std::uintptr_t>(&result[index]);
    return address;
}

std::uintptr_t expected_address(unsigned int index) {
    return static_cast<std::uintptr_t>(index) * sizeof(browsing::node);
}

TEST(BrowseResultIndex, GivesTheIndexTimesTheSizeOfANodeAsAnAddress) {
    auto result = numbered_nodes(3);
    auto const& constant = result;
    for (unsigned int const index : indices) {
        EXPECT_EQ(address_at(result, index), expected_address(index)) << index;
        EXPECT_EQ(address_at(constant, index), expected_address(index)) << index;
    }
    EXPECT_EQ(numbers_in(result), (std::vector<unsigned long long>{0, 1, 2}));
}

TEST(BrowseResultIndex, GivesTheSameForEveryResult) {
    browse_result empty;
    browse_result moved_from(2);
    browse_result const taken(std::move(moved_from));
    auto const& constant_moved_from = moved_from;
    for (unsigned int const index : indices) {
        EXPECT_EQ(address_at(empty, index), expected_address(index)) << index;
        EXPECT_EQ(address_at(moved_from, index), expected_address(index)) << index;
        EXPECT_EQ(address_at(constant_moved_from, index), expected_address(index)) << index;
    }
}

TEST(BrowseResultIndex, NeverGivesANodeOfTheResult) {
    auto result = numbered_nodes(2);
    EXPECT_NE(address_at(result, 0), reinterpret_cast<std::uintptr_t>(result.begin()));
    EXPECT_NE(address_at(result, 1), reinterpret_cast<std::uintptr_t>(result.begin() + 1));
}

TEST(BrowseResultIndex, LeavesNothingBehind) {
    auto result = numbered_nodes(2);
    auto const before = test_support::live_blocks();
    for (unsigned int const index : indices) (void)address_at(result, index);
    EXPECT_EQ(test_support::live_blocks(), before);
}

} // namespace
