#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "member_types.hpp"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using structures_test::text;
using types = io_data_type::basic_types;

constexpr auto u16 = io_data_type::scalar(types::u16);

TEST(ObjectPrinting, GivesTheMembersInTheOrderOfTheirKeys) {
    io_object pump(7, {{"name", text}, {"count", u16}});
    pump.set("name", "pump");
    pump.set("count", 3);
    EXPECT_EQ(io_value(pump).printable_string(' ', 2, 0), "object<7> {\n"
                                                          "[count] =>\n"
                                                          "  (u16) 3\n"
                                                          "[name] =>\n"
                                                          "  (string) \"pump\"\n"
                                                          "}");
}

TEST(ObjectPrinting, OrdersKeysAsUnsignedBytes) {
    io_object object;
    for (auto const* const key : {"\xC3", "b", "a", "B", "aa"}) object.set(key, true);
    EXPECT_EQ(io_value(object).printable_string(' ', 0, 0), "object<?> {\n"
                                                            "[B] =>\n(boolean) true\n"
                                                            "[a] =>\n(boolean) true\n"
                                                            "[aa] =>\n(boolean) true\n"
                                                            "[b] =>\n(boolean) true\n"
                                                            "[\xC3] =>\n(boolean) true\n"
                                                            "}");
}

TEST(ObjectPrinting, PutsTheKeysOfANestedObjectAtTheLevelOfThatObject) {
    io_object inner(9, {{"b", io_data_type::scalar(types::boolean)}});
    inner.set("b", true);
    io_object outer;
    outer.set("s", inner);
    outer.set("a", utility::array<double>{1.5, 2.0});
    EXPECT_EQ(io_value(outer).printable_string(' ', 2, 0), "object<?> {\n"
                                                           "[a] =>\n"
                                                           "  array (2) {\n"
                                                           "    (dbl) 1.5\n"
                                                           "    (dbl) 2\n"
                                                           "  }\n"
                                                           "[s] =>\n"
                                                           "  object<9> {\n"
                                                           "  [b] =>\n"
                                                           "    (boolean) true\n"
                                                           "  }\n"
                                                           "}");
}

TEST(ObjectPrinting, GivesTwoLinesWithoutMembers) {
    EXPECT_EQ(io_value(io_object(5, {})).printable_string(' ', 2, 0), "object<5> {\n}");
    EXPECT_EQ(io_value(io_object()).printable_string(' ', 2, 0), "object<?> {\n}");
    EXPECT_EQ(io_value(io_object()).printable_string('.', 3, 1), "...object<?> {\n...}");
}

TEST(ObjectPrinting, LeavesOutDeclaredMembersThatAreNotSet) {
    io_object const object(5, {{"name", text}});
    EXPECT_EQ(io_value(object).printable_string(' ', 2, 0), "object<5> {\n}");
}

TEST(ObjectPrinting, GivesTheKeysAsTheyAre) {
    io_object object;
    object.set("", 1);
    object.set("a]\n\"\0"sv, 2);
    EXPECT_EQ(io_value(object).printable_string(' ', 0, 0), "object<?> {\n"
                                                            "[] =>\n(i32) 1\n"
                                                            "[a]\n\"\0] =>\n(i32) 2\n"
                                                            "}"sv);
}

TEST(ObjectPrinting, GivesTheLargestId) {
    EXPECT_EQ(io_value(io_object(0xFFFFFFFFFFFFFFFFULL, {})).printable_string(' ', 2, 0),
              "object<18446744073709551615> {\n}");
}

TEST(ObjectPrinting, GivesTheElementsOfAnArrayOneLevelDeeper) {
    utility::array<io_object> objects(2);
    objects[1].set("a", 1);
    EXPECT_EQ(io_value(objects).printable_string('-', 1, 1), "-array (2) {\n"
                                                             "--object<?> {\n"
                                                             "--}\n"
                                                             "--object<?> {\n"
                                                             "--[a] =>\n"
                                                             "---(i32) 1\n"
                                                             "--}\n"
                                                             "-}");
}

TEST(ObjectPrinting, GivesTheEmptyValueOfAMember) {
    io_object object;
    object.set("none", io_value());
    EXPECT_EQ(io_value(object).printable_string(' ', 2, 0), "object<?> {\n[none] =>\n  empty\n}");
}

} // namespace
