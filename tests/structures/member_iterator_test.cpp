#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// What the iterators of structure types and of objects have in common.

namespace {

using namespace tavi::ioapi::v2;
using test_support::allocation_counter;
using test_support::count_survived_failures;
using test_support::impl_of;
using types = io_data_type::basic_types;

io_structure_type make_with(io_structure_type const*, std::initializer_list<char const*> keys) {
    io_structure_type type;
    for (auto const* const key : keys) type.set_member(key, io_data_type::scalar(types::i32));
    return type;
}

io_object make_with(io_object const*, std::initializer_list<char const*> keys) {
    io_object object;
    for (auto const* const key : keys) object.set(key, 1);
    return object;
}

template <class Container>
class MemberIterator : public ::testing::Test {
protected:
    static Container make(std::initializer_list<char const*> keys) {
        return make_with(static_cast<Container const*>(nullptr), keys);
    }
    static std::vector<std::string> keys_of(Container const& container) {
        std::vector<std::string> keys;
        for (auto const& [key, member] : container) keys.emplace_back(key.data(), key.size());
        return keys;
    }
    static std::string key_at(typename Container::const_iterator const& position) {
        return (*position).first.str();
    }
};

using containers = ::testing::Types<io_structure_type, io_object>;
TYPED_TEST_SUITE(MemberIterator, containers);

TYPED_TEST(MemberIterator, IsAnInputIterator) {
    using iterator = typename TypeParam::const_iterator;
    using traits = std::iterator_traits<iterator>;
    static_assert(std::is_same_v<typename traits::iterator_category, std::input_iterator_tag>);
    static_assert(std::is_same_v<typename traits::difference_type, std::ptrdiff_t>);
    static_assert(std::is_same_v<typename traits::reference, typename traits::value_type>);
    static_assert(
        std::is_same_v<typename traits::value_type, decltype(*std::declval<iterator const&>())>);
}

TYPED_TEST(MemberIterator, CopiesAndMoves) {
    using iterator = typename TypeParam::const_iterator;
    static_assert(std::is_copy_constructible_v<iterator> && std::is_copy_assignable_v<iterator>);
    static_assert(std::is_nothrow_move_constructible_v<iterator>);
    static_assert(std::is_nothrow_move_assignable_v<iterator>);
    static_assert(std::is_nothrow_destructible_v<iterator>);
}

TYPED_TEST(MemberIterator, GoesInTheOrderOfBytesAndNotOfInsertion) {
    auto const container = this->make({"b", "a", "B", "aa", "\xC3", "", "~"});
    std::vector<std::string> const expected{"", "B", "a", "aa", "b", "~", "\xC3"};
    EXPECT_EQ(this->keys_of(container), expected);
}

TYPED_TEST(MemberIterator, BeginsAtTheEndWithoutMembers) {
    TypeParam const container;
    EXPECT_TRUE(container.begin() == container.end());
    EXPECT_FALSE(container.begin() != container.end());
    EXPECT_TRUE(container.empty());
}

TYPED_TEST(MemberIterator, IsNotAtTheEndWithMembers) {
    auto const container = this->make({"a"});
    EXPECT_TRUE(container.begin() != container.end());
    EXPECT_FALSE(container.begin() == container.end());
    EXPECT_FALSE(container.empty());
}

TYPED_TEST(MemberIterator, OwnsItsPosition) {
    auto const container = this->make({"a"});
    auto const first = container.begin();
    auto const second = container.begin();
    EXPECT_NE(impl_of(first), impl_of(second));
    EXPECT_TRUE(first == second);
}

TYPED_TEST(MemberIterator, StepsAndGivesItself) {
    auto const container = this->make({"a", "b"});
    auto position = container.begin();
    auto& same = ++position;
    EXPECT_EQ(&same, &position);
    EXPECT_EQ(this->key_at(position), "b");
    ++position;
    EXPECT_TRUE(position == container.end());
}

TYPED_TEST(MemberIterator, StepsAfterwardsAndGivesTheOldPosition) {
    auto const container = this->make({"a", "b"});
    auto position = container.begin();
    auto const old = position++;
    EXPECT_EQ(this->key_at(old), "a");
    EXPECT_EQ(this->key_at(position), "b");
    EXPECT_NE(impl_of(old), impl_of(position));
    EXPECT_TRUE(old == container.begin());
}

TYPED_TEST(MemberIterator, CopiesDeep) {
    auto const container = this->make({"a", "b"});
    auto const original = container.begin();
    auto copy(original);
    EXPECT_NE(impl_of(copy), impl_of(original));
    ++copy;
    EXPECT_EQ(this->key_at(original), "a");
    EXPECT_EQ(this->key_at(copy), "b");
}

TYPED_TEST(MemberIterator, MovesThePosition) {
    auto const container = this->make({"a"});
    auto source = container.begin();
    void const* const impl = impl_of(source);
    allocation_counter const counter;
    auto const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
}

TYPED_TEST(MemberIterator, IsAssignedACopy) {
    auto const container = this->make({"a", "b"});
    auto target = container.end();
    auto source = container.begin();
    target = source;
    ++source;
    EXPECT_EQ(this->key_at(target), "a");
}

TYPED_TEST(MemberIterator, IsAssignedAPositionElsewhere) {
    auto const container = this->make({"a"});
    auto const other = this->make({"b"});
    auto position = container.begin();
    position = other.begin();
    EXPECT_EQ(this->key_at(position), "b");
    EXPECT_TRUE(position == other.begin());
}

TYPED_TEST(MemberIterator, IsAssignedByMove) {
    auto const container = this->make({"a", "b"});
    auto target = container.end();
    auto source = container.begin();
    void const* const impl = impl_of(source);
    target = std::move(source);
    EXPECT_EQ(impl_of(target), impl);
    EXPECT_EQ(impl_of(source), nullptr);
}

TYPED_TEST(MemberIterator, StaysAsItIsAssignedToItself) {
    auto const container = this->make({"a", "b"});
    auto position = container.begin();
    auto& same = position;
    position = same;
    EXPECT_EQ(this->key_at(position), "a");
    position = std::move(same);
    EXPECT_EQ(this->key_at(position), "a");
}

TYPED_TEST(MemberIterator, IsAssignedAnewAfterAMove) {
    auto const container = this->make({"a"});
    auto position = container.begin();
    auto const taken(std::move(position));
    position = container.begin();
    EXPECT_EQ(this->key_at(position), "a");
    EXPECT_TRUE(position == taken);
}

TYPED_TEST(MemberIterator, StaysNullInACopyOfANullOne) {
    auto const container = this->make({"a"});
    auto null = container.begin();
    auto const taken(std::move(null));
    auto const copy(null);
    EXPECT_EQ(impl_of(copy), nullptr);
    auto target = container.begin();
    target = null;
    EXPECT_EQ(impl_of(target), nullptr);
}

TYPED_TEST(MemberIterator, EqualsItself) {
    auto const container = this->make({"a"});
    auto const position = container.begin();
    auto const& same = position;
    EXPECT_TRUE(position == same);
    EXPECT_FALSE(position != same);
}

TYPED_TEST(MemberIterator, DiffersFromAnotherPosition) {
    auto const container = this->make({"a", "b"});
    auto const first = container.begin();
    auto second = container.begin();
    ++second;
    EXPECT_FALSE(first == second);
    EXPECT_TRUE(first != second);
}

TYPED_TEST(MemberIterator, DiffersFromTheSamePlaceInACopy) {
    auto const container = this->make({"a"});
    auto const copy(container);
    EXPECT_TRUE(container.begin() != copy.begin());
    EXPECT_TRUE(container.end() != copy.end());
}

TYPED_TEST(MemberIterator, EqualsANullOneOnlyWhereBothAreNull) {
    auto const container = this->make({"a"});
    auto first = container.begin();
    auto second = container.begin();
    auto const taken(std::move(first));
    EXPECT_FALSE(first == second);
    EXPECT_FALSE(second == first);
    EXPECT_TRUE(first != second);
    auto const also_taken(std::move(second));
    EXPECT_TRUE(first == second);
    EXPECT_FALSE(first != second);
    EXPECT_TRUE(taken == also_taken);
}

TYPED_TEST(MemberIterator, GivesPairsThatOutliveTheContainer) {
    std::vector<typename TypeParam::const_iterator::value_type> pairs;
    {
        auto const container = this->make({"a key that is longer than small buffers are"});
        pairs.push_back(*container.begin());
    }
    EXPECT_EQ(pairs[0].first, "a key that is longer than small buffers are");
}

TYPED_TEST(MemberIterator, GivesAFreshPairEachTime) {
    auto const container = this->make({"a"});
    auto const position = container.begin();
    auto first = *position;
    first.first = "changed";
    EXPECT_EQ((*position).first, "a");
}

TYPED_TEST(MemberIterator, TakesTheKeyWhole) {
    using namespace std::string_view_literals;
    auto container = this->make({});
    if constexpr (std::is_same_v<TypeParam, io_object>) {
        container.set("a\0b"sv, 1);
    } else {
        container.set_member("a\0b"sv, io_data_type());
    }
    EXPECT_EQ((*container.begin()).first, "a\0b"sv);
}

TYPED_TEST(MemberIterator, FitsFindIf) {
    auto const container = this->make({"a", "b", "c"});
    auto const found = std::find_if(container.begin(), container.end(),
                                    [](auto const& member) { return member.first == "b"; });
    ASSERT_TRUE(found != container.end());
    EXPECT_EQ(this->key_at(found), "b");
    auto const missing = std::find_if(container.begin(), container.end(),
                                      [](auto const& member) { return member.first == "x"; });
    EXPECT_TRUE(missing == container.end());
}

TYPED_TEST(MemberIterator, FitsCountIf) {
    auto const container = this->make({"a", "b", "c"});
    EXPECT_EQ(std::count_if(container.begin(), container.end(),
                            [](auto const& member) { return member.first > "a"; }),
              2);
}

TYPED_TEST(MemberIterator, FitsDistanceAndNext) {
    auto const container = this->make({"a", "b", "c"});
    EXPECT_EQ(std::distance(container.begin(), container.end()), 3);
    EXPECT_EQ(this->key_at(std::next(container.begin(), 2)), "c");
}

TYPED_TEST(MemberIterator, FillsAVector) {
    auto const container = this->make({"b", "a"});
    std::vector<typename TypeParam::const_iterator::value_type> const members(container.begin(),
                                                                              container.end());
    ASSERT_EQ(members.size(), 2U);
    EXPECT_EQ(members[0].first, "a");
    EXPECT_EQ(members[1].first, "b");
}

TYPED_TEST(MemberIterator, FitsTransformAndAllOf) {
    auto const container = this->make({"b", "a"});
    std::vector<std::string> keys;
    std::transform(container.begin(), container.end(), std::back_inserter(keys),
                   [](auto const& member) { return member.first.str(); });
    EXPECT_EQ(keys, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(std::all_of(container.begin(), container.end(),
                            [](auto const& member) { return !member.first.empty(); }));
}

TYPED_TEST(MemberIterator, SurvivesExhaustedMemory) {
    auto const container = this->make({"a key that is longer than small buffers are", "b"});
    EXPECT_GE(count_survived_failures([&] { (void)container.begin(); }), 1);
    EXPECT_GE(count_survived_failures([&] { (void)container.end(); }), 1);
    EXPECT_GE(count_survived_failures([&] { (void)*container.begin(); }), 2);
    EXPECT_GE(count_survived_failures([&] {
                  auto position = container.begin();
                  position++;
              }),
              2);
    EXPECT_GE(count_survived_failures([&] {
                  auto position = container.begin();
                  auto const copy(position);
                  position = container.end();
                  position = copy;
              }),
              3);
}

TYPED_TEST(MemberIterator, DoesNotStepWhereTheOldPositionCannotBeGiven) {
    auto const container = this->make({"a", "b"});
    auto position = container.begin();
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(position++, std::bad_alloc);
    }
    EXPECT_EQ(this->key_at(position), "a");
}

} // namespace
