#include "foundation/growing_list.hpp"
#include "scarce_list.hpp"
#include "support/allocations.hpp"
#include "support/length_error.hpp"
#include "support/tracked.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::scarce;
using scarce_list = std::vector<scarce>;
using scarce_view = utility::data_view<scarce const>;
using test_support::length_error_of;

TEST(CheckedCount, PassesUpToTheLimit) {
    for (std::size_t const count : {0U, 1U, 4U, 5U}) {
        EXPECT_EQ(detail::checked_count<scarce>(count), count);
    }
}

TEST(CheckedCount, IsRefusedBeyondTheLimit) {
    for (std::size_t const count : {std::size_t{6}, static_cast<std::size_t>(-1)}) {
        EXPECT_EQ(length_error_of([&] { (void)detail::checked_count<scarce>(count); }),
                  "cannot create std::vector larger than max_size()");
    }
}

TEST(ListOfAView, HasCopiesInOrder) {
    scarce const elements[] = {{3}, {1}, {2}, {1}, {5}};
    for (unsigned int const count : {1U, 3U, 5U}) {
        scarce_list const list = detail::list_of<scarce>(scarce_view(elements, count));
        ASSERT_EQ(list.size(), count);
        EXPECT_EQ(list.capacity(), count);
        EXPECT_NE(list.data(), elements);
        for (unsigned int i = 0; i < count; ++i) EXPECT_EQ(list[i].number, elements[i].number);
    }
}

TEST(ListOfAView, IsEmptyWithoutABlockForAnEmptyView) {
    test_support::allocation_counter const counter;
    EXPECT_TRUE(detail::list_of<scarce>(scarce_view()).empty());
    EXPECT_EQ(counter.allocations(), 0U);
}

// There is not one element behind the view: whoever reads it ends the program.
TEST(ListOfAView, IsRefusedBeyondTheLimitBeforeAnythingIsRead) {
    for (unsigned int const count : {6U, 0xFFFFFFFFU}) {
        EXPECT_EQ(
            length_error_of([&] { (void)detail::list_of<scarce>(scarce_view(nullptr, count)); }),
            "cannot create std::vector larger than max_size()");
    }
}

TEST(ListOfAView, LeavesNothingWhereMemoryIsExhausted) {
    scarce const elements[] = {{3}, {1}};
    EXPECT_EQ(test_support::count_survived_failures(
                  [&] { (void)detail::list_of<scarce>(scarce_view(elements)); }),
              1);
}

TEST(ListOfAView, LeavesNothingWhereAnElementCannotBeCopied) {
    using test_support::tracked;
    tracked::history = {};
    long long const before = test_support::live_blocks();
    {
        tracked const elements[] = {1, 2, 3};
        tracked::history.constructions_left = 3;
        utility::data_view<tracked const> const view(elements);
        EXPECT_THROW((void)detail::list_of<tracked>(view), test_support::element_failure);
        tracked::history.constructions_left = -1;
        EXPECT_EQ(tracked::history.alive, 3);
    }
    tracked::history = {};
    EXPECT_EQ(test_support::live_blocks(), before);
}

} // namespace
