#include <tavi/ioapi/v2/io_structure_type.hpp>

#include "member_types.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using structures_test::i32;
using structures_test::reals;
using types = io_data_type::basic_types;

std::vector<std::string> names_of(io_structure_type const& type) {
    std::vector<std::string> names;
    for (auto const& [name, member] : type) names.push_back(name.str());
    return names;
}

TEST(StructureTypeIterator, GivesNameAndType) {
    io_structure_type const type{{"state", i32}, {"level", reals}};
    std::vector<std::pair<std::string, io_data_type>> members;
    for (auto const& [name, member] : type) members.emplace_back(name.str(), member);
    std::vector<std::pair<std::string, io_data_type>> const expected{{"level", reals},
                                                                     {"state", i32}};
    EXPECT_EQ(members, expected);
}

TEST(StructureTypeIterator, GivesAPairByValue) {
    using iterator = io_structure_type::const_iterator;
    static_assert(std::is_same_v<decltype(*std::declval<iterator const&>()),
                                 utility::pair<utility::string, io_data_type>>);
}

TEST(StructureTypeIterator, GivesAllFieldsOfTheType) {
    io_data_type const odd{static_cast<types>(99), 0xFFFFFFFFFFFFFFFFULL, 7, 5};
    io_structure_type const type{{"odd", odd}};
    EXPECT_EQ((*type.begin()).second, odd);
}

TEST(StructureTypeIterator, FindsAMemberByItsType) {
    io_structure_type const type{{"a", i32}, {"b", reals}, {"c", i32}};
    auto const found = std::find_if(type.begin(), type.end(),
                                    [](auto const& member) { return member.second.is_array(); });
    ASSERT_TRUE(found != type.end());
    EXPECT_EQ((*found).first, "b");
}

TEST(StructureTypeIterator, KeepsThePlaceOfAMemberWhoseTypeIsReplaced) {
    io_structure_type type{{"b", i32}, {"a", i32}};
    type.set_member("a", reals);
    EXPECT_EQ(names_of(type), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ((*type.begin()).second, reals);
}

TEST(StructureTypeIterator, GoesOnAfterAMemberIsAdded) {
    io_structure_type type{{"a", i32}, {"c", i32}};
    auto position = type.begin();
    type.set_member("b", reals);
    ++position;
    EXPECT_EQ((*position).first, "b");
    ++position;
    EXPECT_EQ((*position).first, "c");
}

TEST(StructureTypeIterator, SeesATypeReplacedUnderIt) {
    io_structure_type type{{"a", i32}};
    auto const position = type.begin();
    type.set_member("a", reals);
    EXPECT_EQ((*position).second, reals);
}

TEST(StructureTypeIterator, GivesPairsThatDoNotFollowTheType) {
    io_structure_type type{{"a", i32}};
    auto const member = *type.begin();
    type.set_member("a", reals);
    EXPECT_EQ(member.second, i32);
    type.clear();
    EXPECT_EQ(member.first, "a");
}

TEST(StructureTypeIterator, GivesPairsThatDoNotReachTheType) {
    io_structure_type const type{{"a", i32}};
    auto member = *type.begin();
    member.second = reals;
    EXPECT_EQ(type.get_member("a"), i32);
}

TEST(StructureTypeIterator, BeginsAtTheEndAfterAClear) {
    io_structure_type type("pump", {{"a", i32}});
    type.clear();
    EXPECT_TRUE(type.begin() == type.end());
    EXPECT_TRUE(type.empty());
    EXPECT_EQ(type.name(), "pump");
}

TEST(StructureTypeIterator, GoesOnInTheMovedType) {
    io_structure_type source{{"a", i32}, {"b", i32}};
    auto position = source.begin();
    io_structure_type const target(std::move(source));
    ++position;
    EXPECT_EQ((*position).first, "b");
}

} // namespace
