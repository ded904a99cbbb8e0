#include <tavi/ioapi/v2/browse_result.hpp>

#include "sample_nodes.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <new>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using browsing::node;
using browsing::node_class;
using id = plc_identifier;
using results_test::names_in;
using results_test::numbered_node;
using results_test::numbered_nodes;
using results_test::texted_node;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::by_word;
using test_support::live_blocks;

node named_node(id identifier, id browse_name) {
    node made;
    made.identifier = std::move(identifier);
    made.browse_name = std::move(browse_name);
    return made;
}

TEST(BrowseResult, FindsNodesByEitherIdentifier) {
    browse_result result;
    result.push(named_node(id("a"), id("x", 1)));
    result.push(named_node(id(5), id("y")));
    result.push(named_node(id("b", 2), id()));
    EXPECT_EQ(result.get_node(id("a")), result.begin());
    EXPECT_EQ(result.get_node(id(5)), result.begin() + 1);
    EXPECT_EQ(result.get_node(id("b", 2)), result.begin() + 2);
    EXPECT_EQ(result.get_node_by_browse_name(id("x", 1)), result.begin());
    EXPECT_EQ(result.get_node_by_browse_name(id("y")), result.begin() + 1);
    EXPECT_EQ(result.get_node_by_browse_name(id()), result.begin() + 2);
}

TEST(BrowseResult, FindsTheFirstOfTwoNodesWithEqualIdentifiers) {
    browse_result result;
    result.push(named_node(id("other"), id("other")));
    result.push(named_node(id("a"), id("x")));
    result.push(named_node(id("a"), id("x")));
    EXPECT_EQ(result.get_node(id("a")), result.begin() + 1);
    EXPECT_EQ(result.get_node_by_browse_name(id("x")), result.begin() + 1);
}

TEST(BrowseResult, FindsNoNodeByTheOtherIdentifier) {
    browse_result result;
    result.push(named_node(id("a"), id("x")));
    EXPECT_EQ(result.get_node(id("x")), nullptr);
    EXPECT_EQ(result.get_node_by_browse_name(id("a")), nullptr);
}

TEST(BrowseResult, FindsNoNodeThatDiffersInAPart) {
    browse_result result;
    result.push(named_node(id("a", 1), id("a", 1)));
    result.push(named_node(id(5), id(5)));
    for (auto const& absent : {id("a"), id("a", 2), id("A", 1), id(1, "a"), id("5"), id(6), id()}) {
        EXPECT_EQ(result.get_node(absent), nullptr) << absent;
        EXPECT_EQ(result.get_node_by_browse_name(absent), nullptr) << absent;
    }
}

TEST(BrowseResult, FindsNothingWhereThereIsNothing) {
    browse_result const result;
    EXPECT_EQ(result.get_node(id()), nullptr);
    EXPECT_EQ(result.get_node_by_browse_name(id()), nullptr);
}

TEST(BrowseResult, NeedsNoMemoryToSearch) {
    browse_result result;
    result.push(texted_node("a"));
    id const present("a");
    id const absent("b");
    allocation_counter const counter;
    EXPECT_NE(result.get_node(present), nullptr);
    EXPECT_EQ(result.get_node(absent), nullptr);
    EXPECT_EQ(result.get_node_by_browse_name(present), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

browse_result mixed_nodes() {
    browse_result result;
    result.push(texted_node("a", node_class::folder));
    result.push(texted_node("b", node_class::variable));
    result.push(texted_node("c", node_class{99}));
    result.push(texted_node("d", node_class::folder));
    result.push(texted_node("e", node_class::unspecified));
    return result;
}

struct class_row {
    node_class wanted;
    std::vector<std::string> names;
};

TEST(BrowseResult, GivesTheNodesOfAClassInOrder) {
    class_row const rows[] = {{node_class::folder, {"a", "d"}},
                              {node_class::variable, {"b"}},
                              {node_class{99}, {"c"}},
                              {node_class::unspecified, {"e"}}};
    auto const result = mixed_nodes();
    for (auto const& [wanted, names] : rows) {
        auto const found = result.get_nodes_by_class(wanted);
        std::vector<std::string> found_names;
        for (node const& each : found) {
            EXPECT_EQ(each.node_class, wanted);
            found_names.push_back(each.identifier.primary().text().str());
            EXPECT_EQ(each.description, "what is known of " + found_names.back());
        }
        EXPECT_EQ(found_names, names);
    }
}

TEST(BrowseResult, GivesNodesOfAClassThatAreItsOwnNoMore) {
    auto result = mixed_nodes();
    auto const found = result.get_nodes_by_class(node_class::variable);
    EXPECT_NE(found[0].description.data(), result.begin()[1].description.data());
    result.clear();
    EXPECT_EQ(found[0].description, "what is known of b");
}

TEST(BrowseResult, GivesANullArrayWhereNoNodeIsOfAClass) {
    auto const mixed = mixed_nodes();
    browse_result const empty;
    for (auto const* result : {&mixed, &empty}) {
        auto const names = names_in(*result);
        auto const found = result->get_nodes_by_class(node_class::type);
        EXPECT_EQ(found.size(), 0U);
        EXPECT_EQ(test_support::block_of(found), nullptr);
        EXPECT_EQ(names_in(*result), names);
    }
}

TEST(BrowseResult, NeedsOneListOnlyWhereNoNodeIsOfAClass) {
    auto const result = mixed_nodes();
    auto const before = live_blocks();
    allocation_counter const counter;
    EXPECT_TRUE(result.get_nodes_by_class(node_class::type).empty());
    EXPECT_EQ(counter.allocations(), 1U) << "room for all nodes";
    EXPECT_EQ(live_blocks(), before);
}

TEST(BrowseResult, AlignsTheArrayOfAClassByItsSize) {
    auto const small = static_cast<unsigned int>(4095 / sizeof(node));
    for (unsigned int const count : {1U, small, small + 1}) {
        auto const result = numbered_nodes(count);
        allocation_counter const counter;
        auto const found = result.get_nodes_by_class(node_class::variable);
        EXPECT_EQ(counter.allocations(), 2U) << "the list and the array";
        auto const call = test_support::last_aligned_allocation();
        EXPECT_EQ(call.block, found.begin());
        EXPECT_EQ(call.size, count * sizeof(node));
        EXPECT_EQ(call.alignment, count <= small ? 16U : 32U) << count;
    }
    EXPECT_EQ(small, by_word(28, 22));
}

// Of two matching nodes among three: the list, two blocks for each copy, the array, and two blocks
// again for each slot.
constexpr std::size_t before_the_slots = 1 + 2 * 2 + 1;
constexpr std::size_t for_the_slots = 2 * 2;

browse_result two_of_three() {
    browse_result result;
    result.push(texted_node("a"));
    result.push(texted_node("other", node_class::folder));
    result.push(texted_node("b"));
    return result;
}

TEST(BrowseResult, NeedsMemoryForTheNodesOfAClassTwice) {
    auto const result = two_of_three();
    allocation_counter const counter;
    { auto const found = result.get_nodes_by_class(node_class::variable); }
    EXPECT_EQ(counter.allocations(), before_the_slots + for_the_slots);
    EXPECT_EQ(counter.releases(), counter.allocations());
}

TEST(BrowseResult, IsUnchangedWhereTheNodesOfAClassCannotBeCollected) {
    auto const result = two_of_three();
    auto const before = live_blocks();
    for (std::size_t n = 1; n <= before_the_slots; ++n) {
        {
            allocation_failure const failure(n);
            EXPECT_THROW((void)result.get_nodes_by_class(node_class::variable), std::bad_alloc)
                << n;
            EXPECT_TRUE(failure.hit());
        }
        EXPECT_EQ(live_blocks(), before) << n;
    }
    EXPECT_EQ(names_in(result), (std::vector<std::string>{"a", "other", "b"}));
}

TEST(BrowseResultDeathTest, EndsTheProcessWhereTheNodesOfAClassCannotBePutIntoTheirSlots) {
    auto const result = two_of_three();
    for (std::size_t n = before_the_slots + 1; n <= before_the_slots + for_the_slots; ++n) {
        EXPECT_EXIT(
            {
                allocation_failure const failure(n);
                try {
                    (void)result.get_nodes_by_class(node_class::variable);
                } catch (...) { // it must not get out
                }
            },
            ::testing::KilledBySignal(SIGABRT), "terminate called.*std::bad_alloc")
            << n;
    }
}

} // namespace
