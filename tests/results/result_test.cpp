#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/write_result.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/operators.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using id = plc_identifier;
using view = utility::data_view<plc_identifier const>;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::count_survived_failures;

// What both results have in common.
template <class Result>
class Results : public ::testing::Test {
protected:
    static std::vector<id> three() { return {id("level", 1), id(7), id("flow")}; }

    static Result filled() {
        Result result(three());
        result.set(0, io_errc::not_found);
        result.set(1, io_error());
        return result;
    }
    static bool is_blank(typename Result::result_type const& entry) {
        return entry.identifier() == id() && entry.error() == io_error() && entry.ok();
    }
    static std::vector<int> codes(Result const& result) {
        std::vector<int> found;
        for (auto const& entry : result) found.push_back(entry.error().code());
        return found;
    }
};

using result_classes = ::testing::Types<read_result, write_result>;
TYPED_TEST_SUITE(Results, result_classes);

TYPED_TEST(Results, AreEmptyByDefault) {
    allocation_counter const counter;
    TypeParam const result;
    EXPECT_EQ(result.size(), 0U);
    EXPECT_TRUE(result.empty());
    EXPECT_EQ(result.begin(), nullptr);
    EXPECT_EQ(result.end(), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(Results, OfAnEmptyViewAreEmpty) {
    std::vector<id> const none;
    id const one(7);
    for (view const identifiers : {view(), view(none), view(nullptr, 0), view(&one, 0)}) {
        allocation_counter const counter;
        TypeParam result(identifiers);
        EXPECT_EQ(result.size(), 0U);
        EXPECT_EQ(result.begin(), nullptr);
        EXPECT_EQ(result.end(), nullptr);
        EXPECT_EQ(result.cbegin(), result.cend());
        EXPECT_EQ(result.find(id()), nullptr);
        EXPECT_EQ(counter.allocations(), 0U);
    }
}

TYPED_TEST(Results, HaveOneEntryForEachIdentifierInOrder) {
    auto const identifiers = this->three();
    TypeParam const result(identifiers);
    ASSERT_EQ(result.size(), 3U);
    EXPECT_FALSE(result.empty());
    for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(result[i].identifier(), identifiers[i]);
}

TYPED_TEST(Results, SayNoResultAtFirst) {
    TypeParam const result(this->three());
    for (auto const& entry : result) {
        EXPECT_EQ(entry.error(), make_io_error(io_errc::no_result));
        EXPECT_EQ(entry.error().message(), "no result");
        EXPECT_EQ(entry.error().diagnostics().list(), nullptr);
        EXPECT_FALSE(entry.ok());
    }
}

TYPED_TEST(Results, KeepEqualIdentifiersApart) {
    std::vector<id> const twice{id("level"), id("level")};
    TypeParam result(twice);
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result.find(id("level")), result.begin());
    result.set(id("level"), io_error());
    EXPECT_TRUE(result[0].ok());
    EXPECT_EQ(result[1].error(), io_error(io_errc::no_result));
}

TYPED_TEST(Results, CopyTheIdentifiersDeep) {
    std::vector<id> identifiers{id("level")};
    TypeParam const result(identifiers);
    EXPECT_NE(result[0].identifier().primary().text().data(),
              identifiers[0].primary().text().data());
}

TYPED_TEST(Results, AreARangeOfContiguousEntries) {
    TypeParam result(this->three());
    TypeParam const& same = result;
    EXPECT_EQ(result.begin(), &result[0]);
    EXPECT_EQ(result.end(), result.begin() + 3);
    EXPECT_EQ(same.begin(), &same[0]);
    EXPECT_EQ(same.end(), same.begin() + 3);
    EXPECT_EQ(result.cbegin(), same.begin());
    EXPECT_EQ(result.cend(), same.end());
    EXPECT_EQ(&same[2], &result[2]);
    using entry = typename TypeParam::result_type;
    static_assert(std::is_same_v<decltype(result.begin()), entry*>);
    static_assert(std::is_same_v<decltype(result.cbegin()), entry const*>);
    static_assert(std::is_same_v<decltype(same.end()), entry const*>);
    static_assert(std::is_same_v<decltype(result.size()), unsigned int>);
}

TYPED_TEST(Results, FindTheEntryOfAnIdentifier) {
    TypeParam result(this->three());
    TypeParam const& same = result;
    EXPECT_EQ(result.find(id("level", 1)), &result[0]);
    EXPECT_EQ(result.find(id(7)), &result[1]);
    EXPECT_EQ(same.find(id("flow")), &same[2]);
}

// Texts of one size are told by their last bytes before all of them are compared.
TYPED_TEST(Results, FindAmongLongTextsOfOneSize) {
    std::vector<id> const identifiers{id("pump.north.speed"), id("pump.north.state"),
                                      id("pump.south.speed"), id("pump.south.state")};
    TypeParam const result(identifiers);
    for (unsigned int i = 0; i < result.size(); ++i) {
        EXPECT_EQ(result.find(identifiers[i]), &result[i]) << identifiers[i];
    }
    EXPECT_EQ(result.find(id("pump.south.stale")), nullptr);
    EXPECT_EQ(result.find(id("tank.south.state")), nullptr);
}

TYPED_TEST(Results, FindNothingForAnUnknownIdentifier) {
    TypeParam result(this->three());
    TypeParam const& same = result;
    for (id const& unknown : {id(), id("level"), id("level", 2), id("7"), id(8), id("", 1)}) {
        EXPECT_EQ(result.find(unknown), nullptr) << unknown;
        EXPECT_EQ(same.find(unknown), nullptr) << unknown;
    }
}

TYPED_TEST(Results, StoreAnErrorByIndex) {
    TypeParam result(this->three());
    result.set(1, io_errc::not_found);
    result.set(2, io_error());
    EXPECT_EQ(this->codes(result), (std::vector<int>{5, 1, 0}));
}

TYPED_TEST(Results, StoreAnErrorByIdentifier) {
    TypeParam result(this->three());
    result.set(id("flow"), io_errc::not_found);
    result.set(result[0].identifier(), io_error());
    EXPECT_EQ(this->codes(result), (std::vector<int>{0, 5, 1}));
}

TYPED_TEST(Results, IgnoreAnErrorForAnUnknownIdentifier) {
    TypeParam result(this->three());
    result.set(id("level"), io_errc::not_found);
    result.set(id(), io_error());
    EXPECT_EQ(this->codes(result), (std::vector<int>{5, 5, 5}));
    EXPECT_EQ(result.size(), 3U);
    TypeParam none;
    none.set(id("level"), io_errc::not_found);
    EXPECT_TRUE(none.empty());
}

TYPED_TEST(Results, AddBlankEntriesWhereTheyGrow) {
    auto result = this->filled();
    result.resize(5);
    ASSERT_EQ(result.size(), 5U);
    EXPECT_EQ(this->codes(result), (std::vector<int>{1, 0, 5, 0, 0}));
    EXPECT_EQ(result[0].identifier(), id("level", 1));
    EXPECT_EQ(result[2].identifier(), id("flow"));
    EXPECT_TRUE(this->is_blank(result[3]));
    EXPECT_TRUE(this->is_blank(result[4]));
}

TYPED_TEST(Results, DropTheLastEntriesWhereTheyShrink) {
    auto result = this->filled();
    result.resize(1);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].identifier(), id("level", 1));
    EXPECT_EQ(result[0].error(), io_error(io_errc::not_found));
}

TYPED_TEST(Results, GrowFromNothing) {
    TypeParam result;
    result.resize(2);
    ASSERT_EQ(result.size(), 2U);
    EXPECT_TRUE(this->is_blank(result[0]));
    EXPECT_TRUE(this->is_blank(result[1]));
}

TYPED_TEST(Results, ShrinkToNothing) {
    auto result = this->filled();
    result.resize(0);
    EXPECT_EQ(result.size(), 0U);
    EXPECT_EQ(result.begin(), nullptr);
    EXPECT_EQ(result.end(), nullptr);
    result.resize(0);
    EXPECT_EQ(result.begin(), nullptr);
}

TYPED_TEST(Results, KeepTheBlockAtTheSameSize) {
    auto result = this->filled();
    auto const* const block = result.begin();
    allocation_counter const counter;
    result.resize(3);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(result.begin(), block);
    EXPECT_EQ(this->codes(result), (std::vector<int>{1, 0, 5}));
}

TYPED_TEST(Results, MoveTheirEntriesToTheNewBlock) {
    for (unsigned int const size : {2U, 8U}) {
        auto result = this->filled();
        auto const* const block = result.begin();
        char const* const text = result[0].identifier().primary().text().data();
        allocation_counter const counter;
        result.resize(size);
        EXPECT_EQ(counter.allocations(), 1U);
        EXPECT_NE(result.begin(), block);
        EXPECT_EQ(result[0].identifier().primary().text().data(), text);
    }
}

TYPED_TEST(Results, AlignTheirBlockBySize) {
    using entry = typename TypeParam::result_type;
    for (unsigned int count = 20; count < 70; ++count) {
        TypeParam result;
        result.resize(count);
        auto const allocation = test_support::last_aligned_allocation();
        EXPECT_EQ(allocation.block, result.begin());
        EXPECT_EQ(allocation.size, count * sizeof(entry));
        EXPECT_EQ(allocation.alignment, count * sizeof(entry) < 4096 ? 16U : 32U);
    }
}

TYPED_TEST(Results, StayAsTheyWereWhereTheyCannotBeResized) {
    for (unsigned int const size : {1U, 8U}) {
        auto result = this->filled();
        auto const* const block = result.begin();
        {
            allocation_failure const failure(1);
            EXPECT_THROW(result.resize(size), std::bad_alloc);
        }
        EXPECT_EQ(result.begin(), block);
        EXPECT_EQ(result.size(), 3U);
        EXPECT_EQ(this->codes(result), (std::vector<int>{1, 0, 5}));
        EXPECT_EQ(result[0].identifier(), id("level", 1));
    }
}

TYPED_TEST(Results, StartAnewByAssign) {
    auto result = this->filled();
    std::vector<id> const identifiers{id("a"), id("b"), id("c"), id("d")};
    result.assign(identifiers);
    ASSERT_EQ(result.size(), 4U);
    for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(result[i].identifier(), identifiers[i]);
    EXPECT_EQ(this->codes(result), (std::vector<int>{5, 5, 5, 5}));
}

TYPED_TEST(Results, KeepTheBlockInAnAssignOfTheSameSize) {
    auto result = this->filled();
    auto const* const block = result.begin();
    std::vector<id> const identifiers{id("a"), id("b"), id("c")};
    result.assign(identifiers);
    EXPECT_EQ(result.begin(), block);
    EXPECT_EQ(this->codes(result), (std::vector<int>{5, 5, 5}));
    for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(result[i].identifier(), identifiers[i]);
}

TYPED_TEST(Results, BecomeEmptyByAssignOfAnEmptyView) {
    auto result = this->filled();
    result.assign({});
    EXPECT_EQ(result.size(), 0U);
    EXPECT_EQ(result.begin(), nullptr);
}

TYPED_TEST(Results, AreAssignedAnIdentifierOfTheirOwn) {
    for (unsigned int const index : {0U, 1U, 2U}) {
        auto result = this->filled();
        id const expected = result[index].identifier();
        result.assign(view(&result[index].identifier(), 1));
        ASSERT_EQ(result.size(), 1U);
        EXPECT_EQ(result[0].identifier(), expected);
        EXPECT_EQ(result[0].error(), io_error(io_errc::no_result));
    }
}

TYPED_TEST(Results, AreAssignedTheirOnlyIdentifier) {
    std::vector<id> const identifiers{id("level", "unit")};
    TypeParam result(identifiers);
    result.set(0, io_error());
    result.assign(view(&result[0].identifier(), 1));
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].identifier(), id("level", "unit"));
    EXPECT_EQ(result[0].error(), io_error(io_errc::no_result));
}

TYPED_TEST(Results, AreCopiedDeep) {
    auto const result = this->filled();
    TypeParam copy(result);
    ASSERT_EQ(copy.size(), 3U);
    EXPECT_EQ(this->codes(copy), (std::vector<int>{1, 0, 5}));
    EXPECT_NE(copy.begin(), result.begin());
    EXPECT_NE(copy[0].identifier().primary().text().data(),
              result[0].identifier().primary().text().data());
    copy.set(0, io_error());
    EXPECT_EQ(result[0].error(), io_error(io_errc::not_found));
}

TYPED_TEST(Results, AreCopyAssigned) {
    auto const source = this->filled();
    for (unsigned int const size : {0U, 3U, 4U}) {
        TypeParam target;
        target.resize(size);
        target = source;
        EXPECT_EQ(this->codes(target), (std::vector<int>{1, 0, 5}));
        EXPECT_EQ(target[2].identifier(), id("flow"));
    }
}

TYPED_TEST(Results, AreMovedByTheirPointer) {
    auto result = this->filled();
    auto const* const block = result.begin();
    allocation_counter const counter;
    TypeParam moved(std::move(result));
    EXPECT_EQ(moved.begin(), block);
    EXPECT_EQ(result.size(), 0U);
    EXPECT_EQ(result.begin(), nullptr);
    TypeParam assigned;
    assigned = std::move(moved);
    EXPECT_EQ(assigned.begin(), block);
    EXPECT_EQ(moved.size(), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(Results, SurviveExhaustedMemory) {
    std::vector<id> const identifiers{id("a", "b"), id(7), id("c")};
    // One block, and one for each text.
    EXPECT_EQ(count_survived_failures([&] { TypeParam const result(identifiers); }), 4);
    TypeParam const source(identifiers);
    EXPECT_EQ(count_survived_failures([&] { TypeParam const copy(source); }), 4);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam result;
                  result.assign(identifiers);
              }),
              4);
    EXPECT_GE(count_survived_failures([&] {
                  TypeParam result(identifiers);
                  result.assign(identifiers);
              }),
              7);
}

TYPED_TEST(Results, OfferNoComparison) {
    static_assert(!test_support::has_equal<TypeParam>);
    static_assert(!test_support::has_less<TypeParam>);
}

TYPED_TEST(Results, AreNotMadeSilently) {
    static_assert(!std::is_convertible_v<view, TypeParam>);
    static_assert(!std::is_constructible_v<TypeParam, int>);
}

TYPED_TEST(Results, StandAsPointerThenCount) {
    auto const result = this->filled();
    EXPECT_EQ(test_support::field_at<void const*>(result, 0), result.begin());
    EXPECT_EQ(test_support::field_at<unsigned int>(result, sizeof(void*)), 3U);
    static_assert(sizeof(TypeParam) == test_support::by_word(8, 16));
}

} // namespace
