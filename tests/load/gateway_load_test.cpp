#include "largest_block.hpp"
#include "measure.hpp"

#include <gtest/gtest.h>

#include <cstdio>

namespace load_test {
namespace {

using gateway = tavi::ioapi::v2::detail::iokern_allocator_base;

TEST(GatewayLoad, GivesAllThat32BitsStateUnlessAddressesEndBefore) {
    unsigned int const largest = largest_block();
    std::printf("load: largest block: %u bytes\n", largest);
    if (has_wide_addresses) {
        EXPECT_EQ(largest, 0xFFFFFFFFU);
    } else {
        // No object may be larger than half of the addresses, and not much else is in the way.
        EXPECT_GE(largest, 0x40000000U);
        EXPECT_LE(largest, 0x7FFFFFFFU);
    }
}

TEST(GatewayLoad, GivesABlockThatCanBeWrittenAtBothEnds) {
    unsigned int const bytes = largest_block();
    auto* const block = static_cast<unsigned char*>(gateway::allocate(bytes, 32));
    ASSERT_NE(block, nullptr);
    block[0] = 1;
    block[bytes - 1] = 2;
    EXPECT_EQ(block[0], 1);
    EXPECT_EQ(block[bytes - 1], 2);
    gateway::deallocate(block, bytes, 32);
}

TEST(GatewayLoad, GivesNullBeyondTheLargestBlock) {
    if (has_wide_addresses) {
        ASSERT_EQ(largest_block(), 0xFFFFFFFFU); // no larger size can be said
        return;
    }
    for_some_from_to(largest_block() + 1, 0xFFFFFFFF, [](unsigned int bytes) {
        EXPECT_EQ(gateway::allocate(bytes, 32), nullptr) << bytes;
    });
    // A smaller alignment leaves a few bytes more of the half of the addresses that a block may
    // have.
    for_some_from_to(0x80000000, 0xFFFFFFFF, [](unsigned int bytes) {
        EXPECT_EQ(gateway::allocate(bytes, 16), nullptr) << bytes;
        EXPECT_EQ(gateway::allocate(bytes), nullptr) << bytes;
    });
}

} // namespace
} // namespace load_test
