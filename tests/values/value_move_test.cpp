#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace values_test {
namespace {

using test_support::allocation_counter;

template <class T>
class ValueMove : public ::testing::Test {
protected:
    ~ValueMove() noexcept override = default; // that of a value may raise

    io_value const original = sample_value<T>();
    io_value source = sample_value<T>();
};
TYPED_TEST_SUITE(ValueMove, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(ValueMove, ConstructionTakesTypeAndContent) {
    io_value const target(std::move(this->source));
    EXPECT_TRUE(same_content(target, this->original));
}

TYPED_TEST(ValueMove, ConstructionTakesTheBlock) {
    void const* const block = block_of(this->source);
    io_value const target(std::move(this->source));
    EXPECT_EQ(block_of(target), block);
}

TYPED_TEST(ValueMove, ConstructionLeavesExactlyTheEmptyValue) {
    io_value const target(std::move(this->source));
    EXPECT_TRUE(is_exactly_empty(this->source));
}

TYPED_TEST(ValueMove, ConstructionTouchesNoBlock) {
    allocation_counter const counter;
    io_value const target(std::move(this->source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
}

TYPED_TEST(ValueMove, AssignmentTakesTypeAndContent) {
    io_value target("old content");
    io_value& result = target = std::move(this->source);
    EXPECT_EQ(&result, &target);
    EXPECT_TRUE(same_content(target, this->original));
}

TYPED_TEST(ValueMove, AssignmentTakesTheBlock) {
    void const* const block = block_of(this->source);
    io_value target(array<utility::string>{"old", "content"});
    target = std::move(this->source);
    EXPECT_EQ(block_of(target), block);
}

TYPED_TEST(ValueMove, AssignmentLeavesExactlyTheEmptyValue) {
    io_value target(sample_object());
    target.assign(std::move(this->source));
    EXPECT_TRUE(is_exactly_empty(this->source));
}

TYPED_TEST(ValueMove, AssignmentAllocatesNothing) {
    io_value target("old content");
    allocation_counter const counter;
    target = std::move(this->source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 1U);
}

TYPED_TEST(ValueMove, LeavesAValueForAnyUse) {
    io_value moved(std::move(this->source));
    io_error error;
    EXPECT_EQ(detail::get_as<int>(this->source, error), 0);
    EXPECT_TRUE(error.ok());
    io_value const copy(this->source);
    EXPECT_TRUE(is_exactly_empty(copy));
    this->source = moved;
    EXPECT_TRUE(same_content(this->source, this->original));
}

TYPED_TEST(ValueMove, KeepsAStatedType) {
    io_value stated(io_data_type{types{99}, 3, 7, 5}, sample<TypeParam>());
    io_value assigned;
    io_value constructed(std::move(stated));
    EXPECT_EQ(constructed.data_type(), (io_data_type{types{99}, 3, 7, 5}));
    assigned = std::move(constructed);
    EXPECT_EQ(assigned.data_type(), (io_data_type{types{99}, 3, 7, 5}));
    EXPECT_TRUE(is_exactly_empty(constructed));
}

TYPED_TEST(ValueMove, HappensInReturnAndSwap) {
    io_value other(5);
    std::swap(this->source, other);
    EXPECT_TRUE(same_content(other, this->original));
    EXPECT_EQ(this->source.index(), 4);
}

} // namespace
} // namespace values_test
