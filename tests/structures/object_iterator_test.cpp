#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "member_types.hpp"
#include "stored.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using structures_test::holds;
using structures_test::holds_text;
using structures_test::i32;
using types = io_data_type::basic_types;

std::vector<std::string> keys_of(io_object const& object) {
    std::vector<std::string> keys;
    for (auto const& [key, value] : object) keys.push_back(key.str());
    return keys;
}

TEST(ObjectIterator, GivesAPairByValue) {
    using iterator = io_object::const_iterator;
    static_assert(std::is_same_v<decltype(*std::declval<iterator const&>()),
                                 utility::pair<utility::string, io_value>>);
}

TEST(ObjectIterator, GivesKeyAndValue) {
    io_object object;
    object.set("name", "pump");
    object.set("count", 3);
    auto position = object.begin();
    auto const [first_key, first_value] = *position;
    EXPECT_EQ(first_key, "count");
    EXPECT_TRUE(holds(first_value, 3));
    auto const [second_key, second_value] = *++position;
    EXPECT_EQ(second_key, "name");
    EXPECT_TRUE(holds_text(second_value, "pump"));
}

TEST(ObjectIterator, ListsOnlyTheMembersThatAreSet) {
    io_object object(7, {{"a", i32}, {"b", i32}, {"c", i32}});
    EXPECT_TRUE(object.empty());
    object.set("c", 1);
    object.set("b", 1);
    EXPECT_EQ(keys_of(object), (std::vector<std::string>{"b", "c"}));
}

TEST(ObjectIterator, ListsAMemberThatIsSetToTheEmptyValue) {
    io_object object;
    object.set("none", io_value());
    EXPECT_EQ(keys_of(object), (std::vector<std::string>{"none"}));
}

TEST(ObjectIterator, DoesNotListWhatWasRefusedOrRemoved) {
    io_object object(7, {{"a", i32}, {"b", i32}});
    io_error error;
    object.set("a", "x", error);
    object.set("b", 1, error);
    object.remove("b", error);
    EXPECT_TRUE(keys_of(object).empty());
}

TEST(ObjectIterator, KeepsThePlaceOfAMemberThatIsOverwritten) {
    io_object object;
    object.set("b", 1);
    object.set("a", 1);
    object.set("b", 2);
    EXPECT_EQ(keys_of(object), (std::vector<std::string>{"a", "b"}));
}

TEST(ObjectIterator, SeesAValueOverwrittenUnderIt) {
    io_object object;
    object.set("a", 1);
    auto const position = object.begin();
    object.set("a", "two");
    EXPECT_TRUE(holds_text((*position).second, "two"));
}

TEST(ObjectIterator, GoesOnAfterAnotherMemberIsSetOrRemoved) {
    io_object object;
    for (auto const* const key : {"a", "b", "d"}) object.set(key, 1);
    auto position = object.begin();
    io_error error;
    object.remove("b", error);
    object.set("c", 1);
    EXPECT_EQ((*++position).first, "c");
    EXPECT_EQ((*++position).first, "d");
    EXPECT_TRUE(++position == object.end());
}

TEST(ObjectIterator, GoesOnInTheMovedObject) {
    io_object source;
    source.set("a", 1);
    source.set("b", 2);
    auto position = source.begin();
    io_object const target(std::move(source));
    EXPECT_TRUE(holds((*++position).second, 2));
    EXPECT_TRUE(++position == target.end());
}

TEST(ObjectIterator, GivesValuesThatDoNotFollowTheObject) {
    io_object object;
    object.set("a", "first");
    auto const member = *object.begin();
    object.set("a", "other");
    EXPECT_TRUE(holds_text(member.second, "first"));
}

TEST(ObjectIterator, GivesValuesThatDoNotReachTheObject) {
    io_object object;
    object.set("a", "first");
    auto member = *object.begin();
    member.second = 5;
    EXPECT_TRUE(holds_text(object.get("a"), "first"));
}

TEST(ObjectIterator, GivesValuesThatMoveOutOfThePair) {
    io_object object;
    object.set("a", "text");
    io_value const value = (*object.begin()).second;
    EXPECT_TRUE(holds_text(value, "text"));
    EXPECT_TRUE(holds_text(object.get("a"), "text"));
}

TEST(ObjectIterator, FindsAMemberByItsValue) {
    io_object object;
    object.set("a", 1);
    object.set("b", "5");
    auto const found = std::find_if(object.begin(), object.end(),
                                    [](auto const& member) { return member.second == 5; });
    ASSERT_TRUE(found != object.end());
    EXPECT_EQ((*found).first, "b");
}

TEST(ObjectIterator, CountsMembersByTheirType) {
    io_object object;
    object.set("a", 1);
    object.set("b", 2);
    object.set("c", 1.5);
    EXPECT_EQ(std::count_if(object.begin(), object.end(),
                            [](auto const& member) { return member.second.data_type() == i32; }),
              2);
}

TEST(ObjectIterator, WalksNestedObjects) {
    io_object inner;
    inner.set("b", 1);
    io_object outer;
    outer.set("inner", inner);
    int members = 0;
    for (auto const& [key, value] : outer) {
        for (auto const& [inner_key, inner_value] : *value.get_if<io_object>()) {
            EXPECT_EQ(inner_key, "b");
            ++members;
        }
    }
    EXPECT_EQ(members, 1);
}

} // namespace
