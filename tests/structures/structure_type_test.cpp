#include <tavi/ioapi/v2/io_structure_type.hpp>

#include "member_types.hpp"
#include "support/allocations.hpp"
#include "support/operators.hpp"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using structures_test::i32;
using structures_test::reals;
using structures_test::text;
using types = io_data_type::basic_types;

TEST(StructureType, HasNoNameAndNoMembersByDefault) {
    io_structure_type const type;
    EXPECT_EQ(type.name(), "");
    EXPECT_EQ(type.name().size(), 0U);
    EXPECT_FALSE(type.has_member(""));
}

TEST(StructureType, KeepsItsName) {
    io_structure_type const type(utility::string("pump"));
    EXPECT_EQ(type.name(), "pump");
    EXPECT_FALSE(type.has_member("pump"));
}

TEST(StructureType, KeepsAnyName) {
    for (std::string_view const name :
         {""sv, "a\0b"sv, "\xFF\x80"sv, "a name that is longer than small buffers are"sv}) {
        EXPECT_EQ(io_structure_type(utility::string(name)).name(), name);
    }
    EXPECT_EQ(io_structure_type(utility::string()).name(), "");
}

TEST(StructureType, OfAListHasItsMembersAndNoName) {
    io_structure_type const type{{"level", reals}, {"state", text}};
    EXPECT_EQ(type.name(), "");
    EXPECT_EQ(type.get_member("level"), reals);
    EXPECT_EQ(type.get_member("state"), text);
}

TEST(StructureType, OfNameAndListHasBoth) {
    io_structure_type const type("pump", {{"level", reals}, {"state", text}});
    EXPECT_EQ(type.name(), "pump");
    EXPECT_EQ(type.get_member("level"), reals);
    EXPECT_EQ(type.get_member("state"), text);
}

TEST(StructureType, OfAListKeepsTheLaterOfTwoPairs) {
    io_structure_type const type{{"a", i32}, {"b", i32}, {"a", text}};
    EXPECT_EQ(type.get_member("a"), text);
    EXPECT_EQ(type.get_member("b"), i32);
}

TEST(StructureType, OfAnEmptyListHasNoMembers) {
    std::initializer_list<io_structure_type::member const> const none{};
    EXPECT_FALSE(io_structure_type(none).has_member(""));
    EXPECT_EQ(io_structure_type("pump", none).name(), "pump");
}

TEST(StructureType, ReadsANameWithoutABlockAsEmpty) {
    io_structure_type const type("pump", {{utility::string(), i32}});
    EXPECT_TRUE(type.has_member(""));
    EXPECT_EQ(type.get_member(""), i32);
}

TEST(StructureType, LosesNothingOfTheNameInTheList) {
    utility::string const name("a\0b"sv);
    io_structure_type const type{{name, i32}};
    EXPECT_TRUE(type.has_member("a\0b"sv));
    EXPECT_FALSE(type.has_member("a"));
}

TEST(StructureMember, IsAdded) {
    io_structure_type type;
    type.set_member("level", reals);
    EXPECT_TRUE(type.has_member("level"));
    EXPECT_EQ(type.get_member("level"), reals);
}

TEST(StructureMember, IsReplacedByOneOfTheSameName) {
    io_structure_type type;
    type.set_member("level", reals);
    type.set_member("level", i32);
    EXPECT_EQ(type.get_member("level"), i32);
    type.clear();
    EXPECT_FALSE(type.has_member("level")) << "there was one member, not two";
}

TEST(StructureMember, KeepsAllFieldsOfItsType) {
    io_data_type const odd{static_cast<types>(99), 0xFFFFFFFFFFFFFFFFULL, 7, 5};
    io_structure_type type;
    type.set_member("odd", odd);
    EXPECT_EQ(type.get_member("odd"), odd);
}

TEST(StructureMember, MayHaveTheEmptyName) {
    io_structure_type type;
    type.set_member(utility::string_view(), i32);
    EXPECT_TRUE(type.has_member(""));
    EXPECT_TRUE(type.has_member(utility::string_view()));
    EXPECT_EQ(type.get_member(""), i32);
}

TEST(StructureMember, ThatIsUnknownHasTheAllZeroType) {
    io_structure_type const type{{"level", reals}};
    EXPECT_FALSE(type.has_member("missing"));
    EXPECT_EQ(type.get_member("missing"), io_data_type());
}

TEST(StructureMember, OfTheAllZeroTypeIsToldApartByItsPresence) {
    io_structure_type const type{{"blank", io_data_type()}};
    EXPECT_EQ(type.get_member("blank"), type.get_member("missing"));
    EXPECT_TRUE(type.has_member("blank"));
    EXPECT_FALSE(type.has_member("missing"));
}

TEST(StructureMember, IsFoundByExactlyItsName) {
    io_structure_type const type{{"level", reals}};
    for (std::string_view const name : {"Level"sv, "lev"sv, "levels"sv, ""sv, "level\0"sv}) {
        EXPECT_FALSE(type.has_member(name)) << name;
        EXPECT_EQ(type.get_member(name), io_data_type()) << name;
    }
}

TEST(StructureMember, IsFoundByANameThatIsNotTerminated) {
    io_structure_type type;
    char const buffer[] = {'l', 'e', 'v', 'e', 'l', 's', 'X'};
    type.set_member(utility::string_view(buffer, 5), reals);
    EXPECT_TRUE(type.has_member("level"));
    EXPECT_TRUE(type.has_member(utility::string_view(buffer, 5)));
    EXPECT_EQ(type.get_member(utility::string_view(buffer, 5)), reals);
    EXPECT_FALSE(type.has_member(utility::string_view(buffer, 6)));
}

TEST(StructureMember, OwnsItsName) {
    io_structure_type type;
    std::string name = "level";
    type.set_member(name, reals);
    name = "other";
    EXPECT_TRUE(type.has_member("level"));
    EXPECT_FALSE(type.has_member("other"));
}

TEST(StructureMember, MayHaveBytesOfAnyKind) {
    io_structure_type type;
    type.set_member("\xC3\xA4"sv, i32);
    type.set_member("a\0"sv, text);
    type.set_member("a", reals);
    EXPECT_EQ(type.get_member("\xC3\xA4"sv), i32);
    EXPECT_EQ(type.get_member("a\0"sv), text);
    EXPECT_EQ(type.get_member("a"), reals);
}

TEST(StructureMember, IsFoundAmongMany) {
    io_structure_type type;
    for (int i = 0; i < 200; ++i) {
        type.set_member("member" + std::to_string(i),
                        io_data_type::object(static_cast<unsigned long long>(i)));
    }
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(type.get_member("member" + std::to_string(i)).structure_id,
                  static_cast<unsigned long long>(i));
    }
}

TEST(StructureMember, IsLookedUpWithoutAllocation) {
    std::string const name = "a member whose name is longer than small buffers are";
    io_structure_type type;
    type.set_member(name, i32);
    test_support::allocation_counter const counter;
    EXPECT_TRUE(type.has_member(name));
    EXPECT_FALSE(type.has_member("another name that is longer than small buffers are"));
    EXPECT_EQ(type.get_member(name), i32);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(StructureClear, RemovesMembersAndKeepsTheName) {
    io_structure_type type("pump", {{"level", reals}, {"state", text}});
    type.clear();
    EXPECT_EQ(type.name(), "pump");
    EXPECT_FALSE(type.has_member("level"));
    EXPECT_FALSE(type.has_member("state"));
    type.set_member("level", i32);
    EXPECT_EQ(type.get_member("level"), i32);
}

TEST(StructureClear, IsHarmlessWithoutMembers) {
    io_structure_type type;
    type.clear();
    type.clear();
    EXPECT_FALSE(type.has_member(""));
}

TEST(StructureAssignment, ReplacesNameAndMembers) {
    io_structure_type target("old", {{"gone", i32}, {"kept", i32}});
    io_structure_type const source("pump", {{"kept", text}, {"new", reals}});
    target = source;
    EXPECT_EQ(target.name(), "pump");
    EXPECT_FALSE(target.has_member("gone"));
    EXPECT_EQ(target.get_member("kept"), text);
    EXPECT_EQ(target.get_member("new"), reals);
}

TEST(StructureAssignment, ReusesTheNodesOfTheTarget) {
    io_structure_type target{{"a", i32}, {"b", i32}, {"c", i32}}; // names that need no block
    io_structure_type const same_count{{"d", text}, {"e", text}, {"f", text}};
    {
        test_support::allocation_counter const counter;
        target = same_count;
        EXPECT_EQ(counter.allocations(), 0U);
    }
    io_structure_type const more{{"g", i32}, {"h", i32}, {"i", i32}, {"j", i32}, {"k", i32}};
    test_support::allocation_counter const counter;
    target = more;
    EXPECT_EQ(counter.allocations(), 2U);
    EXPECT_TRUE(target.has_member("k"));
    EXPECT_FALSE(target.has_member("d"));
}

TEST(StructureCopy, IsIndependent) {
    io_structure_type original("pump", {{"level", reals}});
    io_structure_type copy(original);
    copy.set_member("level", i32);
    copy.set_member("state", text);
    EXPECT_EQ(original.get_member("level"), reals);
    EXPECT_FALSE(original.has_member("state"));
    original.clear();
    EXPECT_TRUE(copy.has_member("state"));
    EXPECT_EQ(copy.name(), "pump");
}

TEST(StructureMove, KeepsTheNameViewValid) {
    io_structure_type source("a name that is longer than small buffers are", {});
    auto const name = source.name();
    io_structure_type const target(std::move(source));
    EXPECT_EQ(name.data(), target.name().data());
    EXPECT_EQ(name, "a name that is longer than small buffers are");
}

TEST(StructureType, SurvivesExhaustedMemory) {
    using test_support::count_survived_failures;
    EXPECT_GE(count_survived_failures([] {
                  io_structure_type const type(
                      "a name that is longer than small buffers are",
                      {{"a member whose name is longer than small buffers", i32},
                       {"another member whose name is longer than small buffers", text}});
              }),
              5);
    EXPECT_GE(count_survived_failures([] {
                  io_structure_type type;
                  type.set_member("a member whose name is longer than small buffers", i32);
              }),
              2);
}

TEST(StructureMember, IsAbsentWhereItCouldNotBeAdded) {
    io_structure_type type{{"level", reals}};
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(type.set_member("state", text), std::bad_alloc);
    }
    EXPECT_FALSE(type.has_member("state"));
    EXPECT_EQ(type.get_member("level"), reals);
}

TEST(StructureType, OffersNoComparison) {
    static_assert(!test_support::has_equal<io_structure_type>);
    static_assert(!test_support::has_not_equal<io_structure_type>);
    static_assert(!test_support::has_less<io_structure_type>);
}

} // namespace
