#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "listed_pairs.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::list_of;
using foundation_test::number_pairs;
using foundation_test::pairs_in;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::count_survived_failures;
using test_support::live_blocks;

std::string const long_key = "m: a key that is longer than small buffers";

TEST(DiagnosticsMemory, DoublesWithTheEntries) {
    io_error_diagnostics_generic list;
    for (unsigned int size = 0; size < 70; ++size) {
        allocation_counter const counter;
        list.set(std::string(1, static_cast<char>(size)), 1);
        bool const full = (size & (size - 1)) == 0; // 0, 1, 2, 4, 8 ...
        EXPECT_EQ(counter.allocations(), full ? 1U : 0U) << "behind " << size << " entries";
        EXPECT_EQ(counter.releases(), full && size != 0 ? 1U : 0U) << size;
    }
}

TEST(DiagnosticsMemory, IsKeptByARemoval) {
    auto list = list_of({{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}});
    allocation_counter const counter;
    list.remove("b");
    list.remove("unknown");
    list.set("x", 5);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
}

TEST(DiagnosticsMemory, IsNotNeededToReplaceAScalar) {
    auto list = list_of({{long_key, 1}});
    allocation_counter const counter;
    list.set(long_key, 2);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(pairs_in(list), (number_pairs{{long_key, 2}}));
}

TEST(DiagnosticsMemory, OfAReplacedOrRemovedValueIsFreed) {
    io_error_diagnostics_generic list;
    list.set("a", 1);
    list.set("b", 1);
    auto const before = live_blocks();
    list.set("a", "a text");
    EXPECT_EQ(live_blocks(), before + 1);
    list.set("a", "another text");
    EXPECT_EQ(live_blocks(), before + 1);
    list.set("a", 2);
    EXPECT_EQ(live_blocks(), before);
    list.set("a", "a text");
    list.remove("a");
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsMemory, OfARemovedKeyIsFreed) {
    auto list = list_of({{"a", 1}, {"b", 2}, {"c", 3}}); // room for four
    auto const before = live_blocks();
    list.set(long_key, 4);
    EXPECT_EQ(live_blocks(), before + 1);
    list.remove(long_key);
    EXPECT_EQ(live_blocks(), before);
}

TEST(DiagnosticsMemory, IsNotNeededToAsk) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    allocation_counter const counter;
    EXPECT_EQ(list.size(), 2U);
    EXPECT_FALSE(list.has("a"));
    EXPECT_TRUE(list.has("c"));
    EXPECT_EQ(*list.get("a").get_if<int>(), 1);
    EXPECT_TRUE(list.get("c").empty());
    EXPECT_TRUE(list.end() == list.end());
    EXPECT_EQ(counter.allocations(), 0U);
}

// The entries before: with room left, and without.
class DiagnosticsWithoutMemory : public ::testing::TestWithParam<number_pairs> {};

TEST_P(DiagnosticsWithoutMemory, KeepTheOldEntriesWhereOneIsAdded) {
    auto list = list_of(GetParam());
    for (std::size_t n = 1;; ++n) {
        io_value value("a value");
        auto const before = live_blocks();
        bool raised = false;
        bool hit = false;
        {
            allocation_failure const failure(n);
            try {
                list.set(long_key, std::move(value));
            } catch (std::bad_alloc const&) {
                raised = true;
            }
            hit = failure.hit();
        }
        EXPECT_EQ(raised, hit) << "failure " << n;
        if (!hit) {
            EXPECT_GE(n, 2U) << "the key at least needs memory";
            EXPECT_TRUE(list.contains(long_key));
            EXPECT_EQ(list.size(), GetParam().size() + 1);
            break;
        }
        EXPECT_LE(live_blocks(), before) << "failure " << n;
        EXPECT_EQ(pairs_in(list), GetParam()) << "failure " << n;
        EXPECT_EQ(list.size(), GetParam().size());
    }
}

TEST_P(DiagnosticsWithoutMemory, KeepTheValueWhereItsCopyFails) {
    auto list = list_of(GetParam());
    list.set("m", "a text");
    {
        allocation_failure const failure(1);
        EXPECT_THROW((void)list.get("m"), std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
    EXPECT_EQ(*list.get("m").get_if<utility::string>(), "a text");
}

INSTANTIATE_TEST_SUITE_P(Entries,
                         DiagnosticsWithoutMemory,
                         ::testing::Values(number_pairs{},
                                           number_pairs{{"a", 1}},
                                           number_pairs{{"a", 1}, {"z", 2}},
                                           number_pairs{{"a", 1}, {"b", 2}, {"z", 3}},
                                           number_pairs{{"w", 1}, {"x", 2}, {"y", 3}, {"z", 4}},
                                           number_pairs{
                                               {"a", 1}, {"b", 2}, {"x", 3}, {"y", 4}, {"z", 5}}),
                         [](auto const& row) { return "Of" + std::to_string(row.param.size()); });

TEST(DiagnosticsWithoutMemory, DoNotComeToBe) {
    EXPECT_EQ(count_survived_failures([] { io_error_diagnostics_generic const list; }), 1);
}

TEST(DiagnosticsWithoutMemory, AreNotWalked) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    EXPECT_EQ(count_survived_failures([&] { (void)list.begin(); }), 1);
    EXPECT_EQ(count_survived_failures([&] { (void)list.contains("b"); }), 1);
    EXPECT_EQ(count_survived_failures([&] {
                  auto at = list.begin();
                  (void)at++;
              }),
              2);
    EXPECT_EQ(pairs_in(list), (number_pairs{{"a", 1}, {"b", 2}}));
}

} // namespace
