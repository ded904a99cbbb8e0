#include <gtest/gtest.h>
#include <iohost/type_names.hpp>

#include <sstream>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using declared = v2::io_data_type;
using kinds = declared::basic_types;

TEST(type_names, every_kind_alone_and_as_an_array) {
    struct {
        char const* name;
        kinds kind;
    } const expected[] = {
        {"empty", kinds::empty},   {"boolean", kinds::boolean}, {"u8", kinds::u8},
        {"u16", kinds::u16},       {"u32", kinds::u32},         {"u64", kinds::u64},
        {"i8", kinds::i8},         {"i16", kinds::i16},         {"i32", kinds::i32},
        {"i64", kinds::i64},       {"flt", kinds::flt},         {"dbl", kinds::dbl},
        {"string", kinds::string}, {"object", kinds::object},
    };
    for (auto const& [name, kind] : expected) {
        EXPECT_EQ(iohost::type_named(name), declared::scalar(kind)) << name;
        EXPECT_EQ(iohost::type_named(name + std::string("[]")), declared::array_of(kind)) << name;
    }
}

TEST(type_names, objects_with_an_id) {
    EXPECT_EQ(iohost::type_named("object<7>"), declared::object(7));
    EXPECT_EQ(iohost::type_named("object<18446744073709551615>"),
              declared::object(18446744073709551615U));
    auto many = declared::object(7);
    many.array_kind = 2;
    EXPECT_EQ(iohost::type_named("object<7>[]"), many);
}

TEST(type_names, nothing_else_is_one) {
    for (char const* const name : {"",
                                   "i33",
                                   "I32",
                                   " i32",
                                   "i32 ",
                                   "i32[8]",
                                   "i32[][]",
                                   "[]",
                                   "type(99)",
                                   "int",
                                   "object<",
                                   "object<>",
                                   "object<0>",
                                   "object<07>",
                                   "object<x>",
                                   "object<7>>",
                                   "object<7x>",
                                   "object<18446744073709551616>",
                                   "object[]<7>",
                                   "i32<7>",
                                   "<7>",
                                   ">",
                                   "object>",
                                   "string(4)"}) {
        EXPECT_FALSE(iohost::type_named(name).has_value()) << name;
    }
}

TEST(type_names, are_listed_for_people) {
    EXPECT_EQ(iohost::known_types(),
              "empty, boolean, u8, u16, u32, u64, i8, i16, i32, i64, flt, dbl, string, object, "
              "object<ID>, or one of these with [] for an array");
}

TEST(type_names, a_registered_structure_lends_its_name) {
    v2::io_structure_dictionary structures;
    v2::io_error error;
    auto type = structures.add_structure(v2::io_structure_type("pump"), error);
    EXPECT_EQ(iohost::name_of(type, structures), "object<pump>");
    type.array_kind = 2;
    EXPECT_EQ(iohost::name_of(type, structures), "object<pump>[]");
}

TEST(type_names, without_a_registered_structure_are_those_of_the_library) {
    v2::io_structure_dictionary structures;
    EXPECT_EQ(iohost::name_of(declared::object(7), structures), "object<7>");
    EXPECT_EQ(iohost::name_of(declared::object(0), structures), "object");
    EXPECT_EQ(iohost::name_of(declared::array_of(kinds::i32), structures), "i32[]");
}

} // namespace
