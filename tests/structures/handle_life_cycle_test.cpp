#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::count_survived_failures;
using test_support::impl_of;
using types = io_data_type::basic_types;

// How the tests make a handle with the content number `n`, and read that number back.
template <class Handle>
struct content;

template <>
struct content<io_structure_type> {
    static io_structure_type make(int n) {
        std::string const name =
            "a structure whose name is long enough for a block " + std::to_string(n);
        return io_structure_type(
            name, {{"value", io_data_type::object(static_cast<unsigned long long>(n))}});
    }
    static int read(io_structure_type const& type) {
        return static_cast<int>(type.get_member("value").structure_id);
    }
    static void change(io_structure_type& type, int n) {
        type.set_member("value", io_data_type::object(static_cast<unsigned long long>(n)));
    }
};

template <>
struct content<io_object> {
    static io_object make(int n) {
        return io_object(static_cast<unsigned long long>(n), content<io_structure_type>::make(n));
    }
    static int read(io_object const& object) {
        return static_cast<int>(object.type().structure_id);
    }
    static void change(io_object& object, int n) { object = make(n); }
};

template <class Handle>
class HandleLifeCycle : public ::testing::Test {
protected:
    static Handle make(int n) { return content<Handle>::make(n); }
    static int read(Handle const& handle) { return content<Handle>::read(handle); }
    static void change(Handle& handle, int n) { content<Handle>::change(handle, n); }

    // A handle that has been moved from.
    static Handle make_null() {
        Handle handle;
        Handle const taken(std::move(handle));
        return Handle(std::move(handle));
    }
};

using handles = ::testing::Types<io_structure_type, io_object>;
TYPED_TEST_SUITE(HandleLifeCycle, handles);

TYPED_TEST(HandleLifeCycle, IsOnePointerWide) {
    static_assert(sizeof(TypeParam) == sizeof(void*));
}

TYPED_TEST(HandleLifeCycle, BeginsWithAnImpl) {
    TypeParam const handle;
    EXPECT_NE(impl_of(handle), nullptr);
}

TYPED_TEST(HandleLifeCycle, GivesEachHandleItsOwnImpl) {
    TypeParam const first;
    TypeParam const second;
    EXPECT_NE(impl_of(first), impl_of(second));
}

TYPED_TEST(HandleLifeCycle, TakesItsImplFromThePlainOperator) {
    utility::string const marker("the last aligned block");
    TypeParam const handle;
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

TYPED_TEST(HandleLifeCycle, AssignsInPlace) {
    auto target = this->make(1);
    auto const source = this->make(7);
    void const* const impl = impl_of(target);
    target = source;
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(this->read(target), 7);
    EXPECT_EQ(this->read(source), 7);
}

TYPED_TEST(HandleLifeCycle, AssignsNullByReleasingTheTarget) {
    auto target = this->make(1);
    auto const null = this->make_null();
    allocation_counter const counter;
    target = null;
    EXPECT_EQ(impl_of(target), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_GE(counter.releases(), 1U);
}

TYPED_TEST(HandleLifeCycle, AssignsToANullTargetByACopy) {
    auto target = this->make_null();
    auto const source = this->make(7);
    target = source;
    ASSERT_NE(impl_of(target), nullptr);
    EXPECT_NE(impl_of(target), impl_of(source));
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleLifeCycle, AssignsNullToNull) {
    auto target = this->make_null();
    auto const null = this->make_null();
    target = null;
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(HandleLifeCycle, IsUnchangedByAssignmentToItself) {
    auto handle = this->make(7);
    auto const& same = handle;
    void const* const impl = impl_of(handle);
    allocation_counter const counter;
    handle = same;
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(handle), impl);
    EXPECT_EQ(this->read(handle), 7);
}

TYPED_TEST(HandleLifeCycle, StaysNullWhenAssignedToItself) {
    auto null = this->make_null();
    auto const& same = null;
    null = same;
    EXPECT_EQ(impl_of(null), nullptr);
}

TYPED_TEST(HandleLifeCycle, MoveAssignsThePointer) {
    auto target = this->make(1);
    auto source = this->make(7);
    void const* const impl = impl_of(source);
    allocation_counter const counter;
    target = std::move(source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_GE(counter.releases(), 1U);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleLifeCycle, MoveAssignsToANullTarget) {
    auto target = this->make_null();
    target = this->make(7);
    EXPECT_EQ(this->read(target), 7);
}

TYPED_TEST(HandleLifeCycle, MoveAssignsNullByReleasingTheTarget) {
    auto target = this->make(1);
    target = this->make_null();
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(HandleLifeCycle, IsUnchangedByAMoveToItself) {
    auto handle = this->make(7);
    auto& same = handle;
    void const* const impl = impl_of(handle);
    handle = std::move(same);
    EXPECT_EQ(impl_of(handle), impl);
    EXPECT_EQ(this->read(handle), 7);
}

TYPED_TEST(HandleLifeCycle, IsUsableAgainAfterAMove) {
    auto handle = this->make(1);
    TypeParam const taken(std::move(handle));
    handle = this->make(7);
    EXPECT_EQ(this->read(handle), 7);
    EXPECT_EQ(this->read(taken), 1);
}

TYPED_TEST(HandleLifeCycle, MovesWithoutFailure) {
    static_assert(std::is_nothrow_move_constructible_v<TypeParam>);
    static_assert(std::is_nothrow_move_assignable_v<TypeParam>);
    static_assert(std::is_nothrow_destructible_v<TypeParam>);
}

TYPED_TEST(HandleLifeCycle, SurvivesExhaustedMemoryWhenMade) {
    EXPECT_GE(count_survived_failures([] { TypeParam const handle; }), 1);
    EXPECT_GE(count_survived_failures([] { static_cast<void>(content<TypeParam>::make(7)); }), 3);
}

TYPED_TEST(HandleLifeCycle, SurvivesExhaustedMemoryWhenCopied) {
    auto const source = this->make(7);
    EXPECT_GE(count_survived_failures([&] { TypeParam const copy(source); }), 3);
    EXPECT_EQ(this->read(source), 7);
}

TYPED_TEST(HandleLifeCycle, SurvivesExhaustedMemoryWhenAssigned) {
    auto const source = this->make(7);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam target;
                  target = source;
              }),
              3);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam target;
                  TypeParam const taken(std::move(target));
                  target = source;
              }),
              4);
}

TYPED_TEST(HandleLifeCycle, StaysNullWhereACopyCannotBeMade) {
    auto target = this->make_null();
    auto const source = this->make(7);
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(target = source, std::bad_alloc);
    }
    EXPECT_EQ(impl_of(target), nullptr);
    target = source;
    EXPECT_EQ(this->read(target), 7);
}

} // namespace
