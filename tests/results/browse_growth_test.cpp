#include <tavi/ioapi/v2/browse_result.hpp>

#include "sample_nodes.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <new>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using browsing::node;
using results_test::names_in;
using results_test::numbered_node;
using results_test::numbered_nodes;
using results_test::numbers_in;
using results_test::texted_node;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::count_survived_failures;
using test_support::live_blocks;

// How many nodes can be pushed before the result takes another block.
unsigned int room_left(browse_result& result) {
    allocation_counter const counter;
    unsigned int pushed = 0;
    for (;; ++pushed) {
        result.push(node());
        if (counter.allocations() != 0) return pushed;
    }
}

TEST(BrowseGrowth, DoublesWithThePushes) {
    browse_result result;
    for (unsigned int size = 0; size < 70; ++size) {
        allocation_counter const counter;
        result.push(numbered_node(size));
        bool const full = (size & (size - 1)) == 0; // 0, 1, 2, 4, 8 ...
        EXPECT_EQ(counter.allocations(), full ? 1U : 0U) << "behind " << size << " nodes";
        EXPECT_EQ(counter.releases(), full && size != 0 ? 1U : 0U) << size;
    }
    EXPECT_EQ(result.size(), 70U);
    for (unsigned int i = 0; i < 70; ++i) {
        EXPECT_EQ(result.begin()[i].identifier, plc_identifier(i));
    }
}

TEST(BrowseGrowth, MovesTheNodes) {
    browse_result result;
    result.push(texted_node("a"));
    char const* const text = result.begin()->description.data();
    result.push(texted_node("b"));
    EXPECT_EQ(result.begin()->description.data(), text);
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "b"}));
}

TEST(BrowseGrowth, TakesTheNodeThatIsPushed) {
    browse_result result;
    auto pushed = texted_node("a");
    char const* const text = pushed.description.data();
    result.push(std::move(pushed));
    EXPECT_EQ(result.begin()->description.data(), text);
    auto const kept = texted_node("b");
    result.push(kept);
    EXPECT_EQ(kept.description, "what is known of b");
}

TEST(BrowseGrowth, PushesANodeOfItsOwn) {
    browse_result result;
    result.push(texted_node("a"));
    result.push(*result.begin());
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "a"}));
}

struct resized {
    unsigned int from;
    unsigned int to;
    unsigned int room; // as it is then
};

class BrowseResize : public ::testing::TestWithParam<resized> {};

// The room becomes the size and the larger of the size and what is missing.
TEST_P(BrowseResize, KeepsTheFirstNodesAndGrowsByTheRule) {
    auto const [from, to, room] = GetParam();
    auto result = browse_result(from);
    for (unsigned int i = 0; i < from; ++i) result.begin()[i] = numbered_node(i + 1);
    result.resize(to);
    ASSERT_EQ(result.size(), to);
    for (unsigned int i = 0; i < to; ++i) {
        EXPECT_EQ(result.begin()[i].identifier,
                  i < from ? plc_identifier(i + 1) : plc_identifier());
    }
    EXPECT_EQ(room_left(result), room - to);
}

INSTANTIATE_TEST_SUITE_P(Sizes,
                         BrowseResize,
                         ::testing::Values(resized{0, 0, 0},
                                           resized{0, 1, 1},
                                           resized{0, 5, 5},
                                           resized{4, 5, 8},
                                           resized{4, 8, 8},
                                           resized{4, 9, 9},
                                           resized{4, 20, 20},
                                           resized{4, 4, 4},
                                           resized{4, 1, 4},
                                           resized{4, 0, 4}),
                         [](auto const& row) {
                             return std::to_string(row.param.from) + "To" +
                                    std::to_string(row.param.to);
                         });

TEST(BrowseResize, DestroysTheNodesAtTheEnd) {
    browse_result result;
    for (auto const* name : {"a", "b", "c"}) result.push(texted_node(name));
    auto const before = live_blocks();
    result.resize(1);
    EXPECT_EQ(live_blocks(), before - 4) << "two blocks for each node";
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"a"}));
}

TEST(BrowseReserve, MakesRoomAndNoNodes) {
    auto result = numbered_nodes(2);
    result.reserve(10);
    EXPECT_EQ(result.size(), 2U);
    EXPECT_EQ(numbers_in(result), (std::vector<unsigned long long>{0, 1}));
    EXPECT_EQ(room_left(result), 8U);
}

TEST(BrowseReserve, NeverShrinks) {
    browse_result result;
    result.reserve(10);
    allocation_counter const counter;
    for (unsigned int const less : {10U, 9U, 1U, 0U}) result.reserve(less);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(room_left(result), 10U);
}

TEST(BrowseClear, DestroysTheNodesAndKeepsTheRoom) {
    browse_result result;
    for (auto const* name : {"a", "b", "c"}) result.push(texted_node(name));
    auto const before = live_blocks();
    result.clear();
    EXPECT_EQ(live_blocks(), before - 6);
    EXPECT_EQ(result.size(), 0U);
    EXPECT_EQ(result.begin(), result.end());
    allocation_counter const counter;
    for (unsigned int i = 0; i < 3; ++i) result.push(numbered_node(i));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(numbers_in(result), (std::vector<unsigned long long>{0, 1, 2}));
}

TEST(BrowseGrowth, StartsWithoutRoomBehindACopy) {
    auto source = numbered_nodes(3);
    source.reserve(20);
    browse_result copy(source);
    EXPECT_EQ(room_left(copy), 0U);
    browse_result sized(3);
    EXPECT_EQ(room_left(sized), 0U);
    std::vector<node> const nodes(3);
    browse_result viewed(nodes);
    EXPECT_EQ(room_left(viewed), 0U);
}

class BrowseWithoutMemory : public ::testing::Test {
protected:
    BrowseWithoutMemory() {
        result.push(texted_node("a"));
        result.push(texted_node("b"));
    }

    template <class Change>
    void expect_unchanged(Change change) {
        node const* const block = result.begin();
        auto const before = live_blocks();
        {
            allocation_failure const failure(1);
            EXPECT_THROW(change(), std::bad_alloc);
            EXPECT_TRUE(failure.hit());
        }
        EXPECT_EQ(live_blocks(), before);
        EXPECT_EQ(result.begin(), block);
        EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "b"}));
        EXPECT_EQ(result.begin()->description, "what is known of a");
    }

    browse_result result;
};

TEST_F(BrowseWithoutMemory, IsAsItWasAfterAPush) {
    expect_unchanged([this] { result.push(node()); });
}
TEST_F(BrowseWithoutMemory, IsAsItWasAfterAResize) {
    expect_unchanged([this] { result.resize(3); });
}
TEST_F(BrowseWithoutMemory, IsAsItWasAfterAReserve) {
    expect_unchanged([this] { result.reserve(3); });
}
TEST_F(BrowseWithoutMemory, IsAsItWasAfterItsCopy) {
    EXPECT_EQ(count_survived_failures([this] { browse_result const copy(result); }), 6)
        << "the private part, the nodes and two blocks for each";
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "b"}));
}
TEST_F(BrowseWithoutMemory, IsAsItWasWhereALargerOneIsAssigned) {
    browse_result source;
    for (auto const* name : {"x", "y", "z"}) source.push(texted_node(name));
    for (std::size_t n = 1; n <= 7; ++n) { // the new block, and two blocks for each node
        node const* const block = result.begin();
        auto const before = live_blocks();
        {
            allocation_failure const failure(n);
            EXPECT_THROW(result = source, std::bad_alloc) << n;
            EXPECT_TRUE(failure.hit());
        }
        EXPECT_EQ(live_blocks(), before) << n;
        EXPECT_EQ(result.begin(), block);
        EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "b"})) << n;
    }
    result = source;
    EXPECT_EQ(names_in(result), names_in(source));
}
TEST_F(BrowseWithoutMemory, DoesNotComeToBe) {
    EXPECT_EQ(count_survived_failures([] { browse_result const empty; }), 1);
    EXPECT_EQ(count_survived_failures([] { browse_result const sized(3); }), 2);
    std::vector<node> const nodes{texted_node("a"), node(), texted_node("b")};
    EXPECT_EQ(count_survived_failures([&] { browse_result const viewed(nodes); }), 6);
}

} // namespace
