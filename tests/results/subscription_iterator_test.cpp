#include <tavi/ioapi/v2/subscription_result.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "three_subscriptions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::impl_of;

class SubscriptionIterator : public results_test::three_subscriptions {};

TEST_F(SubscriptionIterator, StepsInOrder) {
    auto at = result.begin();
    EXPECT_EQ(at->aux_value, 3U);
    EXPECT_EQ(&++at, &at);
    EXPECT_EQ(at->aux_value, 5U);
    ++at;
    EXPECT_EQ(at->aux_value, 7U);
    ++at;
    EXPECT_TRUE(at == result.end());
}

TEST_F(SubscriptionIterator, GivesTheEntryItself) {
    auto const at = result.begin();
    EXPECT_EQ(&*at, &result.get(id(3)));
    EXPECT_EQ(at.operator->(), &result.get(id(3)));
    static_assert(std::is_same_v<decltype(*at), subscription_result::variable_result const&>);
}

TEST_F(SubscriptionIterator, LeavesTheOldPlaceBehindByThePostfixForm) {
    auto at = result.begin();
    auto const before = at++;
    EXPECT_EQ(before->aux_value, 3U);
    EXPECT_EQ(at->aux_value, 5U);
    EXPECT_NE(impl_of(before), impl_of(at));
}

TEST_F(SubscriptionIterator, ServesLoopsAndAlgorithms) {
    std::vector<unsigned int> found;
    for (auto const& entry : result) found.push_back(entry.aux_value);
    EXPECT_EQ(found, (std::vector<unsigned int>{3, 5, 7}));
    EXPECT_EQ(std::distance(result.begin(), result.end()), 3);
    auto const at = std::find_if(result.begin(), result.end(),
                                 [](auto const& entry) { return entry.aux_value == 5; });
    EXPECT_EQ(at->identifier, id(5));
}

TEST_F(SubscriptionIterator, EqualsThoseAtTheSameEntry) {
    auto const first = result.begin();
    auto second = result.begin();
    EXPECT_NE(impl_of(first), impl_of(second));
    EXPECT_TRUE(first == first);
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
    ++second;
    EXPECT_FALSE(first == second);
    EXPECT_TRUE(first != second);
    auto const last = result.end();
    auto const other_last = result.end();
    EXPECT_NE(impl_of(last), impl_of(other_last));
    EXPECT_TRUE(last == other_last);
    EXPECT_FALSE(first == last);
}

TEST_F(SubscriptionIterator, WithoutPositionEqualsItsLikeAlone) {
    auto const one = hollow();
    auto const other = hollow();
    auto const live = result.begin();
    EXPECT_TRUE(one == other);
    EXPECT_FALSE(one != other);
    EXPECT_FALSE(one == live);
    EXPECT_FALSE(live == one);
    EXPECT_TRUE(live != one);
}

TEST_F(SubscriptionIterator, IsCopiedToAPositionOfItsOwn) {
    auto at = result.begin();
    ++at;
    auto const copy(at);
    EXPECT_NE(impl_of(copy), impl_of(at));
    EXPECT_TRUE(copy == at);
    ++at;
    EXPECT_EQ(copy->aux_value, 5U);
    EXPECT_EQ(at->aux_value, 7U);
}

TEST_F(SubscriptionIterator, WithoutPositionIsCopiedAsSuch) {
    auto const source = hollow();
    allocation_counter const counter;
    auto const copy(source);
    EXPECT_EQ(impl_of(copy), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST_F(SubscriptionIterator, LeavesNoPositionBehindWhenMoved) {
    auto source = result.begin();
    void const* const impl = impl_of(source);
    allocation_counter const counter;
    auto const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(target->aux_value, 3U);
    static_assert(std::is_nothrow_move_constructible_v<at_entry>);
}

TEST_F(SubscriptionIterator, CostsOneBlockForEachPosition) {
    allocation_counter const counter;
    {
        auto at = result.begin();
        EXPECT_EQ(counter.allocations(), 1U);
        auto const last = result.end();
        EXPECT_EQ(counter.allocations(), 2U);
        ++at;
        (void)*at;
        (void)at->aux_value;
        (void)(at == last);
        EXPECT_EQ(counter.allocations(), 2U);
        auto const copy(at);
        EXPECT_EQ(counter.allocations(), 3U);
        auto const before = at++;
        EXPECT_EQ(counter.allocations(), 4U);
        EXPECT_EQ(counter.releases(), 0U);
    }
    EXPECT_EQ(counter.releases(), 4U);
    static_assert(sizeof(at_entry) == sizeof(void*));
}

TEST_F(SubscriptionIterator, StaysWhereItIsWithoutMemory) {
    auto at = result.begin();
    {
        allocation_failure const failure(1);
        EXPECT_THROW((void)at++, std::bad_alloc);
    }
    EXPECT_EQ(at->aux_value, 3U);
    {
        allocation_failure const failure(1);
        EXPECT_THROW(at_entry const copy(at), std::bad_alloc);
    }
    {
        allocation_failure const failure(1);
        EXPECT_THROW((void)result.begin(), std::bad_alloc);
    }
    {
        allocation_failure const failure(1);
        EXPECT_THROW((void)result.end(), std::bad_alloc);
    }
}

TEST_F(SubscriptionIterator, StaysValidWhileOtherEntriesChange) {
    auto at = result.begin();
    ++at;
    result.remove(id(3));
    result.set(id(4), io_data_type(), 4, subscription_id());
    result.set(id(6), io_data_type(), 6, subscription_id());
    result.set(id(5), io_data_type(), 55, subscription_id());
    result.set(id(7), io_errc::no_result);
    EXPECT_EQ(at->aux_value, 55U);
    ++at;
    EXPECT_EQ(at->aux_value, 6U);
    result.remove(id(7));
    ++at;
    EXPECT_TRUE(at == result.end());
}

TEST_F(SubscriptionIterator, StaysValidWhenItsResultIsMoved) {
    auto at = result.begin();
    subscription_result const moved(std::move(result));
    EXPECT_EQ(&*at, &moved.get(id(3)));
    ++at;
    EXPECT_EQ(at->aux_value, 5U);
}

} // namespace
