#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace values_test {
namespace {

// Unwrapping: a value takes the place of the array that holds it.

io_value wrapped(io_value inner) {
    array<io_value> elements(3);
    elements[0] = 1;
    elements[1] = std::move(inner);
    elements[2] = "behind";
    return io_value(std::move(elements));
}

io_value& element_of(io_value& value) {
    return const_cast<io_value&>((*value.get_if<array<io_value>>())[1]);
}

class ValueFromItsOwnElement : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(test_support::live_blocks(), before); }
    long long const before = test_support::live_blocks();
};

TEST_F(ValueFromItsOwnElement, IsCopied) {
    io_value value = wrapped("pump station");
    value = std::as_const(element_of(value));
    EXPECT_TRUE(same_content(value, io_value("pump station")));
}

TEST_F(ValueFromItsOwnElement, IsCopiedByName) {
    io_value value = wrapped(sample_object());
    value.assign(std::as_const(element_of(value)));
    EXPECT_TRUE(same_content(value, io_value(sample_object())));
}

TEST_F(ValueFromItsOwnElement, IsMoved) {
    io_value value = wrapped("pump station");
    void const* const block = block_of(element_of(value));
    test_support::allocation_counter const counter;
    value = std::move(element_of(value));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(value), block);
    EXPECT_TRUE(same_content(value, io_value("pump station")));
}

TEST_F(ValueFromItsOwnElement, IsMovedByName) {
    io_value value = wrapped(sample<array<io_object>>());
    value.assign(std::move(element_of(value)));
    EXPECT_TRUE(same_content(value, io_value(sample<array<io_object>>())));
}

TEST_F(ValueFromItsOwnElement, IsCopiedFromTwoLevelsDown) {
    io_value value = wrapped(wrapped(array<int>{1, 2, 3}));
    value = std::as_const(element_of(element_of(value)));
    EXPECT_TRUE(same_content(value, io_value(array<int>{1, 2, 3})));
}

TEST_F(ValueFromItsOwnElement, IsMovedFromTwoLevelsDown) {
    io_value value = wrapped(wrapped(array<int>{1, 2, 3}));
    value = std::move(element_of(element_of(value)));
    EXPECT_TRUE(same_content(value, io_value(array<int>{1, 2, 3})));
}

TEST_F(ValueFromItsOwnElement, MayBeAnArrayOfValuesAgain) {
    io_value copied = wrapped(wrapped("inner"));
    copied = std::as_const(element_of(copied));
    EXPECT_TRUE(same_content(copied, wrapped("inner")));
    io_value moved = wrapped(wrapped("inner"));
    moved = std::move(element_of(moved));
    EXPECT_TRUE(same_content(moved, wrapped("inner")));
}

TEST_F(ValueFromItsOwnElement, MayBeTheEmptyValue) {
    io_value value = wrapped(io_value());
    value = std::as_const(element_of(value));
    EXPECT_TRUE(is_exactly_empty(value));
}

TEST_F(ValueFromItsOwnElement, KeepsAStatedType) {
    io_data_type const stated{types::object, 7, 2, 5};
    io_value value = wrapped(io_value(stated, 5));
    value = std::as_const(element_of(value));
    EXPECT_EQ(value.data_type(), stated);
    EXPECT_EQ(*value.get_if<int>(), 5);
}

TEST_F(ValueFromItsOwnElement, IsFoundUnderManyLevels) {
    io_value value("innermost");
    for (int level = 0; level < 50; ++level) value = wrapped(std::move(value));
    io_value* innermost = &value;
    for (int level = 0; level < 50; ++level) innermost = &element_of(*innermost);
    value = std::as_const(*innermost);
    EXPECT_TRUE(same_content(value, io_value("innermost")));
}

TEST_F(ValueFromItsOwnElement, LeavesTheTargetAsItWasWhereTheFirstCopyFails) {
    io_value value = wrapped("pump station");
    bool raised = false;
    {
        test_support::allocation_failure const failure(1);
        try {
            value = std::as_const(element_of(value));
        } catch (std::bad_alloc const&) {
            raised = true;
        }
    }
    EXPECT_TRUE(raised);
    EXPECT_TRUE(same_content(value, wrapped("pump station")));
}

TEST_F(ValueFromItsOwnElement, IsNoMatterForOneElementFromAnother) {
    io_value value = wrapped("pump station");
    auto& elements = const_cast<array<io_value>&>(*value.get_if<array<io_value>>());
    elements[2] = elements[1];
    elements[0] = std::move(elements[1]);
    EXPECT_TRUE(same_content(elements[0], io_value("pump station")));
    EXPECT_TRUE(is_exactly_empty(elements[1]));
    EXPECT_TRUE(same_content(elements[2], io_value("pump station")));
}

} // namespace
} // namespace values_test
