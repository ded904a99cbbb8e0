#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "largest_block.hpp"
#include "measure.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

namespace load_test {
namespace {

template <class T>
class ArrayLoad : public ::testing::Test {
protected:
    using array_type = v2::utility::array<T>;

    // As many as the bytes of the largest block carry.
    static unsigned int most_elements() {
        return largest_block() / static_cast<unsigned int>(sizeof(T));
    }
    static std::string name_of(unsigned int count) {
        return std::to_string(count) + " elements of " + std::to_string(sizeof(T)) + " bytes";
    }
};

using plain_elements = ::testing::Types<bool, char, short, int, long long, float, long double>;
using elements =
    ::testing::Types<char, short, int, long long, long double, v2::utility::string, v2::io_value>;
using wide_elements =
    ::testing::Types<short, int, long long, long double, v2::utility::string, v2::io_value>;

TYPED_TEST_SUITE(ArrayLoad, elements);

TYPED_TEST(ArrayLoad, HoldsAsManyElementsAsFitTheLargestBlock) {
    unsigned int const count = share_of(this->most_elements());
    measured const figures("array, " + this->name_of(count));
    typename TestFixture::array_type const all(count);
    EXPECT_EQ(all.size(), count);
    EXPECT_TRUE(all.front() == TypeParam());
    EXPECT_TRUE(all[count / 2] == TypeParam());
    EXPECT_TRUE(all.back() == TypeParam());
}

TYPED_TEST(ArrayLoad, RaisesBadAllocFromThereToTheLimit) {
    using array = typename TestFixture::array_type;
    unsigned int const most = this->most_elements();
    if (has_wide_addresses) {
        ASSERT_EQ(most, array::max_size()); // nothing lies between
        return;
    }
    ASSERT_LT(most, array::max_size());
    for_some_from_to(most + 1, array::max_size(), [](unsigned int count) {
        EXPECT_EQ(outcome_of([count] { array const all(count); }), outcome::no_memory) << count;
    });
}

template <class T>
class WideArrayLoad : public ArrayLoad<T> {};
TYPED_TEST_SUITE(WideArrayLoad, wide_elements);

TYPED_TEST(WideArrayLoad, RefusesCountsWhoseBytesCannotBeStated) {
    using array = typename TestFixture::array_type;
    for_some_from_to(array::max_size() + 1, 0xFFFFFFFF, [](unsigned int count) {
        EXPECT_EQ(outcome_of([count] { array const all(count); }), outcome::no_such_count) << count;
    });
}

template <class T>
class PlainArrayLoad : public ArrayLoad<T> {};
TYPED_TEST_SUITE(PlainArrayLoad, plain_elements);

TYPED_TEST(PlainArrayLoad, IsFilledAtBothEndsOfTheLargestBlock) {
    unsigned int const count = this->most_elements();
    auto const last = static_cast<std::size_t>(count - 1);
    auto const all = TestFixture::array_type::filled(count, [last](TypeParam* first) {
        first[0] = TypeParam(1);
        first[last] = TypeParam(1);
    });
    EXPECT_EQ(all.size(), count);
    EXPECT_EQ(all.front(), TypeParam(1));
    EXPECT_EQ(all.back(), TypeParam(1));
    EXPECT_EQ(&all.back() - &all.front(), static_cast<std::ptrdiff_t>(last));
}

/// Walks over zeros that stand nowhere, so that a range may be as long as one likes.
class zeros {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = char;
    using difference_type = long long;
    using pointer = char const*;
    using reference = char;

    explicit zeros(long long position) : position_(position) {}
    char operator*() const { return 0; }
    zeros& operator++() {
        ++position_;
        return *this;
    }
    zeros operator++(int) { return zeros(position_++); }
    bool operator==(zeros const& other) const = default;

private:
    long long position_;
};

// Every count that can be said is one that can be stated, but a range can be longer.
TEST(ByteArrayLoad, RefusesARangeWhoseCountCannotBeStated) {
    using array = v2::utility::array<char>;
    auto const from_range = [] { array const all(zeros(0), zeros(0x100000000LL)); };
    EXPECT_EQ(outcome_of(from_range), outcome::no_such_count);
}

} // namespace
} // namespace load_test
