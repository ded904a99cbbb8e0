#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>

#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using tavi::ioapi::v2::plc_identifier;
using tavi::ioapi::v2::utility::data_view;

TEST(DataView, IsEmptyAndNullByDefault) {
    constexpr data_view<int const> view;
    static_assert(view.data() == nullptr && view.size() == 0 && view.empty());
    EXPECT_EQ(view.begin(), view.end());
}

TEST(DataView, RefersToPointerAndCount) {
    int const numbers[] = {1, 2, 3};
    data_view<int const> const view(numbers, 2);
    EXPECT_EQ(view.data(), numbers);
    EXPECT_EQ(view.size(), 2U);
    EXPECT_EQ(view.front(), 1);
    EXPECT_EQ(view.back(), 2);
    EXPECT_EQ(view[1], 2);
    EXPECT_EQ(view.end() - view.begin(), 2);
}

TEST(DataView, TakesNullWithCountZero) {
    data_view<int const> const view(nullptr, 0);
    EXPECT_TRUE(view.empty());
}

TEST(DataView, IsMadeFromEveryContiguousContainer) {
    std::vector<int> const numbers{1, 2, 3};
    data_view<int const> const of_vector = numbers;
    EXPECT_EQ(of_vector.data(), numbers.data());
    EXPECT_EQ(of_vector.size(), 3U);

    std::array<int, 2> const fixed{4, 5};
    EXPECT_EQ(data_view<int const>(fixed).data(), fixed.data());

    int const plain[] = {6, 7, 8, 9};
    data_view<int const> const of_plain = plain;
    EXPECT_EQ(of_plain.data(), plain);
    EXPECT_EQ(of_plain.size(), 4U);

    tavi::ioapi::v2::utility::array<int> const own{1, 2};
    data_view<int const> const of_own = own;
    EXPECT_EQ(of_own.data(), own.data());
    EXPECT_EQ(of_own.size(), 2U);
}

TEST(DataView, IsAnArgumentForAllElementsOfATemporary) {
    auto const sum = [](data_view<int const> numbers) {
        int total = 0;
        for (int const number : numbers) total += number;
        return total;
    };
    EXPECT_EQ(sum(std::vector<int>{1, 2, 3}), 6);
    EXPECT_EQ(sum({}), 0);
}

TEST(DataView, OfMutableElementsWritesThrough) {
    std::vector<int> numbers{1, 2};
    data_view<int> const view = numbers;
    view[0] = 7;
    for (int& number : view) ++number;
    EXPECT_EQ(numbers, (std::vector<int>{8, 3}));
}

TEST(DataView, OfMutableElementsBecomesOneOfConstants) {
    int numbers[] = {1, 2};
    data_view<int> const writable(numbers);
    data_view<int const> const readable = writable;
    EXPECT_EQ(readable.data(), numbers);
    EXPECT_EQ(readable.size(), 2U);
    static_assert(!std::is_constructible_v<data_view<int>, data_view<int const>>);
    static_assert(!std::is_constructible_v<data_view<int>, std::vector<int> const&>);
}

TEST(DataView, RefusesOtherElements) {
    static_assert(!std::is_constructible_v<data_view<int const>, std::vector<long> const&>);
    static_assert(!std::is_constructible_v<data_view<int const>, int>);
    struct base {};
    struct derived : base {
        int more = 0;
    };
    static_assert(!std::is_constructible_v<data_view<base const>, std::vector<derived> const&>,
                  "its elements are wider");
}

TEST(DataView, ServesEveryElementClass) {
    std::vector<plc_identifier> const identifiers(2);
    data_view<plc_identifier const> const view = identifiers;
    EXPECT_EQ(view.size(), 2U);
}

// A container that claims a size without having the elements.
struct claimed_range {
    std::size_t claimed;
    [[nodiscard]] int const* data() const { return nullptr; }
    [[nodiscard]] std::size_t size() const { return claimed; }
};

TEST(DataView, TakesACountOf32Bits) {
    EXPECT_EQ(data_view<int const>(claimed_range{0xFFFFFFFF}).size(), 0xFFFFFFFFU);
}

TEST(DataView, RefusesACountBeyond32Bits) {
    if constexpr (!test_support::has_wide_words) {
        GTEST_SKIP() << "no size of this platform is wider";
    }
    claimed_range const range{static_cast<std::size_t>(0x100000000ULL)};
    EXPECT_THROW(static_cast<void>(data_view<int const>(range)), std::length_error);
}

TEST(DataView, StandsAsPointerThenCount) {
    int const numbers[] = {1, 2, 3};
    data_view<int const> const view(numbers);
    EXPECT_EQ(test_support::field_at<int const*>(view, 0), numbers);
    EXPECT_EQ(test_support::field_at<unsigned int>(view, sizeof(void*)), 3U);
    static_assert(sizeof(view) == test_support::by_word(8, 16));
}

} // namespace
