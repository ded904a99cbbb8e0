#include <tavi/ioapi/v2/browse_result.hpp>

#include "sample_nodes.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>
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
using test_support::impl_of;
using test_support::live_blocks;
using numbers = std::vector<unsigned long long>;

// A compiler must not see that both sides are one object.
browse_result& very_same(browse_result& result) {
    return result;
}

TEST(BrowseResult, StartsEmpty) {
    browse_result const result;
    EXPECT_EQ(result.size(), 0U);
    EXPECT_TRUE(result.empty());
    EXPECT_EQ(result.begin(), result.end());
    EXPECT_EQ(result.cbegin(), result.cend());
    EXPECT_NE(impl_of(result), nullptr);
}

TEST(BrowseResult, IsMadeOfDefaultNodes) {
    for (unsigned int const count : {0U, 1U, 3U}) {
        browse_result const result(count);
        EXPECT_EQ(result.size(), count);
        EXPECT_EQ(result.empty(), count == 0);
        for (node const& each : result) {
            EXPECT_EQ(static_cast<unsigned int>(each.node_class), 0U);
            EXPECT_EQ(each.identifier, plc_identifier());
            EXPECT_EQ(each.browse_name, plc_identifier());
            EXPECT_TRUE(each.description.empty());
            EXPECT_EQ(each.data_type, io_data_type());
        }
    }
}

TEST(BrowseResult, CopiesTheNodesOfAViewInOrder) {
    std::vector<node> nodes{texted_node("b"), texted_node("a"), texted_node("b")};
    browse_result const result(nodes);
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"b", "a", "b"}));
    EXPECT_NE(result.begin()->description.data(), nodes[0].description.data());
    nodes[0].description = "changed";
    EXPECT_EQ(result.begin()->description, "what is known of b");
}

TEST(BrowseResult, IsEmptyWhereItsViewIs) {
    browse_result const result{utility::data_view<node const>()};
    EXPECT_EQ(result.size(), 0U);
}

TEST(BrowseResult, IsNotMadeFromANumberByAccident) {
    static_assert(std::is_constructible_v<browse_result, unsigned int>);
    static_assert(!std::is_convertible_v<unsigned int, browse_result>);
    static_assert(!std::is_convertible_v<utility::data_view<node const>, browse_result>);
    static_assert(sizeof(browse_result) == sizeof(void*));
}

TEST(BrowseResult, IsOneRangeOfNodes) {
    auto result = numbered_nodes(3);
    auto const& constant = result;
    EXPECT_EQ(result.end() - result.begin(), 3);
    EXPECT_EQ(constant.begin(), result.begin());
    EXPECT_EQ(constant.end(), result.end());
    EXPECT_EQ(result.cbegin(), result.begin());
    EXPECT_EQ(result.cend(), result.end());
    result.begin()[1].description = "changed";
    EXPECT_EQ(constant.begin()[1].description, "changed");
    static_assert(std::is_same_v<decltype(constant.begin()), node const*>);
    static_assert(std::is_same_v<decltype(result.cbegin()), node const*>);
    static_assert(std::is_same_v<decltype(result.end()), node*>);
}

TEST(BrowseResult, SharesNothingWithItsCopy) {
    browse_result source;
    source.push(texted_node("a"));
    browse_result copy(source);
    EXPECT_EQ(names_in(copy), names_in(source));
    EXPECT_NE(impl_of(copy), impl_of(source));
    EXPECT_NE(copy.begin()->description.data(), source.begin()->description.data());
    copy.push(texted_node("b"));
    EXPECT_EQ(source.size(), 1U);
    source.clear();
    EXPECT_EQ(names_in(copy), (std::vector<std::string>{"a", "b"}));
}

TEST(BrowseResult, GivesItsContentUpWhenMoved) {
    auto source = numbered_nodes(2);
    void const* const impl = impl_of(source);
    node const* const first = source.begin();
    allocation_counter const counter;
    browse_result const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(target.begin(), first);
    EXPECT_EQ(numbers_in(target), (numbers{0, 1}));
    static_assert(std::is_nothrow_move_constructible_v<browse_result>);
    static_assert(std::is_nothrow_move_assignable_v<browse_result>);
}

TEST(BrowseResult, IsUsableAgainAfterItWasMovedFrom) {
    auto source = numbered_nodes(2);
    browse_result const taken(std::move(source));
    source = taken;
    EXPECT_EQ(numbers_in(source), (numbers{0, 1}));
    EXPECT_NE(impl_of(source), impl_of(taken));
    browse_result const taken_again(std::move(source));
    source = numbered_nodes(3);
    EXPECT_EQ(source.size(), 3U);
    source.push(numbered_node(9));
    EXPECT_EQ(source.size(), 4U);
}

TEST(BrowseResult, BecomesNullLikeItsSource) {
    auto source = numbered_nodes(2);
    browse_result const taken(std::move(source));
    browse_result const copy(source);
    EXPECT_EQ(impl_of(copy), nullptr);
    browse_result const moved(std::move(source));
    EXPECT_EQ(impl_of(moved), nullptr);
}

TEST(BrowseResult, LosesItsContentToAnAssignedNull) {
    for (bool const moving : {false, true}) {
        auto const before = live_blocks();
        std::optional<browse_result> source(std::in_place);
        { browse_result const taken(std::move(*source)); }
        auto target = numbered_nodes(2);
        if (moving) {
            target = std::move(*source);
        } else {
            target = *source;
        }
        EXPECT_EQ(impl_of(target), nullptr) << moving;
        EXPECT_EQ(live_blocks(), before) << moving;
        target = *source; // null to null
        EXPECT_EQ(impl_of(target), nullptr);
    }
}

TEST(BrowseResult, IsKeptWhenAssignedToItself) {
    auto result = numbered_nodes(2);
    void const* const impl = impl_of(result);
    node const* const first = result.begin();
    allocation_counter const counter;
    result = very_same(result);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(result), impl);
    EXPECT_EQ(result.begin(), first);
    EXPECT_EQ(numbers_in(result), (numbers{0, 1}));
}

TEST(BrowseResult, FreesItsOldContentWhenAnotherIsMovedIn) {
    auto const before = live_blocks();
    {
        auto target = numbered_nodes(2);
        auto source = numbered_nodes(3);
        void const* const impl = impl_of(source);
        auto const both = live_blocks();
        target = std::move(source);
        EXPECT_EQ(live_blocks(), both - 2) << "the private part and its nodes";
        EXPECT_EQ(impl_of(target), impl);
        EXPECT_EQ(impl_of(source), nullptr);
    }
    EXPECT_EQ(live_blocks(), before);
}

struct copied_sizes {
    unsigned int target;
    unsigned int room;
    unsigned int source;
};

class BrowseResultAssignment : public ::testing::TestWithParam<copied_sizes> {};

TEST_P(BrowseResultAssignment, CopiesAllAndReusesTheRoom) {
    auto const [size, room, other] = GetParam();
    browse_result source;
    for (unsigned int i = 0; i < other; ++i) source.push(texted_node("s" + std::to_string(i)));
    auto const before = live_blocks();
    {
        browse_result target;
        target.reserve(room);
        for (unsigned int i = 0; i < size; ++i) target.push(texted_node("t" + std::to_string(i)));
        void const* const impl = impl_of(target);
        node const* const block = target.begin();
        auto& result = target = source;
        EXPECT_EQ(&result, &target);
        EXPECT_EQ(names_in(target), names_in(source));
        EXPECT_EQ(impl_of(target), impl);
        EXPECT_EQ(target.begin() == block, other <= room);
        for (unsigned int i = 0; i < other; ++i) {
            EXPECT_EQ(target.begin()[i].description, source.begin()[i].description);
            EXPECT_NE(target.begin()[i].description.data(), source.begin()[i].description.data());
        }
    }
    EXPECT_EQ(live_blocks(), before);
}

INSTANTIATE_TEST_SUITE_P(Sizes,
                         BrowseResultAssignment,
                         ::testing::Values(copied_sizes{2, 2, 5},
                                           copied_sizes{2, 8, 5},
                                           copied_sizes{5, 8, 2},
                                           copied_sizes{3, 4, 3},
                                           copied_sizes{3, 4, 0},
                                           copied_sizes{0, 4, 4}),
                         [](auto const& row) {
                             return std::to_string(row.param.target) + "Of" +
                                    std::to_string(row.param.room) + "Take" +
                                    std::to_string(row.param.source);
                         });

} // namespace
