#include <tavi/ioapi/v2/subscription_result.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/stated_leak.hpp"
#include "three_subscriptions.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::impl_of;
using test_support::live_blocks;

class SubscriptionIteratorAssignment : public results_test::three_subscriptions {};

TEST_F(SubscriptionIteratorAssignment, TakesAPlaceIntoItsOwnPosition) {
    auto target = result.begin();
    auto const source = result.end();
    void const* const impl = impl_of(target);
    allocation_counter const counter;
    auto& same = target = source;
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(&same, &target);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_TRUE(target == source);
    target = same;
    EXPECT_TRUE(target == source);
}

TEST_F(SubscriptionIteratorAssignment, FreesItsPositionWhereOneWithoutIsAssigned) {
    auto target = result.begin();
    auto const source = hollow();
    allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(target), nullptr);
    target = source;
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(impl_of(target), nullptr);
}

TEST_F(SubscriptionIteratorAssignment, DropsItsPositionWithoutFreeingItWhereAnotherIsMovedIn) {
    std::unique_ptr<at_entry> target;
    {
        test_support::stated_leak const leak;
        target = std::make_unique<at_entry>(result.begin());
    }
    auto source = result.end();
    void const* const impl = impl_of(source);
    auto const before = live_blocks();
    allocation_counter const counter;
    auto& same = *target = std::move(source);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(&same, target.get());
    EXPECT_EQ(impl_of(*target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
    target.reset();
    EXPECT_EQ(live_blocks(), before - 2) << "the iterator and one position; the old one stays";
}

TEST_F(SubscriptionIteratorAssignment, DropsItsPositionWhereOneWithoutIsMovedIn) {
    std::unique_ptr<at_entry> target;
    {
        test_support::stated_leak const leak;
        target = std::make_unique<at_entry>(result.begin());
    }
    auto source = hollow();
    allocation_counter const counter;
    *target = std::move(source);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(impl_of(*target), nullptr);
}

TEST_F(SubscriptionIteratorAssignment, KeepsItsPositionWhenMovedToItself) {
    auto at = result.begin();
    auto& same = at;
    void const* const impl = impl_of(at);
    at = std::move(same);
    EXPECT_EQ(impl_of(at), impl);
    EXPECT_EQ(at->aux_value, 3U);
}

TEST_F(SubscriptionIteratorAssignment, IsUsableAgainWhereAnotherIsMovedIn) {
    auto at = hollow();
    at = result.begin();
    EXPECT_EQ(at->aux_value, 3U);
}

using SubscriptionIteratorDeathTest = SubscriptionIteratorAssignment;

TEST_F(SubscriptionIteratorDeathTest, EndsTheProcessWhereALiveOneIsCopiedToOneWithoutPosition) {
    auto target = hollow();
    auto const source = result.begin();
    EXPECT_DEATH(target = source, "");
    auto const last = result.end();
    EXPECT_DEATH(target = last, "");
}

} // namespace
