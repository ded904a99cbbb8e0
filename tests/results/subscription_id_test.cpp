#include <tavi/ioapi/v2/subscription_id.hpp>

#include "counted_owner.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using results_test::counted_owner;
using test_support::field_at;
using test_support::has_wide_words;
using id_kind = subscription_id_kind;

constexpr unsigned long long wide_number = 0xFEDCBA9876543210ULL;

unsigned long long payload_of(subscription_id const& given) {
    return field_at<unsigned long long>(given, 8);
}

void expect_none(subscription_id const& given) {
    EXPECT_EQ(given.kind(), id_kind::none);
    EXPECT_EQ(given.number(), 0U);
    EXPECT_EQ(given.address(), nullptr);
    EXPECT_EQ(given.object(), nullptr);
    EXPECT_EQ(field_at<unsigned int>(given, 0), 0U);
    EXPECT_EQ(payload_of(given), 0U);
}

TEST(SubscriptionId, HasFourKinds) {
    static_assert(sizeof(id_kind) == 4);
    static_assert(static_cast<unsigned int>(id_kind::none) == 0);
    static_assert(static_cast<unsigned int>(id_kind::number) == 1);
    static_assert(static_cast<unsigned int>(id_kind::address) == 2);
    static_assert(static_cast<unsigned int>(id_kind::object) == 3);
}

TEST(SubscriptionId, IsNoneByDefault) {
    expect_none(subscription_id());
}

TEST(SubscriptionId, KeepsANumberOf64Bits) {
    for (unsigned long long const number : {0ULL, 1ULL, wide_number, ~0ULL}) {
        auto const given = subscription_id::from_number(number);
        EXPECT_EQ(given.kind(), id_kind::number);
        EXPECT_EQ(given.number(), number);
        EXPECT_EQ(given.address(), nullptr);
        EXPECT_EQ(given.object(), nullptr);
        EXPECT_EQ(field_at<unsigned int>(given, 0), 1U);
        EXPECT_EQ(payload_of(given), number);
    }
}

TEST(SubscriptionId, KeepsAnAddressThatIsNotItsOwn) {
    int target = 0;
    for (void* const address : {static_cast<void*>(&target), static_cast<void*>(nullptr)}) {
        auto const given = subscription_id::from_address(address);
        EXPECT_EQ(given.kind(), id_kind::address);
        EXPECT_EQ(given.address(), address);
        EXPECT_EQ(given.number(), 0U);
        EXPECT_EQ(given.object(), nullptr);
        EXPECT_EQ(field_at<unsigned int>(given, 0), 2U);
        EXPECT_EQ(payload_of(given), reinterpret_cast<std::uintptr_t>(address));
    }
}

TEST(SubscriptionId, TakesOverOneReferenceAndReleasesIt) {
    counted_owner owner;
    {
        auto const given = owner.id();
        EXPECT_EQ(given.kind(), id_kind::object);
        EXPECT_EQ(given.object(), &owner);
        EXPECT_EQ(given.number(), 0U);
        EXPECT_EQ(given.address(), nullptr);
        EXPECT_EQ(field_at<unsigned int>(given, 0), 3U);
        EXPECT_EQ(payload_of(given), reinterpret_cast<std::uintptr_t>(given.object()));
        EXPECT_EQ(owner.released, 0);
    }
    EXPECT_EQ(owner.released, 1);
    EXPECT_EQ(owner.added, 0);
}

TEST(SubscriptionId, StandsAsKindThenPayload) {
    static_assert(sizeof(subscription_id) == 16);
    static_assert(alignof(subscription_id) == 8);
}

TEST(SubscriptionId, CanBeMovedButNotCopied) {
    static_assert(!std::is_copy_constructible_v<subscription_id>);
    static_assert(!std::is_copy_assignable_v<subscription_id>);
    static_assert(std::is_nothrow_move_constructible_v<subscription_id>);
    static_assert(std::is_nothrow_move_assignable_v<subscription_id>);
}

TEST(SubscriptionIdMove, LeavesNoneBehind) {
    counted_owner owner;
    int target = 0;
    subscription_id sources[] = {subscription_id(), subscription_id::from_number(wide_number),
                                 subscription_id::from_address(&target), owner.id()};
    for (auto& source : sources) {
        auto const its_kind = source.kind();
        auto const payload = payload_of(source);
        subscription_id constructed(std::move(source));
        expect_none(source);
        EXPECT_EQ(constructed.kind(), its_kind);
        EXPECT_EQ(payload_of(constructed), payload);
        subscription_id assigned = subscription_id::from_number(~0ULL);
        assigned = std::move(constructed);
        expect_none(constructed);
        EXPECT_EQ(assigned.kind(), its_kind);
        EXPECT_EQ(payload_of(assigned), payload);
    }
    EXPECT_EQ(owner.released, 1) << "by the last one that held it";
}

TEST(SubscriptionIdMove, ReleasesWhatTheTargetHeldOnce) {
    counted_owner old_owner;
    counted_owner new_owner;
    {
        auto target = old_owner.id();
        auto source = new_owner.id();
        target = std::move(source);
        EXPECT_EQ(old_owner.released, 1);
        EXPECT_EQ(new_owner.released, 0);
        EXPECT_EQ(target.object(), &new_owner);
        target = subscription_id::from_number(5);
        EXPECT_EQ(new_owner.released, 1);
        target = subscription_id();
        expect_none(target);
    }
    EXPECT_EQ(old_owner.released, 1);
    EXPECT_EQ(new_owner.released, 1);
    EXPECT_EQ(old_owner.added + new_owner.added, 0);
}

TEST(SubscriptionIdMove, ReleasesNothingItself) {
    counted_owner owner;
    std::optional<subscription_id> source(owner.id());
    std::optional<subscription_id> target(std::move(*source));
    source.reset();
    EXPECT_EQ(owner.released, 0);
    target.reset();
    EXPECT_EQ(owner.released, 1);
}

// Another module may leave anything in the half of the payload that a pointer does not reach.
TEST(SubscriptionIdMove, TakesOneWordOfAPointer) {
    if constexpr (has_wide_words) {
        GTEST_SKIP() << "a pointer fills the payload here, so that no half is left over";
    } else {
        unsigned int const beyond = 0xDEADBEEFU;
        int target = 0;
        auto source = subscription_id::from_address(&target);
        std::memcpy(reinterpret_cast<unsigned char*>(&source) + 12, &beyond, sizeof beyond);
        subscription_id const taken(std::move(source));
        EXPECT_EQ(taken.address(), &target);
        EXPECT_EQ(payload_of(taken), reinterpret_cast<std::uintptr_t>(&target));
        expect_none(source);
    }
}

TEST(SubscriptionId, NeedsNoMemory) {
    counted_owner owner;
    test_support::allocation_counter const counter;
    auto first = owner.id();
    subscription_id second(std::move(first));
    first = std::move(second);
    EXPECT_EQ(counter.allocations(), 0U);
}

} // namespace
