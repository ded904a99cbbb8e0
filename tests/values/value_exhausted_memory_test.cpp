#include "raw_value.hpp"
#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <new>

namespace values_test {
namespace {

using test_support::allocation_failure;
using test_support::live_blocks;

/// Copy `source` over `target` with the n-th allocation failing.
/// \return whether that allocation was asked for and `std::bad_alloc` came out
bool fail_assignment(io_value& target, io_value const& source, std::size_t n) {
    allocation_failure const failure(n);
    try {
        target = source;
    } catch (std::bad_alloc const&) {
        return failure.hit();
    }
    return false;
}

template <class T>
class FailedAssignment : public ::testing::Test {
protected:
    // Fails each allocation of the assignment in turn.
    template <class Check>
    void for_each_failure(Check check) {
        io_value const source = sample_value<T>();
        std::size_t n = 1;
        for (;; ++n) {
            raw_value target("old content");
            long long const before = live_blocks();
            if (!fail_assignment(*target, source, n)) {
                EXPECT_TRUE(same_content(*target, source));
                target.destroy();
                break;
            }
            SCOPED_TRACE(n);
            check(target, source, before);
        }
        EXPECT_EQ(n > 1, owns_blocks<T>);
    }
};
TYPED_TEST_SUITE(FailedAssignment,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(FailedAssignment, LeavesNoAlternativeAndTheOldType) {
    this->for_each_failure([](raw_value& target, io_value const&, long long) {
        EXPECT_EQ(target->index(), -1);
        EXPECT_EQ(target->data_type(), io_data_type::scalar(types::string));
        EXPECT_EQ(target->p_basic_type(), 12U);
    });
}

TYPED_TEST(FailedAssignment, LeaksNothingAndHasGivenBackTheOldPayload) {
    this->for_each_failure([](raw_value&, io_value const&, long long before) {
        EXPECT_EQ(live_blocks(), before - 1);
    });
}

TYPED_TEST(FailedAssignment, LeavesTheSourceAsItWas) {
    this->for_each_failure([](raw_value&, io_value const& source, long long) {
        EXPECT_TRUE(same_content(source, sample_value<TypeParam>()));
    });
}

TYPED_TEST(FailedAssignment, MakesTheDestructionRaise) {
    this->for_each_failure([](raw_value& target, io_value const&, long long) {
        EXPECT_TRUE(raises_empty_text([&] { target.destroy(); }));
    });
}

template <class T>
class PayloadOrder : public ::testing::Test {};
TYPED_TEST_SUITE(PayloadOrder, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(PayloadOrder, OldPayloadGoesBeforeTheNewOneIsBuilt) {
    io_value const source(array<unsigned char>{1, 2, 3});
    long long const before = live_blocks();
    raw_value target(sample_value<TypeParam>());
    EXPECT_EQ(live_blocks() > before, owns_blocks<TypeParam>);
    EXPECT_TRUE(fail_assignment(*target, source, 1));
    EXPECT_EQ(live_blocks(), before);
}

TEST(PayloadOrderOf, ATextIsReleasedBeforeAnArrayIsBuilt) {
    io_value const source(array<unsigned char>{1, 2, 3});
    raw_value target("old content");
    void const* const old_block = block_of(*target);
    EXPECT_TRUE(fail_assignment(*target, source, 1));
    EXPECT_EQ(test_support::last_aligned_release().block, old_block);
    EXPECT_EQ(test_support::last_aligned_release().size, 12U);
    EXPECT_EQ(target->index(), -1);
}

TEST(CopyConstruction, LeavesNoObjectWhereMemoryIsExhausted) {
    io_value const source(sample<array<io_value>>());
    EXPECT_GT(test_support::count_survived_failures([&] { io_value const copy(source); }), 3);
}

} // namespace
} // namespace values_test
