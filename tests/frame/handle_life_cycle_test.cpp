#include "handle_content.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/operators.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

// How the handles that copy deep are made, copied, moved and ended.

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::count_survived_failures;
using test_support::impl_of;

template <class Handle>
class HandleLifeCycle : public frame_test::handle_test<Handle> {};
TYPED_TEST_SUITE(HandleLifeCycle, frame_test::handles);

TYPED_TEST(HandleLifeCycle, IsOnePointerWide) {
    static_assert(sizeof(TypeParam) == sizeof(void*));
}

TYPED_TEST(HandleLifeCycle, BeginsWithAnImpl) {
    TypeParam const handle = this->bare();
    EXPECT_NE(impl_of(handle), nullptr);
}

TYPED_TEST(HandleLifeCycle, GivesEachHandleItsOwnImpl) {
    TypeParam const first = this->bare();
    TypeParam const second = this->bare();
    EXPECT_NE(impl_of(first), impl_of(second));
}

TYPED_TEST(HandleLifeCycle, TakesItsImplFromThePlainOperator) {
    utility::string const marker("the last aligned block");
    TypeParam const handle = this->bare();
    TypeParam const copy(handle);
    EXPECT_EQ(test_support::last_aligned_allocation().block, marker.data());
}

TYPED_TEST(HandleLifeCycle, CopiesDeep) {
    auto original = this->make(7);
    TypeParam const copy(original);
    EXPECT_NE(impl_of(copy), impl_of(original));
    EXPECT_EQ(this->read(copy), 7);
    this->change(original, 8);
    EXPECT_EQ(this->read(copy), 7);
    EXPECT_EQ(this->read(original), 8);
}

TYPED_TEST(HandleLifeCycle, OutlivesWhatItWasCopiedFrom) {
    std::vector<TypeParam> handles;
    handles.push_back(this->make(7));
    TypeParam const copy(handles.front());
    handles.clear();
    EXPECT_EQ(this->read(copy), 7);
}

TYPED_TEST(HandleLifeCycle, CopiesNullToNull) {
    auto const null = this->make_null();
    allocation_counter const counter;
    TypeParam const copy(null);
    EXPECT_EQ(impl_of(copy), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(HandleLifeCycle, MovesThePointer) {
    auto source = this->make(7);
    void const* const impl = impl_of(source);
    allocation_counter const counter;
    TypeParam const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleLifeCycle, MovesNullToNull) {
    auto null = this->make_null();
    TypeParam const target(std::move(null));
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(HandleLifeCycle, ReleasesAllThatItHolds) {
    long long const before = test_support::live_blocks();
    {
        auto const handle = this->make(7);
        EXPECT_GE(test_support::live_blocks(), before + 3);
        TypeParam const copy(handle);
    }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TYPED_TEST(HandleLifeCycle, ReleasesNothingOnceItIsNull) {
    allocation_counter const counter;
    std::size_t before_the_end = 0;
    {
        auto const null = this->make_null();
        before_the_end = counter.releases();
    }
    EXPECT_EQ(counter.releases(), before_the_end);
}

TYPED_TEST(HandleLifeCycle, MovesWithoutFailure) {
    static_assert(std::is_nothrow_move_constructible_v<TypeParam>);
    static_assert(std::is_nothrow_move_assignable_v<TypeParam>);
    static_assert(std::is_nothrow_destructible_v<TypeParam>);
}

TYPED_TEST(HandleLifeCycle, IsComparedWithNothing) {
    static_assert(!test_support::has_equal<TypeParam>);
    static_assert(!test_support::has_not_equal<TypeParam>);
    static_assert(!test_support::has_less<TypeParam>);
    static_assert(!test_support::has_three_way<TypeParam>);
}

// Those without content of their own: the others name what they describe.
template <class Handle>
class HandleByDefault : public ::testing::Test {};
using handles_by_default = ::testing::Types<io_structure_type,
                                            io_object,
                                            browse_result,
                                            config::config_template,
                                            config::store,
                                            config::verification_result>;
TYPED_TEST_SUITE(HandleByDefault, handles_by_default);

TYPED_TEST(HandleByDefault, BeginsWithAnImplOfItsOwn) {
    TypeParam const first;
    TypeParam const second;
    EXPECT_NE(impl_of(first), nullptr);
    EXPECT_NE(impl_of(first), impl_of(second));
}

TYPED_TEST(HandleByDefault, SurvivesExhaustedMemory) {
    EXPECT_GE(count_survived_failures([] { TypeParam const handle; }), 1);
}

TEST(HandleWithoutDefault, IsAnOptionOrACategory) {
    static_assert(!std::is_default_constructible_v<config::option>);
    static_assert(!std::is_default_constructible_v<config::category>);
}

} // namespace
