#include "handle_content.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <utility>

// What is left of the handles that copy deep when there is no memory.

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_failure;
using test_support::count_survived_failures;
using test_support::impl_of;

template <class Handle>
class HandleMemory : public frame_test::handle_test<Handle> {};
TYPED_TEST_SUITE(HandleMemory, frame_test::handles);

TYPED_TEST(HandleMemory, ExhaustedLeavesNothingOfANewHandle) {
    EXPECT_GE(count_survived_failures([] { (void)frame_test::content<TypeParam>::bare(); }), 1);
    EXPECT_GE(count_survived_failures([] { (void)frame_test::content<TypeParam>::make(7); }), 3);
}

TYPED_TEST(HandleMemory, ExhaustedLeavesNothingOfACopy) {
    auto const source = this->make(7);
    EXPECT_GE(count_survived_failures([&] { TypeParam const copy(source); }), 3);
    EXPECT_EQ(this->read(source), 7);
}

TYPED_TEST(HandleMemory, ExhaustedLeaksNothingInAnAssignment) {
    auto const source = this->make(7);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam target = frame_test::content<TypeParam>::bare();
                  target = source;
              }),
              3);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam target = frame_test::content<TypeParam>::bare();
                  TypeParam const taken(std::move(target));
                  target = source;
              }),
              4);
}

TYPED_TEST(HandleMemory, ExhaustedLeavesATargetThatIsUsable) {
    auto const source = this->make(1234567); // whose texts are longer than those of the target
    for (bool const full : {false, true}) {
        for (std::size_t n = 1;; ++n) {
            long long const before = test_support::live_blocks();
            bool hit = false;
            {
                TypeParam target = full ? this->make(1) : this->bare();
                void const* const impl = impl_of(target);
                {
                    allocation_failure const failure(n);
                    try {
                        target = source;
                    } catch (std::bad_alloc const&) {
                        hit = true;
                    }
                    ASSERT_EQ(hit, failure.hit()) << n;
                }
                EXPECT_EQ(impl_of(target), impl);
                TypeParam const copy(target);
                target = source;
                EXPECT_EQ(this->read(target), 1234567);
            }
            EXPECT_EQ(test_support::live_blocks(), before);
            EXPECT_EQ(this->read(source), 1234567);
            if (!hit) break;
        }
    }
}

TYPED_TEST(HandleMemory, ExhaustedLeavesANullTargetNull) {
    auto const source = this->make(7);
    for (std::size_t n = 1;; ++n) {
        auto target = this->make_null();
        bool hit = false;
        {
            allocation_failure const failure(n);
            try {
                target = source;
            } catch (std::bad_alloc const&) {
                hit = true;
            }
            ASSERT_EQ(hit, failure.hit()) << n;
        }
        if (!hit) break;
        EXPECT_EQ(impl_of(target), nullptr);
        target = source;
        EXPECT_EQ(this->read(target), 7);
    }
}

TYPED_TEST(HandleMemory, IsNotAskedByMoves) {
    auto source = this->make(7);
    auto target = this->make(1);
    allocation_failure const failure(1);
    TypeParam moved(std::move(source));
    target = std::move(moved);
    EXPECT_FALSE(failure.hit());
}

} // namespace
