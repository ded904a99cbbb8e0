#include <tavi/ioapi/v2/detail/iokern_allocator.hpp>

#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace {

using tavi::ioapi::v2::detail::allocate_block;
using tavi::ioapi::v2::detail::block_alignment;
using tavi::ioapi::v2::detail::iokern_allocator_base;
using tavi::ioapi::v2::detail::release_block;
using test_support::allocation_counter;
using test_support::allocation_failure;

TEST(Gateway, AllocatesWithoutAlignmentByThePlainOperator) {
    auto const before = test_support::last_aligned_allocation();
    allocation_counter const counter;
    void* const block = iokern_allocator_base::allocate(100);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().block, before.block);
    std::memset(block, 0x5A, 100);
    ::operator delete(block); // the checks of our operators end the program on a mismatch
    EXPECT_EQ(counter.releases(), 1U);
}

TEST(Gateway, AllocatesZeroBytes) {
    void* const plain = iokern_allocator_base::allocate(0);
    EXPECT_NE(plain, nullptr);
    ::operator delete(plain);
    void* const aligned = iokern_allocator_base::allocate(0, 16);
    EXPECT_NE(aligned, nullptr);
    iokern_allocator_base::deallocate(aligned, 0, 16);
}

class GatewayAlignment : public ::testing::TestWithParam<std::pair<unsigned int, unsigned int>> {};

TEST_P(GatewayAlignment, ReachesTheAlignedOperatorsWithSizeAndAlignment) {
    auto const [size, alignment] = GetParam();
    void* const block = iokern_allocator_base::allocate(size, alignment);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0U);
    auto const allocation = test_support::last_aligned_allocation();
    EXPECT_EQ(allocation.block, block);
    EXPECT_EQ(allocation.size, size);
    EXPECT_EQ(allocation.alignment, alignment);

    iokern_allocator_base::deallocate(block, size, alignment);
    auto const release = test_support::last_aligned_release();
    EXPECT_EQ(release.block, block);
    EXPECT_EQ(release.size, size);
    EXPECT_EQ(release.alignment, alignment);
}

INSTANTIATE_TEST_SUITE_P(Sizes,
                         GatewayAlignment,
                         ::testing::Values(std::pair{1U, 16U},
                                           std::pair{16U, 16U},
                                           std::pair{4095U, 16U},
                                           std::pair{4096U, 32U},
                                           std::pair{4096U, 16U},
                                           std::pair{100U, 64U},
                                           std::pair{70000U, 4096U}));

TEST(Gateway, GivesNullWhenMemoryIsExhausted) {
    {
        allocation_failure const failure(1);
        EXPECT_EQ(iokern_allocator_base::allocate(8), nullptr);
        EXPECT_TRUE(failure.hit());
    }
    {
        allocation_failure const failure(1);
        EXPECT_EQ(iokern_allocator_base::allocate(8, 16), nullptr);
        EXPECT_TRUE(failure.hit());
    }
}

TEST(Gateway, ReleasesNull) {
    allocation_counter const counter;
    iokern_allocator_base::deallocate(nullptr, 1, 16);
    EXPECT_EQ(counter.null_releases(), 1U);
    EXPECT_EQ(counter.releases(), 0U);
}

TEST(Gateway, NeverThrows) {
    static_assert(noexcept(iokern_allocator_base::allocate(1)));
    static_assert(noexcept(iokern_allocator_base::allocate(1, 16)));
    static_assert(noexcept(iokern_allocator_base::deallocate(nullptr, 1, 16)));
}

TEST(BlockAlignment, Is16Below4096BytesAnd32FromThere) {
    static_assert(block_alignment(0) == 16);
    static_assert(block_alignment(1) == 16);
    static_assert(block_alignment(4095) == 16);
    static_assert(block_alignment(4096) == 32);
    static_assert(block_alignment(4097) == 32);
    static_assert(block_alignment(0xFFFFFFFF) == 32);
}

TEST(Block, IsAllocatedAndReleasedByTheRule) {
    for (unsigned int const size : {1U, 4095U, 4096U}) {
        void* const block = allocate_block(size);
        EXPECT_EQ(test_support::last_aligned_allocation().alignment, size < 4096 ? 16U : 32U);
        release_block(block, size);
        EXPECT_EQ(test_support::last_aligned_release().alignment, size < 4096 ? 16U : 32U);
    }
}

TEST(Block, ThatCannotBeMadeRaisesBadAlloc) {
    allocation_failure const failure(1);
    EXPECT_THROW(static_cast<void>(allocate_block(8)), std::bad_alloc);
}

} // namespace
