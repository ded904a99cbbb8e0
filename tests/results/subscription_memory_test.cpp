#include <tavi/ioapi/v2/subscription_result.hpp>

#include "counted_owner.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using results_test::counted_owner;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::live_blocks;

TEST(SubscriptionRelease, ComesOnceWhereAnEntryIsReplaced) {
    counted_owner by_id;
    counted_owner by_error;
    {
        subscription_result result;
        result.set(id("a"), io_data_type(), 1, by_id.id());
        EXPECT_EQ(by_id.released, 0);
        result.set(id("a"), io_data_type(), 1, by_error.id());
        EXPECT_EQ(by_id.released, 1);
        EXPECT_EQ(result.get(id("a")).id.object(), &by_error);
        result.set(id("a"), io_errc::no_result);
        EXPECT_EQ(by_error.released, 1);
    }
    EXPECT_EQ(by_id.released, 1);
    EXPECT_EQ(by_error.released, 1);
    EXPECT_EQ(by_id.added + by_error.added, 0);
}

TEST(SubscriptionRelease, ComesOnceWhereAnEntryIsRemoved) {
    counted_owner owner;
    counted_owner other;
    {
        subscription_result result;
        result.set(id("a"), io_data_type(), 1, owner.id());
        result.set(id("b"), io_data_type(), 1, other.id());
        result.remove(id("c"));
        EXPECT_EQ(owner.released, 0);
        result.remove(id("a"));
        EXPECT_EQ(owner.released, 1);
        EXPECT_EQ(other.released, 0);
    }
    EXPECT_EQ(owner.released, 1);
    EXPECT_EQ(other.released, 1);
}

TEST(SubscriptionRelease, ComesOnceWithTheResult) {
    std::vector<counted_owner> owners(20);
    {
        subscription_result result;
        for (std::size_t i = 0; i < owners.size(); ++i) {
            result.set(id(i), io_data_type(), 1, owners[i].id());
        }
        subscription_result other;
        other.set(id("mine"), io_data_type(), 1, subscription_id());
        other = std::move(result);
        for (auto const& owner : owners) EXPECT_EQ(owner.released, 0);
    }
    for (auto const& owner : owners) {
        EXPECT_EQ(owner.released, 1);
        EXPECT_EQ(owner.added, 0);
    }
}

TEST(SubscriptionRelease, ComesWithTheTargetOfAMove) {
    counted_owner owner;
    subscription_result target;
    target.set(id("a"), io_data_type(), 1, owner.id());
    target = subscription_result();
    EXPECT_EQ(owner.released, 1);
    EXPECT_TRUE(target.empty());
}

TEST(SubscriptionMemory, IsOneNodeForAnEntryWithoutTexts) {
    subscription_result result;
    id const identifier(7);
    allocation_counter const counter;
    result.set(identifier, io_data_type(), 1, subscription_id());
    EXPECT_EQ(counter.allocations(), 1U);
    result.set(identifier, io_data_type(), 2, subscription_id::from_number(5));
    result.set(identifier, io_errc::no_result);
    EXPECT_EQ(counter.allocations(), 1U) << "an entry is replaced in its place";
    EXPECT_EQ(counter.releases(), 0U);
    result.remove(identifier);
    EXPECT_EQ(counter.releases(), 1U);
}

TEST(SubscriptionMemory, IsNotNeededToLookUp) {
    subscription_result result;
    id const present("a text");
    id const absent("another text");
    result.set(present, io_data_type(), 1, subscription_id());
    allocation_counter const counter;
    EXPECT_TRUE(result.has(present));
    EXPECT_FALSE(result.has(absent));
    EXPECT_EQ(result.get(present).aux_value, 1U);
    EXPECT_EQ(result[present].aux_value, 1U);
    EXPECT_TRUE(subscription_result::is_not_found(result.get(absent)));
    EXPECT_EQ(result.remove(absent), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(SubscriptionMemory, IsAllReturned) {
    auto const before = live_blocks();
    {
        subscription_result result;
        EXPECT_EQ(live_blocks(), before + 1);
        result.set(id("a text", "of two"), io_data_type(), 1, subscription_id());
        result.set(id("b"), io_errc::no_result);
        result.set(id("a text", 5), io_errc::no_result);
        result.remove(id("b"));
    }
    EXPECT_EQ(live_blocks(), before);
}

// What is set, and over what.
struct set_row {
    char const* name;
    bool present;
    bool error;
};

class SubscriptionWithoutMemory : public ::testing::TestWithParam<set_row> {};

TEST_P(SubscriptionWithoutMemory, IsAsItWasWhereASetFails) {
    id const target = GetParam().present ? id("b", "new") : id("c", "new");
    counted_owner old_owner;
    subscription_result result;
    result.set(id("a"), io_data_type(), 1, subscription_id::from_number(1));
    result.set(id("b", "old"), io_data_type(), 2, old_owner.id());
    auto const before = live_blocks();
    std::size_t n = 1;
    for (bool raised = true; raised; ++n) {
        counted_owner new_owner;
        bool hit = false;
        raised = false;
        {
            allocation_failure const failure(n);
            try {
                if (GetParam().error) {
                    result.set(target, io_errc::no_result);
                } else {
                    result.set(target, io_data_type::scalar(io_data_type::basic_types::flt), 3,
                               new_owner.id());
                }
            } catch (std::bad_alloc const&) {
                raised = true;
            }
            hit = failure.hit();
        }
        EXPECT_EQ(raised, hit) << n;
        if (!raised) {
            EXPECT_EQ(result.get(target).identifier, target);
            EXPECT_EQ(new_owner.released, 0);
            EXPECT_EQ(old_owner.released, GetParam().present ? 1 : 0);
            result.set(target, io_errc::no_result); // lets go of the new owner
            break;
        }
        EXPECT_EQ(live_blocks(), before) << n;
        EXPECT_EQ(new_owner.released, GetParam().error ? 0 : 1) << "it was the call's own";
        EXPECT_EQ(old_owner.released, 0) << n;
        EXPECT_EQ(result.has(id("c")), false) << n;
        EXPECT_EQ(result.get(id("a")).aux_value, 1U);
        EXPECT_EQ(result.get(id("b")).identifier, id("b", "old")) << n;
        EXPECT_EQ(result.get(id("b")).aux_value, 2U) << n;
        EXPECT_EQ(result.get(id("b")).id.object(), &old_owner) << n;
    }
    // Two texts for the entry; for a new one also the node and two texts for the key.
    EXPECT_GE(n, GetParam().present ? 3U : 6U);
}

INSTANTIATE_TEST_SUITE_P(Sets,
                         SubscriptionWithoutMemory,
                         ::testing::Values(set_row{"NewSubscription", false, false},
                                           set_row{"NewError", false, true},
                                           set_row{"ReplacingSubscription", true, false},
                                           set_row{"ReplacingError", true, true}),
                         [](auto const& row) { return std::string(row.param.name); });

TEST(SubscriptionMemory, IsNeededToBegin) {
    EXPECT_EQ(test_support::count_survived_failures([] { subscription_result const result; }), 1);
}

} // namespace
