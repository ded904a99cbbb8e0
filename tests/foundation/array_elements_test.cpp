#include <tavi/ioapi/v2/utility/array.hpp>

#include "support/allocations.hpp"
#include "support/raw_text.hpp"
#include "support/tracked.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using tavi::ioapi::v2::utility::array;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::element_failure;
using test_support::fragile;
using test_support::tracked;
using calls = std::vector<std::string>;

// Elements that tell what happens to them; `fragile` ones may throw from their destructor.
template <class Element>
class ArrayElements : public ::testing::Test {
protected:
    ArrayElements() { Element::history = {}; }

    static array<Element> three() { return array<Element>::of(1, 2, 3); }
    static calls take_calls() { return std::exchange(Element::history.calls, {}); }
    static int alive() { return Element::history.alive; }
};

using element_classes = ::testing::Types<tracked, fragile>;
TYPED_TEST_SUITE(ArrayElements, element_classes);

TYPED_TEST(ArrayElements, AreMadeInOrder) {
    array<TypeParam> const elements(3);
    EXPECT_EQ(this->take_calls(), (calls{"make 0", "make 0", "make 0"}));
}

TYPED_TEST(ArrayElements, AreCopiedInOrder) {
    auto const source = this->three();
    this->take_calls();
    array<TypeParam> const copy(source);
    EXPECT_EQ(this->take_calls(), (calls{"copy 1", "copy 2", "copy 3"}));
}

TYPED_TEST(ArrayElements, AreDestroyedFromTheLastToTheFirst) {
    {
        auto const elements = this->three();
        this->take_calls();
    }
    EXPECT_EQ(this->take_calls(), (calls{"destroy 3", "destroy 2", "destroy 1"}));
    EXPECT_EQ(this->alive(), 0);
}

TYPED_TEST(ArrayElements, AreNotTouchedByAMove) {
    auto source = this->three();
    this->take_calls();
    array<TypeParam> target(std::move(source));
    array<TypeParam> other;
    other = std::move(target);
    EXPECT_EQ(this->take_calls(), calls{});
    EXPECT_EQ(other.size(), 3U);
}

TYPED_TEST(ArrayElements, AreDestroyedBeforeAMoveAssignmentEnds) {
    auto target = this->three();
    array<TypeParam> source(1);
    this->take_calls();
    target = std::move(source);
    EXPECT_EQ(this->take_calls(), (calls{"destroy 3", "destroy 2", "destroy 1"}));
}

TYPED_TEST(ArrayElements, AreUndoneWhenMakingOneFails) {
    for (int failing = 1; failing <= 3; ++failing) {
        allocation_counter const counter;
        TypeParam::history.constructions_left = failing;
        EXPECT_THROW(array<TypeParam> const elements(3), element_failure);
        EXPECT_EQ(this->alive(), 0);
        EXPECT_EQ(test_support::last_aligned_release().size, 3 * sizeof(TypeParam));
    }
}

TYPED_TEST(ArrayElements, AreUndoneWhenCopyingOneFails) {
    auto const source = this->three();
    for (int failing = 1; failing <= 3; ++failing) {
        this->take_calls();
        TypeParam::history.constructions_left = failing;
        try {
            array<TypeParam> const copy(source);
            ADD_FAILURE() << "nothing was thrown";
        } catch (element_failure const& failure) {
            EXPECT_EQ(failure.id, failing);
        }
        EXPECT_EQ(this->alive(), 3);
        calls undone;
        for (int id = 1; id < failing; ++id) undone.push_back("destroy " + std::to_string(id));
        calls const happened = this->take_calls();
        ASSERT_EQ(happened.size(), 2 * undone.size());
        EXPECT_TRUE(std::is_permutation(happened.begin() + (failing - 1), happened.end(),
                                        undone.begin(), undone.end()));
    }
}

TYPED_TEST(ArrayElements, ThatAreNamedOneByOneAreUndoneWhenOneFails) {
    for (int failing = 1; failing <= 3; ++failing) {
        this->take_calls();
        TypeParam::history.constructions_left = failing;
        EXPECT_THROW((void)array<TypeParam>::of(1, 2, 3), element_failure);
        EXPECT_EQ(this->alive(), 0);
        auto const happened = this->take_calls();
        ASSERT_EQ(happened.size(), 2 * (static_cast<std::size_t>(failing) - 1));
        for (int id = 1; id < failing; ++id) {
            EXPECT_EQ(std::count(happened.begin(), happened.end(), "destroy " + std::to_string(id)),
                      1);
        }
        EXPECT_EQ(test_support::last_aligned_release().size, 3 * sizeof(TypeParam));
    }
}

TYPED_TEST(ArrayElements, LeakNoBlockWhenCopyingFails) {
    auto const source = this->three();
    for (int failing = 1; failing <= 3; ++failing) {
        TypeParam::history.calls.clear();
        TypeParam::history.calls.reserve(16);
        void const* made = nullptr;
        void const* released = nullptr;
        TypeParam::history.constructions_left = failing;
        try {
            array<TypeParam> const copy(source);
        } catch (element_failure const&) {
            made = test_support::last_aligned_allocation().block;
            released = test_support::last_aligned_release().block;
        }
        EXPECT_NE(made, nullptr);
        EXPECT_EQ(made, released);
    }
}

TYPED_TEST(ArrayElements, AreReplacedWhereTheCountsDiffer) {
    auto const source = this->three();
    auto target = array<TypeParam>::of(8, 9);
    this->take_calls();
    target = source;
    calls const happened = this->take_calls();
    ASSERT_GE(happened.size(), 5U);
    EXPECT_EQ((calls{happened.begin(), happened.begin() + 5}),
              (calls{"destroy 9", "destroy 8", "make 0", "make 0", "make 0"}));
    EXPECT_EQ(target[0].id, 1);
    EXPECT_EQ(target[2].id, 3);
}

TYPED_TEST(ArrayElements, AreKeptWhereTheCountsAgree) {
    auto const source = this->three();
    auto target = array<TypeParam>::of(7, 8, 9);
    auto const* const block = target.data();
    target = source;
    EXPECT_EQ(target.data(), block);
    EXPECT_EQ(target[0].id, 1);
    EXPECT_EQ(target[1].id, 2);
    EXPECT_EQ(target[2].id, 3);
}

TYPED_TEST(ArrayElements, AreGoneWhenTheNewBlockCannotBeMade) {
    auto const source = this->three();
    auto target = array<TypeParam>::of(8, 9);
    TypeParam::history.calls.reserve(TypeParam::history.calls.size() + 16);
    {
        allocation_failure const failure(1);
        bool raised = false;
        try {
            target = source;
        } catch (std::bad_alloc const&) {
            raised = true;
        }
        EXPECT_TRUE(raised);
    }
    EXPECT_EQ(target.size(), 0U);
    EXPECT_EQ(target.data(), nullptr);
    EXPECT_EQ(this->alive(), 3);
    target = source;
    EXPECT_EQ(target.size(), 3U);
}

TYPED_TEST(ArrayElements, AreAllGoneAtTheEnd) {
    {
        auto const source = this->three();
        auto target = array<TypeParam>::of(8, 9);
        target = source;
        target = array<TypeParam>(target);
        array<TypeParam> const other(std::move(target));
    }
    EXPECT_EQ(this->alive(), 0);
}

class PlainElements : public ArrayElements<tracked> {};

TEST_F(PlainElements, AreAssignedInOrder) {
    auto const source = three();
    auto target = array<tracked>::of(7, 8, 9);
    take_calls();
    target = source;
    EXPECT_EQ(take_calls(), (calls{"assign 1", "assign 2", "assign 3"}));
}

TEST_F(PlainElements, StayAsTheyWereBehindOneThatCannotBeAssigned) {
    auto const source = three();
    auto target = array<tracked>::of(7, 8, 9);
    tracked::history.assignments_left = 2;
    EXPECT_THROW(target = source, element_failure);
    EXPECT_EQ(target.size(), 3U);
    EXPECT_EQ(target[0].id, 1);
    EXPECT_EQ(target[1].id, 8);
    EXPECT_EQ(target[2].id, 9);
}

class FragileElements : public ArrayElements<fragile> {
protected:
    FragileElements() { fragile::history.calls.reserve(64); } // no allocation of ours in between
};

TEST_F(FragileElements, MakeTheDestructorThrowing) {
    static_assert(std::is_nothrow_destructible_v<array<tracked>>);
    static_assert(std::is_nothrow_destructible_v<array<int>>);
    static_assert(!std::is_nothrow_destructible_v<array<fragile>>);
}

TEST_F(FragileElements, AreAllDestroyedBeforeTheFirstExceptionGoesOn) {
    int thrown = 0;
    try {
        array<fragile> elements(4);
        for (int i = 0; i < 4; ++i) elements[static_cast<unsigned int>(i)].id = i + 1;
        elements[0].throws = true;
        elements[2].throws = true;
        take_calls();
        fragile::history.calls.reserve(64);
    } catch (element_failure const& failure) {
        thrown = failure.id;
    }
    EXPECT_EQ(thrown, 3); // the last of those that throw is destroyed first
    EXPECT_EQ(take_calls(), (calls{"destroy 4", "destroy 3", "destroy 2", "destroy 1"}));
    EXPECT_EQ(alive(), 0);
    EXPECT_EQ(test_support::last_aligned_release().size, 4 * sizeof(fragile));
}

TEST_F(FragileElements, ThatThrowWhileAnotherFailureUnwindsAreSwallowed) {
    auto source = three();
    source[0].throws = true;
    source[1].throws = true;
    fragile::history.constructions_left = 3;
    int failed = 0;
    try {
        array<fragile> const copy(source);
    } catch (element_failure const& failure) {
        failed = failure.id;
    }
    EXPECT_EQ(failed, 3); // the copy that failed, not a destructor
    EXPECT_EQ(alive(), 3);
    EXPECT_EQ(test_support::last_aligned_release().size, 3 * sizeof(fragile));
    source[0].throws = false;
    source[1].throws = false;
}

TEST_F(FragileElements, ThatThrowLeaveAnAssignmentWithoutElements) {
    auto target = array<fragile>::of(8, 9);
    target[1].throws = true;
    auto const source = three();
    EXPECT_THROW(target = source, element_failure);
    EXPECT_EQ(target.size(), 0U);
    EXPECT_EQ(target.data(), nullptr);
    EXPECT_EQ(alive(), 3);
}

TEST_F(FragileElements, ThatThrowInAMoveAssignmentLeaveNothingBehind) {
    long long const blocks = test_support::live_blocks();
    {
        auto target = array<fragile>::of(8, 9);
        target[0].throws = true;
        auto source = three();
        bool thrown = false;
        try {
            target = std::move(source);
        } catch (element_failure const&) {
            thrown = true;
        }
        EXPECT_TRUE(thrown);
    }
    EXPECT_EQ(alive(), 0);
    EXPECT_EQ(test_support::live_blocks(), blocks);
}

TEST_F(FragileElements, KeepTheirOldContentWhenTheyCannotBeCopied) {
    auto const source = three();
    auto target = array<fragile>::of(7, 8, 9);
    fragile::history.constructions_left = 2;
    EXPECT_THROW(target = source, element_failure);
    EXPECT_EQ(target[0].id, 1);
    EXPECT_EQ(target[1].id, 8);
    EXPECT_EQ(target[2].id, 9);
}

TEST(ArrayFilled, HoldsWhatTheFunctionWrites) {
    auto const elements = array<int>::filled(3, [](int* first) {
        for (int i = 0; i < 3; ++i) first[i] = 10 * i;
    });
    EXPECT_EQ(elements.to_vector(), (std::vector<int>{0, 10, 20}));
}

TEST(ArrayFilled, WithNoElementsCallsNothingAndHasNoBlock) {
    allocation_counter const counter;
    auto const elements = array<int>::filled(0, [](int*) { FAIL() << "called"; });
    EXPECT_EQ(elements.data(), nullptr);
    EXPECT_EQ(elements.size(), 0u);
    EXPECT_EQ(counter.allocations(), 0u);
}

TEST(ArrayFilled, ReleasesTheBlockWhereTheFunctionRaises) {
    auto const before = test_support::live_blocks();
    EXPECT_THROW(static_cast<void>(array<int>::filled(3, [](int*) { throw 7; })), int);
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(ArrayFilled, IsNotCalledWhereMemoryIsExhausted) {
    bool called = false;
    bool raised = false;
    {
        allocation_failure const failure(1);
        try {
            static_cast<void>(array<int>::filled(3, [&](int*) { called = true; }));
        } catch (std::bad_alloc const&) {
            raised = true;
        }
    }
    EXPECT_TRUE(raised);
    EXPECT_FALSE(called);
}

TEST(ArrayFilled, RefusesMoreThanTheLargestCount) {
    EXPECT_THROW(static_cast<void>(array<int>::filled(array<int>::max_size() + 1, [](int*) {})),
                 std::bad_array_new_length);
}

} // namespace
