#include "raw_value.hpp"
#include "sample_payloads.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace values_test {
namespace {

using test_support::allocation_counter;

template <class T>
class ValueCopy : public ::testing::Test {
protected:
    ~ValueCopy() noexcept override = default; // that of a value may raise

    io_value const source = sample_value<T>();
};
TYPED_TEST_SUITE(ValueCopy, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(ValueCopy, HasTheTypeTheAlternativeAndTheContent) {
    io_value const copy(this->source);
    EXPECT_TRUE(same_content(copy, this->source));
    EXPECT_EQ(copy.index(), detail::index_of<TypeParam>);
}

TYPED_TEST(ValueCopy, LeavesTheSourceAsItWas) {
    value_image const before = image_of(this->source);
    io_value const copy(this->source);
    EXPECT_EQ(image_of(this->source), before);
    EXPECT_TRUE(same_content(this->source, sample_value<TypeParam>()));
}

TYPED_TEST(ValueCopy, SharesNoBlockOnAnyLevel) {
    io_value const copy(this->source);
    EXPECT_FALSE(shares_blocks(copy, this->source));
}

TYPED_TEST(ValueCopy, OutlivesItsSource) {
    auto* const original = new io_value(this->source);
    io_value const copy(*original);
    delete original;
    EXPECT_TRUE(same_content(copy, this->source));
}

TYPED_TEST(ValueCopy, GivesBackAllItsBlocks) {
    long long const before = test_support::live_blocks();
    { io_value const copy(this->source); }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TYPED_TEST(ValueCopy, AllocatesOnlyWhereThePayloadOwnsBlocks) {
    allocation_counter const counter;
    io_value const copy(this->source);
    EXPECT_EQ(counter.allocations() != 0, owns_blocks<TypeParam>);
}

TYPED_TEST(ValueCopy, LeaksNothingWhereMemoryIsExhausted) {
    io_value const& original = this->source;
    int const failures =
        test_support::count_survived_failures([&] { io_value const copy(original); });
    EXPECT_GE(failures, owns_blocks<TypeParam> ? 1 : 0);
}

TYPED_TEST(ValueCopy, KeepsAStatedType) {
    io_value const stated(io_data_type{types{99}, 3, 7, 5}, sample<TypeParam>());
    io_value const copy(stated);
    EXPECT_EQ(copy.data_type(), (io_data_type{types{99}, 3, 7, 5}));
    EXPECT_EQ(copy.index(), detail::index_of<TypeParam>);
}

TEST(CopyOfAnEmptyText, HasNoBlock) {
    io_value const source("");
    allocation_counter const counter;
    io_value const copy(source);
    EXPECT_EQ(counter.allocations(), 0U);
    ASSERT_EQ(copy.index(), 15);
    EXPECT_EQ(copy.get_if<utility::string>()->size(), 0U);
    EXPECT_EQ(copy.get_if<utility::string>()->data(), &utility::string::S_empty);
    EXPECT_EQ(read_at<void*>(copy, payload_offset + (sizeof(void*) == 4 ? 8 : 16)), nullptr);
}

TEST(CopyOfAText, IsOneTerminatedBlock) {
    io_value const source("level");
    allocation_counter const counter;
    io_value const copy(source);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 6U);
    EXPECT_STREQ(copy.get_if<utility::string>()->c_str(), "level");
}

TEST(CopyOfAnArray, IsOneBlockWhereTheElementsOwnNone) {
    io_value const source(array<int>(1023));
    io_value const larger(array<int>(1024));
    allocation_counter const counter;
    io_value const copy(source);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 4092U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 16U);
    io_value const larger_copy(larger);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 4096U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 32U);
}

TEST(CopyOfAnArray, HasNoBlockWhereItIsEmpty) {
    io_value const source{array<int>()};
    allocation_counter const counter;
    io_value const copy(source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(copy.index(), 20);
    EXPECT_EQ(copy.get_if<array<int>>()->data(), nullptr);
}

TEST(CopyOfAnArrayOfTexts, HasNoBlocksForEmptyElements) {
    io_value const source(array<utility::string>{"", utility::string("", 0), "level", "flow"});
    allocation_counter const counter;
    io_value const copy(source);
    EXPECT_EQ(counter.allocations(), 3U);
    EXPECT_TRUE(same_content(copy, source));
}

TEST(CopyOfAnObject, StaysNullWhereTheHandleIsNull) {
    io_object object;
    io_object const taken(std::move(object));
    io_value const source(io_data_type::object(0), std::move(object));
    io_value const copy(source);
    EXPECT_EQ(copy.index(), 16);
    EXPECT_EQ(impl_of(*copy.get_if<io_object>()), nullptr);
}

TEST(CopyOfAnArrayOfObjects, KeepsNullHandles) {
    array<io_object> objects(2);
    io_object const taken(std::move(objects[0]));
    io_value const source(std::move(objects));
    io_value const copy(source);
    auto const& copies = *copy.get_if<array<io_object>>();
    EXPECT_EQ(impl_of(copies[0]), nullptr);
    EXPECT_NE(impl_of(copies[1]), nullptr);
}

TEST(CopyOfNestedValues, HasObjectsOfItsOwn) {
    io_value const source(array<io_value>::of(array<io_value>::of(sample_object())));
    io_value const copy(source);
    auto const object_in = [](io_value const& value) {
        auto const& outer = *value.get_if<array<io_value>>();
        return impl_of(*(*outer[0].get_if<array<io_value>>())[0].get_if<io_object>());
    };
    EXPECT_NE(object_in(copy), object_in(source));
    EXPECT_TRUE(same_content(copy, source));
}

// Another module may store any byte as a truth value.
TEST(CopyOfATruthValue, KeepsTheByteAsItIs) {
    raw_value source(true);
    unsigned char const odd = 0x82;
    std::memcpy(reinterpret_cast<unsigned char*>(&*source) + payload_offset, &odd, 1);
    io_value const copy(*source);
    EXPECT_EQ(read_at<unsigned char>(copy, payload_offset), odd);
    io_value assigned;
    assigned = *source;
    EXPECT_EQ(read_at<unsigned char>(assigned, payload_offset), odd);
}

TEST(CopyOfTruthValues, KeepsTheBytesAsTheyAre) {
    unsigned char const odd[] = {0, 1, 2, 0xFF};
    array<bool> elements(4);
    std::memcpy(static_cast<void*>(elements.data()), odd, 4);
    io_value const source(std::move(elements));
    io_value const copy(source);
    EXPECT_EQ(std::memcmp(copy.get_if<array<bool>>()->data(), odd, 4), 0);
}

} // namespace
} // namespace values_test
