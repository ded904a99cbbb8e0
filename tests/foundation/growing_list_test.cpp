#include "foundation/growing_list.hpp"
#include "scarce_list.hpp"
#include "support/allocations.hpp"
#include "support/length_error.hpp"
#include "support/tracked.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::scarce;
using foundation_test::small_limit;
using test_support::length_error_of;
using scarce_list = std::vector<scarce>;

scarce_list scarce_elements(std::size_t count) {
    scarce_list result;
    for (std::size_t i = 0; i < count; ++i) detail::append(result, {static_cast<int>(i)});
    return result;
}

TEST(GrownCapacity, IsTwiceTheSizeUpToTheLimit) {
    struct row {
        std::size_t size, limit, capacity;
    };
    for (row const& r : std::initializer_list<row>{{0, 100, 1},
                                                   {1, 100, 2},
                                                   {2, 100, 4},
                                                   {3, 100, 6},
                                                   {4, 100, 8},
                                                   {49, 100, 98},
                                                   {50, 100, 100},
                                                   {51, 100, 100},
                                                   {99, 100, 100},
                                                   {0, 1, 1},
                                                   {268435455, 536870911, 536870910},
                                                   {268435456, 536870911, 536870911},
                                                   {536870910, 536870911, 536870911},
                                                   {89478484, 89478485, 89478485}}) {
        EXPECT_EQ(detail::grown_capacity(r.size, r.limit), r.capacity) << r.size;
    }
}

TEST(GrownCapacity, DoesNotWrap) {
    constexpr std::size_t most = static_cast<std::size_t>(-1);
    EXPECT_EQ(detail::grown_capacity(most / 2 + 1, most), most);
    EXPECT_EQ(detail::grown_capacity(most - 1, most), most);
}

TEST(GrownCapacity, IsRefusedAtTheLimit) {
    for (std::size_t const limit : {0U, 1U, 5U, 536870911U}) {
        EXPECT_EQ(length_error_of([&] { (void)detail::grown_capacity(limit, limit); }),
                  "vector::_M_realloc_insert")
            << limit;
        EXPECT_EQ(length_error_of([&] { (void)detail::grown_capacity(limit + 1, limit); }),
                  "vector::_M_realloc_insert")
            << limit;
    }
}

TEST(GrowingList, HasTheSmallLimitInThisTest) {
    EXPECT_EQ(scarce_list().max_size(), small_limit);
}

TEST(GrowingList, DoublesUpToItsLimit) {
    scarce_list list;
    std::vector<std::size_t> capacities;
    for (int i = 0; i < 5; ++i) {
        detail::append(list, {i});
        capacities.push_back(list.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<std::size_t>{1, 2, 4, 4, 5}));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(list[static_cast<std::size_t>(i)].number, i);
}

TEST(GrowingList, DoublesWithoutEndWhereItsLimitIsFarAway) {
    std::vector<int> list;
    std::vector<std::size_t> capacities;
    for (int i = 0; i < 9; ++i) {
        detail::append(list, i);
        capacities.push_back(list.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<std::size_t>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
}

TEST(GrowingList, IsUnchangedByAnElementBeyondItsLimit) {
    scarce_list list = scarce_elements(small_limit);
    auto const* const block = list.data();
    EXPECT_EQ(length_error_of([&] { detail::append(list, {9}); }), "vector::_M_realloc_insert");
    EXPECT_EQ(length_error_of([&] { detail::make_room(list); }), "vector::_M_realloc_insert");
    EXPECT_EQ(list.size(), small_limit);
    EXPECT_EQ(list.data(), block);
    for (std::size_t i = 0; i < small_limit; ++i) EXPECT_EQ(list[i].number, static_cast<int>(i));
}

TEST(GrowingList, RefusesToReserveBeyondItsLimit) {
    scarce_list list = scarce_elements(2);
    EXPECT_EQ(length_error_of([&] { detail::reserve(list, small_limit + 1); }), "vector::reserve");
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(list.capacity(), 2U);
    detail::reserve(list, small_limit);
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(list.capacity(), small_limit);
}

TEST(GrowingList, RefusesASizeBeyondItsLimit) {
    scarce_list list = scarce_elements(2);
    EXPECT_EQ(length_error_of([&] { detail::resize(list, small_limit + 1); }),
              "vector::_M_default_append");
    EXPECT_EQ(list.size(), 2U);
    detail::resize(list, small_limit);
    ASSERT_EQ(list.size(), small_limit);
    EXPECT_EQ(list[1].number, 1);
    EXPECT_EQ(list[4].number, 0);
    detail::resize(list, 1);
    EXPECT_EQ(list.size(), 1U);
}

TEST(GrowingList, MakesRoomOnlyWhereThereIsNone) {
    scarce_list list = scarce_elements(3);
    auto const* const block = list.data();
    detail::make_room(list);
    EXPECT_EQ(list.data(), block);
    EXPECT_EQ(list.capacity(), 4U);
    EXPECT_EQ(list.size(), 3U);
    detail::append(list, {3});
    detail::make_room(list);
    EXPECT_EQ(list.capacity(), 5U);
    EXPECT_EQ(list.size(), 4U);
}

TEST(GrowingList, IsUnchangedWhereMemoryIsExhausted) {
    for (std::size_t const size : {0U, 1U, 2U, 4U}) {
        scarce_list list = scarce_elements(size);
        auto const* const block = list.data();
        {
            test_support::allocation_failure const failure(1);
            EXPECT_THROW(detail::append(list, {9}), std::bad_alloc);
        }
        EXPECT_EQ(list.size(), size);
        EXPECT_EQ(list.data(), block);
        detail::append(list, {9});
        EXPECT_EQ(list.back().number, 9);
    }
}

TEST(GrowingList, IsRefusedMoreThanItsLimit) {
    scarce_list list = scarce_elements(2);
    EXPECT_EQ(length_error_of([&] { detail::reserve(list, small_limit + 1); }), "vector::reserve");
    EXPECT_EQ(length_error_of([&] { detail::resize(list, small_limit + 1); }),
              "vector::_M_default_append");
    EXPECT_EQ(list.size(), 2U);
    detail::reserve(list, small_limit);
    EXPECT_EQ(list.capacity(), small_limit);
    detail::resize(list, small_limit);
    EXPECT_EQ(list.size(), small_limit);
}

TEST(GrowingList, IsRefusedMoreThanTheInterfaceCanState) {
    if constexpr (sizeof(std::size_t) > 4) {
        auto const beyond = static_cast<std::size_t>(4294967296ULL);
        std::vector<char> list;
        EXPECT_EQ(length_error_of([&] { detail::reserve(list, beyond); }), "vector::reserve");
        EXPECT_EQ(length_error_of([&] { detail::resize(list, beyond); }),
                  "vector::_M_default_append");
        EXPECT_EQ(list.capacity(), 0U);
    }
}

TEST(GrowingList, MovesTheElement) {
    std::vector<std::unique_ptr<int>> list;
    auto element = std::make_unique<int>(7);
    int const* const address = element.get();
    detail::append(list, std::move(element));
    EXPECT_EQ(list.back().get(), address);
}

TEST(GrowingList, IsUnchangedWhereAnElementCannotBeCopied) {
    using test_support::tracked;
    tracked::history = {};
    {
        std::vector<tracked> list;
        for (int i = 0; i < 4; ++i) detail::append<tracked>(list, i);
        tracked::history.constructions_left = 3;
        EXPECT_THROW(detail::make_room(list), test_support::element_failure);
        tracked::history.constructions_left = -1;
        ASSERT_EQ(list.size(), 4U);
        EXPECT_EQ(list.capacity(), 4U);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(list[static_cast<std::size_t>(i)].id, i);
    }
    EXPECT_EQ(tracked::history.alive, 0);
}

} // namespace
