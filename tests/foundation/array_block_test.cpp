#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <limits>
#include <new>

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::has_wide_words;
using utility::array;

template <class T>
void expect_block(unsigned int count, unsigned int alignment) {
    void const* block = nullptr;
    {
        array<T> const elements(count);
        block = elements.data();
        auto const allocation = test_support::last_aligned_allocation();
        EXPECT_EQ(allocation.block, block);
        EXPECT_EQ(allocation.size, count * sizeof(T));
        EXPECT_EQ(allocation.alignment, alignment);
    }
    auto const release = test_support::last_aligned_release();
    EXPECT_EQ(release.block, block);
    EXPECT_EQ(release.size, count * sizeof(T));
    EXPECT_EQ(release.alignment, alignment);
}

TEST(ArrayBlock, IsAlignedBySize) {
    expect_block<int>(1, 16);
    expect_block<int>(1023, 16);
    expect_block<int>(1024, 32);
    expect_block<int>(1025, 32);
    expect_block<char>(4095, 16);
    expect_block<char>(4096, 32);
    expect_block<bool>(4096, 32);
    expect_block<short>(2047, 16);
    expect_block<short>(2048, 32);
    expect_block<double>(511, 16);
    expect_block<double>(512, 32);
}

TEST(ArrayBlock, OfTextsAndValuesIsAlignedBySize) {
    auto const texts = static_cast<unsigned int>(4096 / sizeof(utility::string));
    expect_block<utility::string>(texts, 16); // no multiple of its size is 4096
    expect_block<utility::string>(texts + 1, 32);
    auto const values = static_cast<unsigned int>(4096 / sizeof(io_value));
    expect_block<io_value>(values, 16);
    expect_block<io_value>(values + 1, 32);
}

TEST(ArrayBlock, ReplacedByAssignmentIsReleasedByItsOwnSize) {
    array<int> target(1024);
    array<int> const source(3);
    allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.releases(), 1U); // our operators have compared size and alignment
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 12U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 16U);
}

TEST(ArrayBlock, ThatIsMissingIsReleasedAsNull) {
    allocation_counter const counter;
    { array<int> const none; }
    EXPECT_EQ(counter.null_releases(), 1U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(test_support::last_aligned_release().block, nullptr);
    EXPECT_EQ(test_support::last_aligned_release().size, 0U);
}

// A compiler that foresees a count warns of the block that is refused here.
unsigned int unforeseen(unsigned int count) {
    unsigned int volatile const opaque = count;
    return opaque;
}

template <class T>
class ArrayLimit : public ::testing::Test {
public:
    // The largest count whose bytes can be stated in 32 bits.
    static unsigned int limit() { return unforeseen(largest()); }

private:
    static constexpr unsigned int largest() {
        if (sizeof(T) == 1) return 0xFFFFFFFF;
        if (sizeof(T) == 2) return 0x7FFFFFFF;
        if (sizeof(T) == 4) return 0x3FFFFFFF;
        if (sizeof(T) == 8) return 0x1FFFFFFF;
        if (sizeof(T) == 48) return 89478485;
        return static_cast<unsigned int>(0xFFFFFFFFULL / sizeof(T));
    }
};

using limited_types = ::testing::Types<bool,
                                       char,
                                       unsigned char,
                                       short,
                                       unsigned short,
                                       int,
                                       float,
                                       long long,
                                       double,
                                       utility::string,
                                       io_value,
                                       array<int>>;
TYPED_TEST_SUITE(ArrayLimit, limited_types);

TYPED_TEST(ArrayLimit, IsTheLargestSize) {
    EXPECT_EQ(array<TypeParam>::max_size(), this->limit());
}

TYPED_TEST(ArrayLimit, IsAskedOfMemory) {
    allocation_counter const counter;
    allocation_failure const failure(1);
    EXPECT_THROW(array<TypeParam> const elements(this->limit()), std::bad_alloc);
    // Where sizes have 32 bits, so large a block is refused before memory is asked.
    bool const is_asked = has_wide_words;
    EXPECT_EQ(counter.allocations(), is_asked ? 1U : 0U);
    EXPECT_EQ(failure.hit(), is_asked);
}

template <class T>
class ArrayLimitOfWideElements : public ArrayLimit<T> {};
using wide_types = ::testing::Types<short,
                                    unsigned short,
                                    int,
                                    float,
                                    long long,
                                    double,
                                    utility::string,
                                    io_value,
                                    array<int>>;
TYPED_TEST_SUITE(ArrayLimitOfWideElements, wide_types);

TYPED_TEST(ArrayLimitOfWideElements, IsRefusedOneBeyond) {
    allocation_counter const counter;
    EXPECT_THROW(array<TypeParam> const elements(this->limit() + 1), std::bad_array_new_length);
    EXPECT_THROW(array<TypeParam> const elements(unforeseen(0xFFFFFFFF)),
                 std::bad_array_new_length);
    EXPECT_EQ(counter.allocations(), 0U);
}

// Gives one element as often as it is asked to; the distance alone is long.
template <class T, class Distance>
class repeated {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = T;
    using difference_type = Distance;
    using pointer = T const*;
    using reference = T const&;

    explicit repeated(Distance position) : position_(position) {}
    reference operator*() const {
        static T const element{};
        return element;
    }
    repeated& operator++() {
        ++position_;
        return *this;
    }
    repeated operator++(int) { return repeated(position_++); }
    friend repeated operator+(repeated from, Distance steps) {
        return repeated(from.position_ + steps);
    }
    friend Distance operator-(repeated left, repeated right) {
        return left.position_ - right.position_;
    }
    friend bool operator==(repeated left, repeated right) {
        return left.position_ == right.position_;
    }
    friend bool operator!=(repeated left, repeated right) { return !(left == right); }

private:
    Distance position_;
};

template <class T, class Distance>
void make_repeated(Distance count) {
    Distance volatile const opaque = count;
    array<T> const elements(repeated<T, Distance>(0), repeated<T, Distance>(opaque));
}

TEST(ArrayLimit, HoldsForTheDistanceOfARange) {
    EXPECT_THROW(make_repeated<int>(std::ptrdiff_t{0x40000000}), std::bad_array_new_length);
    allocation_failure const failure(1);
    EXPECT_THROW(make_repeated<int>(std::ptrdiff_t{0x3FFFFFFF}), std::bad_alloc);
    EXPECT_EQ(failure.hit(), has_wide_words);
}

TEST(ArrayLimit, HoldsForADistanceBeyond32Bits) {
    for (long long const distance :
         {0x100000000LL, 0x100000003LL, 0x200000001LL, std::numeric_limits<long long>::max()}) {
        EXPECT_THROW(make_repeated<char>(distance), std::bad_array_new_length) << distance;
        EXPECT_THROW(make_repeated<int>(distance), std::bad_array_new_length) << distance;
        EXPECT_THROW(make_repeated<io_value>(distance), std::bad_array_new_length) << distance;
    }
}

TEST(ArrayLimit, DoesNotApplyToANegativeDistance) {
    allocation_counter const counter;
    make_repeated<char>(-1LL);
    make_repeated<int>(-0x100000000LL);
    make_repeated<int>(std::numeric_limits<long long>::min());
    EXPECT_EQ(counter.allocations(), 0U);
}

} // namespace
