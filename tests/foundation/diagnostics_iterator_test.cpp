#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "foreign_list.hpp"
#include "listed_pairs.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::foreign_list;
using foundation_test::list_of;
using test_support::allocation_counter;
using log_lines = std::vector<std::string>;

TEST(DiagnosticsIterator, StepsThroughTheEntries) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    auto at = list.begin();
    EXPECT_TRUE(at != list.end());
    EXPECT_FALSE(at == list.end());
    EXPECT_EQ((*at).key, "a");
    EXPECT_EQ(*(*at).value.get_if<int>(), 1);
    EXPECT_EQ(&++at, &at);
    EXPECT_EQ((*at).key, "b");
    auto const before = at++;
    EXPECT_EQ((*before).key, "b");
    EXPECT_TRUE(at == list.end());
    EXPECT_FALSE(before == at);
}

TEST(DiagnosticsIterator, IsAnInputIterator) {
    using iterator = io_error_diagnostics::const_iterator;
    static_assert(
        std::is_same_v<std::iterator_traits<iterator>::iterator_category, std::input_iterator_tag>);
    static_assert(std::is_nothrow_move_constructible_v<iterator>);
    static_assert(std::is_nothrow_move_assignable_v<iterator>);
    auto const list = list_of({{"a", 1}, {"b", 2}, {"c", 3}});
    EXPECT_EQ(std::distance(list.begin(), list.end()), 3);
}

TEST(DiagnosticsIterator, EqualsThoseAtTheSameEntry) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    auto at = list.begin();
    EXPECT_TRUE(at == list.begin());
    EXPECT_FALSE(at != list.begin());
    ++at;
    EXPECT_TRUE(at != list.begin());
    EXPECT_TRUE(list.end() == list.end());
    EXPECT_TRUE(list.end() == io_error_diagnostics::const_iterator());
}

TEST(DiagnosticsIterator, IsCopiedWhereItStands) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    auto at = list.begin();
    auto copy = at;
    ++at;
    EXPECT_EQ((*copy).key, "a");
    copy = at;
    EXPECT_EQ((*copy).key, "b");
    ++at;
    EXPECT_EQ((*copy).key, "b");
    copy = at;
    EXPECT_TRUE(copy == list.end());
    copy = list.begin();
    EXPECT_EQ((*copy).key, "a");
}

TEST(DiagnosticsIterator, LeavesTheEndBehindWhenMoved) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    auto at = list.begin();
    auto taken = std::move(at);
    EXPECT_TRUE(at == list.end());
    EXPECT_EQ((*taken).key, "a");
    at = std::move(taken);
    EXPECT_TRUE(taken == list.end());
    EXPECT_EQ((*at).key, "a");
}

TEST(DiagnosticsIterator, CostsOneBlockUntilTheEnd) {
    auto const list = list_of({{"a", 1}, {"b", 2}});
    allocation_counter const counter;
    auto at = list.begin();
    EXPECT_EQ(counter.allocations(), 1U);
    ++at;
    EXPECT_EQ(counter.releases(), 0U);
    ++at;
    EXPECT_EQ(counter.releases(), 1U) << "it has given up its position";
    EXPECT_EQ(counter.allocations(), 1U);
}

TEST(DiagnosticsIterator, WalksTheListOfAnotherModuleInItsOwnOrder) {
    foreign_list foreign({{"z", io_value(1)}, {"a", io_value(2)}, {"z", io_value(3)}});
    io_error_diagnostics const handle(&foreign);
    EXPECT_EQ(foundation_test::pairs_in(handle),
              (foundation_test::number_pairs{{"z", 1}, {"a", 2}, {"z", 3}}));
    EXPECT_EQ(foreign.walks, 0);
}

TEST(DiagnosticsIterator, OfAnotherModuleIsClonedToCopyAndReleasedInTheEnd) {
    foreign_list foreign({{"a", io_value(1)}, {"b", io_value(2)}});
    io_error_diagnostics const handle(&foreign);
    {
        auto at = handle.begin();
        foreign.take_calls();
        auto const copy = at;
        EXPECT_EQ(foreign.take_calls(), (log_lines{"clone"}));
        EXPECT_TRUE(copy == at);
        EXPECT_EQ(foreign.take_calls(), (log_lines{"equal_to"}));
        ++at;
        EXPECT_EQ(foreign.take_calls(), (log_lines{"advance"}));
        ++at;
        EXPECT_EQ(foreign.take_calls(), (log_lines{"advance", "release"}));
        EXPECT_TRUE(at == handle.end());
        EXPECT_FALSE(copy == at);
        EXPECT_EQ(foreign.take_calls(), log_lines{}) << "the end needs no asking";
        EXPECT_EQ(foreign.walks, 1);
    }
    EXPECT_EQ(foreign.take_calls(), (log_lines{"release"}));
    EXPECT_EQ(foreign.walks, 0);
}

TEST(DiagnosticsIterator, OfAnEmptyListOfAnotherModuleIsTheEnd) {
    foreign_list foreign({});
    io_error_diagnostics const handle(&foreign);
    EXPECT_TRUE(handle.begin() == handle.end());
    EXPECT_EQ(foreign.walks, 0);
}

} // namespace
