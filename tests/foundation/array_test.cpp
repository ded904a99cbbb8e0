#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/allocations.hpp"
#include "support/raw_text.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <forward_list>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::block_of;
using utility::array;

// Three elements that differ, of each class that arrays hold.
template <class T>
std::vector<T> samples() {
    if constexpr (std::is_same_v<T, bool>) {
        return {true, false, true};
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return {"level", "", "a text that is longer than the small buffers of some libraries"};
    } else if constexpr (std::is_same_v<T, io_object>) {
        return {io_object(7, {}), io_object(), io_object(9, {})};
    } else if constexpr (std::is_same_v<T, io_value>) {
        return {io_value(1), io_value(), io_value("level")};
    } else if constexpr (std::is_same_v<T, array<int>>) {
        return {array<int>{1, 2}, array<int>(), array<int>{3}};
    } else {
        return {T(1), T(0), T(100)};
    }
}

bool same_content(io_object const& left, io_object const& right) {
    return left.type() == right.type();
}
bool same_content(array<int> const& left, array<int> const& right) {
    return left.to_vector() == right.to_vector();
}
bool same_content(io_value const& left, io_value const& right) {
    if (left.index() != right.index() || left.data_type() != right.data_type()) return false;
    if (auto const* const number = left.get_if<int>()) return *number == *right.get_if<int>();
    if (auto const* const text = left.get_if<utility::string>()) {
        return *text == *right.get_if<utility::string>();
    }
    return true;
}
template <class T>
bool same_content(T const& left, T const& right) {
    return left == right;
}

template <class T>
bool same_elements(array<T> const& left, std::vector<T> const& right) {
    if (left.size() != right.size()) return false;
    for (unsigned int i = 0; i < left.size(); ++i) {
        T const expected = right[i];
        if (!same_content(left[i], expected)) return false;
    }
    return true;
}

template <class T>
class Array : public ::testing::Test {};

using element_types = ::testing::Types<bool,
                                       char,
                                       signed char,
                                       unsigned char,
                                       short,
                                       unsigned short,
                                       int,
                                       unsigned int,
                                       long,
                                       unsigned long,
                                       long long,
                                       unsigned long long,
                                       float,
                                       double,
                                       utility::string,
                                       io_object,
                                       io_value,
                                       array<int>>;
TYPED_TEST_SUITE(Array, element_types);

TYPED_TEST(Array, IsEmptyWithoutABlockByDefault) {
    allocation_counter const counter;
    array<TypeParam> const elements;
    EXPECT_EQ(elements.size(), 0U);
    EXPECT_TRUE(elements.empty());
    EXPECT_EQ(elements.data(), nullptr);
    EXPECT_EQ(elements.begin(), nullptr);
    EXPECT_EQ(elements.end(), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(Array, OfZeroElementsHasNoBlock) {
    allocation_counter const counter;
    array<TypeParam> const elements(0);
    EXPECT_EQ(elements.data(), nullptr);
    EXPECT_EQ(elements.size(), 0U);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(Array, CopiesARange) {
    auto const source = samples<TypeParam>();
    array<TypeParam> const elements(source.begin(), source.end());
    EXPECT_EQ(elements.size(), 3U);
    EXPECT_FALSE(elements.empty());
    EXPECT_TRUE(same_elements(elements, source));
}

TYPED_TEST(Array, CopiesAStandardVector) {
    auto const source = samples<TypeParam>();
    EXPECT_TRUE(same_elements(array<TypeParam>(source), source));
    EXPECT_EQ(array<TypeParam>(std::vector<TypeParam>()).data(), nullptr);
}

TYPED_TEST(Array, CopiesAView) {
    auto const source = samples<TypeParam>();
    array<TypeParam> const first(source);
    utility::data_view<TypeParam const> const view = first;
    array<TypeParam> const second(view);
    EXPECT_TRUE(same_elements(second, source));
    EXPECT_NE(second.data(), first.data());
    EXPECT_EQ(array<TypeParam>(utility::data_view<TypeParam const>()).data(), nullptr);
}

TYPED_TEST(Array, OfArgumentsHoldsThemInOrder) {
    auto const source = samples<TypeParam>();
    TypeParam const first = source[0];
    TypeParam const second = source[1];
    TypeParam const third = source[2];
    EXPECT_TRUE(same_elements(array<TypeParam>::of(first, second, third), source));
    EXPECT_EQ(array<TypeParam>::of(first).size(), 1U);
    EXPECT_EQ(array<TypeParam>::of().data(), nullptr);
}

TYPED_TEST(Array, CopyIsDeep) {
    auto const source = samples<TypeParam>();
    array<TypeParam> const first(source);
    array<TypeParam> const copy(first);
    EXPECT_TRUE(same_elements(copy, source));
    EXPECT_NE(copy.data(), first.data());
}

TYPED_TEST(Array, CopyOfAnEmptyOneHasNoBlock) {
    array<TypeParam> const empty;
    allocation_counter const counter;
    array<TypeParam> const copy(empty);
    EXPECT_EQ(copy.data(), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(Array, MoveTakesTheBlock) {
    auto const content = samples<TypeParam>();
    array<TypeParam> source(content);
    auto const* const block = source.data();
    allocation_counter const counter;
    array<TypeParam> const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(target.data(), block);
    EXPECT_TRUE(same_elements(target, content));
    EXPECT_EQ(source.data(), nullptr);
    EXPECT_EQ(source.size(), 0U);
}

TYPED_TEST(Array, MoveAssignmentTakesTheBlock) {
    auto const content = samples<TypeParam>();
    array<TypeParam> source(content);
    array<TypeParam> target(2);
    auto const* const block = source.data();
    allocation_counter const counter;
    target = std::move(source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_GE(counter.releases(), 1U);
    EXPECT_EQ(target.data(), block);
    EXPECT_TRUE(same_elements(target, content));
    EXPECT_EQ(source.data(), nullptr);
    EXPECT_EQ(source.size(), 0U);
}

TYPED_TEST(Array, MoveAssignmentToItselfChangesNothing) {
    auto const content = samples<TypeParam>();
    array<TypeParam> elements(content);
    auto& same = elements;
    elements = std::move(same);
    EXPECT_TRUE(same_elements(elements, content));
}

TYPED_TEST(Array, MoveAssignmentFromAnEmptyOneReleasesTheBlock) {
    array<TypeParam> elements(samples<TypeParam>());
    elements = array<TypeParam>();
    EXPECT_EQ(elements.data(), nullptr);
    EXPECT_EQ(elements.size(), 0U);
}

TYPED_TEST(Array, AssignsToAnotherCount) {
    auto const content = samples<TypeParam>();
    array<TypeParam> const source(content);
    for (unsigned int const count : {0U, 1U, 5U}) {
        array<TypeParam> target(count);
        target = source;
        EXPECT_TRUE(same_elements(target, content));
        EXPECT_NE(target.data(), source.data());
    }
}

TYPED_TEST(Array, AssignsInPlaceWhereTheCountsAgree) {
    auto const content = samples<TypeParam>();
    array<TypeParam> const source(content);
    array<TypeParam> target(3);
    auto const* const block = target.data();
    target = source;
    EXPECT_EQ(target.data(), block);
    EXPECT_TRUE(same_elements(target, content));
}

TYPED_TEST(Array, AssignmentOfAnEmptyOneLeavesNoElements) {
    array<TypeParam> target(samples<TypeParam>());
    array<TypeParam> const source;
    target = source;
    EXPECT_EQ(target.data(), nullptr);
    EXPECT_EQ(target.size(), 0U);
    target = source;
    EXPECT_EQ(target.data(), nullptr);
}

TYPED_TEST(Array, AssignmentToItselfChangesNothing) {
    auto const content = samples<TypeParam>();
    array<TypeParam> elements(content);
    auto const* const block = elements.data();
    auto const& same = elements;
    elements = same;
    EXPECT_EQ(elements.data(), block);
    EXPECT_TRUE(same_elements(elements, content));
    array<TypeParam> empty;
    auto const& same_empty = empty;
    empty = same_empty;
    EXPECT_EQ(empty.data(), nullptr);
}

TYPED_TEST(Array, GivesAccessToItsElements) {
    auto const content = samples<TypeParam>();
    array<TypeParam> elements(content);
    array<TypeParam> const& same = elements;
    EXPECT_EQ(&elements[0], elements.data());
    EXPECT_EQ(&elements[2], elements.data() + 2);
    EXPECT_EQ(&elements.front(), elements.data());
    EXPECT_EQ(&elements.back(), elements.data() + 2);
    EXPECT_EQ(elements.begin(), elements.data());
    EXPECT_EQ(elements.end(), elements.data() + 3);
    EXPECT_EQ(&same[1], same.data() + 1);
    EXPECT_EQ(&same.front(), same.data());
    EXPECT_EQ(&same.back(), same.data() + 2);
    EXPECT_EQ(same.end() - same.begin(), 3);
    elements[1] = elements[2];
    TypeParam const expected = content[2];
    EXPECT_TRUE(same_content(same[1], expected));
}

TYPED_TEST(Array, CopiesToAVector) {
    auto const content = samples<TypeParam>();
    EXPECT_TRUE(same_elements(array<TypeParam>(content), array<TypeParam>(content).to_vector()));
    EXPECT_TRUE(array<TypeParam>().to_vector().empty());
}

TYPED_TEST(Array, StandsAsPointerThenCount) {
    array<TypeParam> const elements(samples<TypeParam>());
    EXPECT_EQ(block_of(elements), elements.data());
    EXPECT_EQ(test_support::field_at<unsigned int>(elements, sizeof(void*)), 3U);
    static_assert(sizeof(elements) == test_support::by_word(8, 16));
}

TYPED_TEST(Array, SurvivesExhaustedMemory) {
    auto const content = samples<TypeParam>();
    array<TypeParam> const source(content);
    EXPECT_GE(test_support::count_survived_failures([] { array<TypeParam> const made(3); }), 1);
    EXPECT_GE(test_support::count_survived_failures([&] { array<TypeParam> const copy(source); }),
              1);
    EXPECT_GE(test_support::count_survived_failures(
                  [&] { array<TypeParam> const listed(content.begin(), content.end()); }),
              1);
    EXPECT_GE(test_support::count_survived_failures([&] {
                  array<TypeParam> target(1);
                  target = source;
              }),
              2);
    EXPECT_GE(test_support::count_survived_failures([&] {
                  array<TypeParam> target(3);
                  target = source;
              }),
              1);
}

TEST(ArrayDefaults, AreZeroForNumbers) {
    EXPECT_EQ(array<int>(3).to_vector(), std::vector<int>(3, 0));
    EXPECT_EQ(array<bool>(3).to_vector(), std::vector<bool>(3, false));
    EXPECT_EQ(array<char>(3).to_vector(), std::vector<char>(3, '\0'));
    EXPECT_EQ(array<double>(3).to_vector(), std::vector<double>(3, 0.0));
    EXPECT_EQ(array<unsigned long long>(3).to_vector(), std::vector<unsigned long long>(3, 0));
}

TEST(ArrayDefaults, AreTextsWithoutABlock) {
    allocation_counter const counter;
    array<utility::string> const texts(3);
    EXPECT_EQ(counter.allocations(), 1U);
    for (auto const& text : texts) {
        EXPECT_EQ(text.size(), 0U);
        EXPECT_EQ(block_of(text), nullptr);
    }
}

TEST(ArrayDefaults, AreEmptyValues) {
    allocation_counter const counter;
    array<io_value> const elements(3);
    EXPECT_EQ(counter.allocations(), 1U);
    for (auto const& value : elements) {
        EXPECT_EQ(value.index(), 0);
        EXPECT_EQ(value.data_type(), io_data_type());
    }
}

TEST(ArrayDefaults, AreObjectsOfTheirOwn) {
    array<io_object> const objects(2);
    ASSERT_NE(test_support::impl_of(objects[0]), nullptr);
    ASSERT_NE(test_support::impl_of(objects[1]), nullptr);
    EXPECT_NE(test_support::impl_of(objects[0]), test_support::impl_of(objects[1]));
    EXPECT_EQ(objects[1].type(), io_data_type::object(0));
}

TEST(ArrayCopy, DuplicatesTextsAndObjects) {
    array<utility::string> const texts{"level"};
    EXPECT_NE(block_of(array<utility::string>(texts)[0]), block_of(texts[0]));
    array<io_object> const objects(1);
    array<io_object> const copy(objects);
    EXPECT_NE(test_support::impl_of(copy[0]), test_support::impl_of(objects[0]));
}

TEST(ArrayList, HoldsTheListedElements) {
    array<int> const one{3}; // one element, not three
    EXPECT_EQ(one.to_vector(), (std::vector<int>{3}));
    array<utility::string> const texts{"a", "b"};
    EXPECT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[1], "b");
    array<bool> const flags{true, false};
    EXPECT_EQ(flags.to_vector(), (std::vector<bool>{true, false}));
    array<int> assigned;
    assigned = {1, 2};
    EXPECT_EQ(assigned.to_vector(), (std::vector<int>{1, 2}));
}

TEST(ArrayOf, ConvertsEachArgument) {
    auto const elements = array<io_value>::of(1, "level", true);
    ASSERT_EQ(elements.size(), 3U);
    EXPECT_NE(elements[0].get_if<int>(), nullptr);
    EXPECT_NE(elements[1].get_if<utility::string>(), nullptr);
    EXPECT_NE(elements[2].get_if<bool>(), nullptr);
    EXPECT_EQ(array<utility::string>::of("a", std::string("b")).size(), 2U);
}

TEST(ArrayOf, WrapsAnArrayOfValues) {
    auto const inner = array<io_value>::of(1, 2);
    auto const outer = array<io_value>::of(inner);
    ASSERT_EQ(outer.size(), 1U);
    ASSERT_NE(outer[0].get_if<array<io_value>>(), nullptr);
    EXPECT_EQ(outer[0].get_if<array<io_value>>()->size(), 2U);
}

TEST(ArrayRange, TakesPointers) {
    int const numbers[] = {1, 2, 3};
    EXPECT_EQ(array<int>(numbers + 1, numbers + 3).to_vector(), (std::vector<int>{2, 3}));
}

TEST(ArrayRange, TakesForwardIterators) {
    std::list<int> const numbers{1, 2, 3};
    EXPECT_EQ(array<int>(numbers.begin(), numbers.end()).size(), 3U);
    std::forward_list<int> const others{4, 5};
    EXPECT_EQ(array<int>(others.begin(), others.end()).to_vector(), (std::vector<int>{4, 5}));
}

TEST(ArrayRange, WhoseEndLiesBeforeItsStartIsEmpty) {
    int const numbers[] = {1, 2, 3};
    allocation_counter const counter;
    array<int> const backwards(numbers + 2, numbers);
    array<int> const none(numbers + 1, numbers + 1);
    EXPECT_EQ(backwards.size(), 0U);
    EXPECT_EQ(backwards.data(), nullptr);
    EXPECT_EQ(none.data(), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(ArrayRange, ConvertsElements) {
    std::vector<char const*> const names{"a", "b"};
    array<utility::string> const texts(names.begin(), names.end());
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0], "a");
}

TEST(ArrayRange, IsNotTakenFromNumbers) {
    static_assert(!std::is_constructible_v<array<int>, int, int>);
    static_assert(!std::is_constructible_v<array<double>, unsigned int, unsigned int>);
}

} // namespace
