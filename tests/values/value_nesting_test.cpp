#include "deep_stack.hpp"
#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace values_test {
namespace {

constexpr int depth = 10000;

io_value nested() {
    io_value value("innermost");
    for (int level = 0; level < depth; ++level) {
        array<io_value> wrapper(1);
        wrapper[0] = std::move(value);
        value = io_value(std::move(wrapper));
    }
    return value;
}

io_value const& innermost(io_value const& value) {
    io_value const* at = &value;
    while (auto const* const elements = at->get_if<array<io_value>>()) at = &(*elements)[0];
    return *at;
}

TEST(NestedValue, IsBuiltAndDestroyedTenThousandLevelsDeep) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value const value = nested();
        EXPECT_TRUE(same_content(innermost(value), io_value("innermost")));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(NestedValue, IsCopiedTenThousandLevelsDeep) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value const value = nested();
        test_support::allocation_counter const counter;
        io_value const copy(value);
        EXPECT_EQ(counter.allocations(), depth + 1U);
        EXPECT_NE(&innermost(copy), &innermost(value));
        EXPECT_TRUE(same_content(innermost(copy), innermost(value)));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(NestedValue, IsMovedWithoutAnAllocation) {
    run_on_deep_stack([] {
        io_value value = nested();
        test_support::allocation_counter const counter;
        io_value const moved(std::move(value));
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_TRUE(is_exactly_empty(value));
    });
}

TEST(NestedValue, TakesThePlaceOfTheOneThatHoldsIt) {
    long long const before = test_support::live_blocks();
    run_on_deep_stack([] {
        io_value value = nested();
        value = innermost(value);
        EXPECT_TRUE(same_content(value, io_value("innermost")));
    });
    EXPECT_EQ(test_support::live_blocks(), before);
}

} // namespace
} // namespace values_test
