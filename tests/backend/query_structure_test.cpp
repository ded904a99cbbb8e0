#include <tavi/ioapi/v2/backend_query.hpp>

#include "asked_host.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using backend_test::host_failure;
using backend_test::looked_up_type;
using test_support::impl_of;
using test_support::live_blocks;

// How a structure comes to a host.
class BackendQueryStructure : public backend_test::asked_host,
                              public ::testing::WithParamInterface<bool> {
protected:
    void hand_over(io_structure_type structure) {
        if (GetParam()) {
            (void)query.register_structure_type(name, std::move(structure), error);
        } else {
            query.replace_structure_type(type, std::move(structure), error);
        }
    }
};

TEST_P(BackendQueryStructure, IsMovedToTheHost) {
    io_structure_type structure("a", {{"member", looked_up_type}});
    void const* const impl = impl_of(structure);
    hand_over(std::move(structure));
    auto const calls_made = host.take_calls();
    ASSERT_EQ(calls_made.size(), 1U);
    EXPECT_EQ(calls_made[0].structure_impl, impl) << "a copy";
    EXPECT_EQ(impl_of(structure), nullptr);
}

TEST_P(BackendQueryStructure, StaysTheCallersWhereItIsCopied) {
    io_structure_type const structure("a", {{"member", looked_up_type}});
    hand_over(structure);
    auto const calls_made = host.take_calls();
    ASSERT_EQ(calls_made.size(), 1U);
    EXPECT_NE(calls_made[0].structure_impl, impl_of(structure));
    EXPECT_EQ(structure.name(), "a");
    EXPECT_TRUE(structure.has_member("member"));
}

TEST_P(BackendQueryStructure, MayBeTakenByTheHost) {
    io_structure_type taken;
    host.structure_taker = &taken;
    hand_over(io_structure_type("a", {{"member", looked_up_type}}));
    EXPECT_EQ(taken.name(), "a");
    EXPECT_EQ(taken.get_member("member"), looked_up_type);
    auto const calls_made = host.take_calls();
    ASSERT_EQ(calls_made.size(), 1U);
    EXPECT_EQ(impl_of(taken), calls_made[0].structure_impl);
}

TEST_P(BackendQueryStructure, IsDestroyedBehindTheCall) {
    auto const before = live_blocks();
    hand_over(io_structure_type("a", {{"member", looked_up_type}}));
    (void)host.take_calls();
    EXPECT_EQ(live_blocks(), before);
}

TEST_P(BackendQueryStructure, IsDestroyedWhereTheHostThrows) {
    auto const before = live_blocks();
    host.failure = host_failure{5};
    for (int round = 0; round < 3; ++round) {
        EXPECT_THROW(hand_over(io_structure_type("a", {{"member", looked_up_type}})), host_failure);
        (void)host.take_calls();
        EXPECT_EQ(live_blocks(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, BackendQueryStructure, ::testing::Bool(), [](auto const& row) {
    return row.param ? "Registered" : "Replaced";
});

} // namespace
