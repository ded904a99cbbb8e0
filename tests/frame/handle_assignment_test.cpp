#include "handle_content.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <utility>

// Every pairing of null, same and other in the assignments of the handles that copy deep.

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::impl_of;

template <class Handle>
class HandleAssignment : public frame_test::handle_test<Handle> {};
TYPED_TEST_SUITE(HandleAssignment, frame_test::handles);

TYPED_TEST(HandleAssignment, CopiesInPlace) {
    auto target = this->make(1);
    auto const source = this->make(7);
    void const* const impl = impl_of(target);
    target = source;
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(this->read(target), 7);
    EXPECT_EQ(this->read(source), 7);
}

TYPED_TEST(HandleAssignment, CopiesInPlaceWhereThereWasLess) {
    auto target = this->bare();
    auto const source = this->make(7);
    void const* const impl = impl_of(target);
    target = source;
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleAssignment, CopiesInPlaceWhereThereWasMore) {
    long long const before = test_support::live_blocks();
    {
        auto target = this->make(7);
        auto const source = this->bare();
        void const* const impl = impl_of(target);
        target = source;
        EXPECT_EQ(impl_of(target), impl);
        target = this->make(8);
        EXPECT_EQ(this->read(target), 8);
    }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TYPED_TEST(HandleAssignment, SharesNothingWithItsSource) {
    auto target = this->make(1);
    auto source = this->make(7);
    target = source;
    this->change(source, 8);
    EXPECT_EQ(this->read(target), 7);
    this->change(target, 9);
    EXPECT_EQ(this->read(source), 8);
}

TYPED_TEST(HandleAssignment, OfNullReleasesTheTarget) {
    auto target = this->make(1);
    auto const null = this->make_null();
    allocation_counter const counter;
    target = null;
    EXPECT_EQ(impl_of(target), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_GE(counter.releases(), 3U);
}

TYPED_TEST(HandleAssignment, ToANullTargetIsACopy) {
    auto target = this->make_null();
    auto const source = this->make(7);
    target = source;
    ASSERT_NE(impl_of(target), nullptr);
    EXPECT_NE(impl_of(target), impl_of(source));
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleAssignment, OfNullToNullIsNull) {
    auto target = this->make_null();
    auto const null = this->make_null();
    target = null;
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(HandleAssignment, OfItselfChangesNothing) {
    auto handle = this->make(7);
    auto const& same = handle;
    void const* const impl = impl_of(handle);
    allocation_counter const counter;
    handle = same;
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(handle), impl);
    EXPECT_EQ(this->read(handle), 7);
}

TYPED_TEST(HandleAssignment, OfANullHandleToItselfLeavesItNull) {
    auto null = this->make_null();
    auto const& same = null;
    null = same;
    EXPECT_EQ(impl_of(null), nullptr);
}

TYPED_TEST(HandleAssignment, MovesThePointer) {
    auto target = this->make(1);
    auto source = this->make(7);
    void const* const impl = impl_of(source);
    allocation_counter const counter;
    target = std::move(source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_GE(counter.releases(), 3U) << "what the target held is destroyed at once";
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleAssignment, MovesToANullTarget) {
    auto target = this->make_null();
    target = this->make(7);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleAssignment, MovesNullByReleasingTheTarget) {
    auto target = this->make(1);
    target = this->make_null();
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(HandleAssignment, MovesToItselfWithoutAChange) {
    auto handle = this->make(7);
    auto& same = handle;
    void const* const impl = impl_of(handle);
    handle = std::move(same);
    EXPECT_EQ(impl_of(handle), impl);
    EXPECT_EQ(this->read(handle), 7);
}

TYPED_TEST(HandleAssignment, MakesAMovedHandleUsableAgain) {
    auto handle = this->make(1);
    TypeParam const taken(std::move(handle));
    handle = this->make(7);
    EXPECT_EQ(this->read(handle), 7);
    EXPECT_EQ(this->read(taken), 1);
}

} // namespace
