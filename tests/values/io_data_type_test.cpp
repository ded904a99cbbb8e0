#include <tavi/ioapi/v2/io_data_type.hpp>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

using tavi::ioapi::v2::io_data_type;
using types = io_data_type::basic_types;

struct named_kind {
    types kind;
    unsigned int number;
    char const* name;
};

constexpr named_kind every_kind[] = {
    {types::empty, 0, "empty"},    {types::boolean, 1, "boolean"}, {types::u8, 2, "u8"},
    {types::u16, 3, "u16"},        {types::u32, 4, "u32"},         {types::u64, 5, "u64"},
    {types::i8, 6, "i8"},          {types::i16, 7, "i16"},         {types::i32, 8, "i32"},
    {types::i64, 9, "i64"},        {types::flt, 10, "flt"},        {types::dbl, 11, "dbl"},
    {types::string, 12, "string"}, {types::object, 13, "object"},
};

std::string printed(io_data_type const& type) {
    std::ostringstream out;
    out << type;
    return out.str();
}

TEST(IoDataType, NumbersTheElementKinds) {
    for (named_kind const& row : every_kind) {
        EXPECT_EQ(static_cast<unsigned int>(row.kind), row.number) << row.name;
    }
}

TEST(IoDataType, KindsAreThirtyTwoBitsWide) {
    EXPECT_EQ(sizeof(types), 4U);
}

TEST(IoDataType, DefaultsToTheEmptyType) {
    io_data_type const type;
    EXPECT_EQ(type.basic_type, types::empty);
    EXPECT_EQ(type.structure_id, 0U);
    EXPECT_EQ(type.array_kind, 0U);
    EXPECT_EQ(type.array_extent, 0U);
}

TEST(IoDataType, CodeOfAScalarIsItsKind) {
    for (named_kind const& row : every_kind) {
        EXPECT_EQ(io_data_type::scalar(row.kind).type_code(), row.number) << row.name;
    }
}

TEST(IoDataType, CodeOfAnArrayHasBit31) {
    for (named_kind const& row : every_kind) {
        EXPECT_EQ(io_data_type::array_of(row.kind).type_code(), 0x80000000U + row.number)
            << row.name;
    }
}

TEST(IoDataType, AnyArrayKindButZeroMakesAnArray) {
    for (unsigned int const kind : {1U, 2U, 3U, 0x80000000U, 0xFFFFFFFFU}) {
        io_data_type const type{types::u8, 0, kind, 0};
        EXPECT_TRUE(type.is_array()) << kind;
        EXPECT_EQ(type.type_code(), 0x80000002U) << kind;
    }
}

TEST(IoDataType, ExtentAloneMakesNoArray) {
    io_data_type const type{types::i16, 0, 0, 5};
    EXPECT_FALSE(type.is_array());
    EXPECT_EQ(type.type_code(), 7U);
}

TEST(IoDataType, StructureIdStaysOutOfTheCode) {
    EXPECT_EQ(io_data_type::object(0).type_code(), 13U);
    EXPECT_EQ(io_data_type::object(0xFFFFFFFFFFFFFFFFULL).type_code(), 13U);
}

TEST(IoDataType, KeepsAnUnknownKind) {
    EXPECT_EQ(io_data_type::scalar(types{99}).type_code(), 99U);
    EXPECT_EQ(io_data_type::array_of(types{99}).type_code(), 0x80000063U);
}

TEST(IoDataType, EqualsItsCopy) {
    io_data_type const type{types::object, 7, 2, 5};
    io_data_type const copy = type;
    EXPECT_TRUE(type == copy);
    EXPECT_FALSE(type != copy);
}

TEST(IoDataType, DiffersInEachField) {
    io_data_type const type{types::object, 7, 2, 5};
    io_data_type const others[] = {
        {types::string, 7, 2, 5}, {types::object, 8, 2, 5}, {types::object, 7 + (1ULL << 32), 2, 5},
        {types::object, 7, 1, 5}, {types::object, 7, 2, 0},
    };
    for (io_data_type const& other : others) {
        EXPECT_FALSE(type == other) << printed(other);
        EXPECT_TRUE(type != other) << printed(other);
    }
}

TEST(IoDataType, ScalarWithAnExtentDiffersFromOneWithout) {
    EXPECT_FALSE((io_data_type{types::i16, 0, 0, 5} == io_data_type{types::i16, 0, 0, 0}));
}

TEST(IoDataType, ScalarFactorySetsTheKindAlone) {
    EXPECT_TRUE((io_data_type::scalar(types::flt) == io_data_type{types::flt, 0, 0, 0}));
}

TEST(IoDataType, ArrayFactorySetsKindTwoWithoutExtent) {
    EXPECT_TRUE((io_data_type::array_of(types::flt) == io_data_type{types::flt, 0, 2, 0}));
}

TEST(IoDataType, ObjectFactorySetsTheStructureId) {
    EXPECT_TRUE((io_data_type::object(7) == io_data_type{types::object, 7, 0, 0}));
}

TEST(IoDataType, FieldsStandAtTheirOffsets) {
    io_data_type const type{types{0x01020304U}, 0x1112131415161718ULL, 0x21222324U, 0x31323334U};
    ASSERT_EQ(sizeof type, 24U);
    unsigned char bytes[24];
    std::memcpy(bytes, &type, sizeof bytes);
    unsigned int word = 0;
    unsigned long long wide = 0;
    std::memcpy(&word, bytes, 4);
    EXPECT_EQ(word, 0x01020304U);
    std::memcpy(&wide, bytes + 8, 8);
    EXPECT_EQ(wide, 0x1112131415161718ULL);
    std::memcpy(&word, bytes + 16, 4);
    EXPECT_EQ(word, 0x21222324U);
    std::memcpy(&word, bytes + 20, 4);
    EXPECT_EQ(word, 0x31323334U);
}

TEST(IoDataType, IsTriviallyCopyable) {
    EXPECT_TRUE(std::is_trivially_copyable_v<io_data_type>);
    EXPECT_TRUE(std::is_standard_layout_v<io_data_type>);
}

TEST(IoDataType, PrintsTheNameOfItsKind) {
    for (named_kind const& row : every_kind) {
        EXPECT_EQ(printed(io_data_type::scalar(row.kind)), row.name);
    }
}

TEST(IoDataType, PrintsBracketsForAnArray) {
    for (named_kind const& row : every_kind) {
        EXPECT_EQ(printed(io_data_type::array_of(row.kind)), row.name + std::string("[]"));
    }
}

TEST(IoDataType, PrintsTheStructureIdInAngleBrackets) {
    EXPECT_EQ(printed(io_data_type::object(7)), "object<7>");
    EXPECT_EQ(printed(io_data_type::object(18446744073709551615ULL)),
              "object<18446744073709551615>");
}

TEST(IoDataType, PrintsAnUnknownKindByItsNumber) {
    EXPECT_EQ(printed(io_data_type::scalar(types{99})), "type(99)");
}

} // namespace
