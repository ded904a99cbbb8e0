#include "sample_payloads.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace values_test {
namespace {

// Index, type and data type as other modules know them.
struct pairing {
    types element;
    bool is_array;
};
constexpr pairing pairings[34] = {
    {types::empty, false},   // 0: nothing
    {types::boolean, false}, // 1: bool
    {types::i8, false},      // 2: signed char
    {types::i16, false},     // 3: short
    {types::i32, false},     // 4: int
    {types::i32, false},     // 5: long
    {types::i64, false},     // 6: long long
    {types::u8, false},      // 7: unsigned char
    {types::u16, false},     // 8: unsigned short
    {types::u32, false},     // 9: unsigned int
    {types::u32, false},     // 10: unsigned long
    {types::u64, false},     // 11: unsigned long long
    {types::flt, false},     // 12: float
    {types::dbl, false},     // 13: double
    {types::i8, false},      // 14: char
    {types::string, false},  // 15: text
    {types::object, false},  // 16: object
    {types::boolean, true},  // 17: array<bool>
    {types::i8, true},       // 18: array<signed char>
    {types::i16, true},      // 19: array<short>
    {types::i32, true},      // 20: array<int>
    {types::i32, true},      // 21: array<long>
    {types::i64, true},      // 22: array<long long>
    {types::u8, true},       // 23: array<unsigned char>
    {types::u16, true},      // 24: array<unsigned short>
    {types::u32, true},      // 25: array<unsigned int>
    {types::u32, true},      // 26: array<unsigned long>
    {types::u64, true},      // 27: array<unsigned long long>
    {types::flt, true},      // 28: array<float>
    {types::dbl, true},      // 29: array<double>
    {types::i8, true},       // 30: array<char>
    {types::string, true},   // 31: array<string>
    {types::object, true},   // 32: array<io_object>
    {types::empty, true},    // 33: array<io_value>
};

using by_index = ::testing::Types<std::nullptr_t,
                                  bool,
                                  signed char,
                                  short,
                                  int,
                                  long,
                                  long long,
                                  unsigned char,
                                  unsigned short,
                                  unsigned int,
                                  unsigned long,
                                  unsigned long long,
                                  float,
                                  double,
                                  char,
                                  utility::string,
                                  io_object,
                                  array<bool>,
                                  array<signed char>,
                                  array<short>,
                                  array<int>,
                                  array<long>,
                                  array<long long>,
                                  array<unsigned char>,
                                  array<unsigned short>,
                                  array<unsigned int>,
                                  array<unsigned long>,
                                  array<unsigned long long>,
                                  array<float>,
                                  array<double>,
                                  array<char>,
                                  array<utility::string>,
                                  array<io_object>,
                                  array<io_value>>;

TEST(ValueAlternatives, StandAtTheirIndices) {
    EXPECT_TRUE((std::is_same_v<by_index, test_support::every_alternative>));
}

template <class T>
class ValueConstruction : public ::testing::Test {
protected:
    static constexpr int index = detail::index_of<T>;
    static io_data_type paired_type() {
        pairing const row = pairings[index];
        return {row.element, std::is_same_v<T, io_object> ? 77U : 0U, row.is_array ? 2U : 0U, 0};
    }
};
TYPED_TEST_SUITE(ValueConstruction,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(ValueConstruction, StoresTheAlternativeOfItsArgument) {
    io_value const value = sample_value<TypeParam>();
    EXPECT_EQ(value.index(), this->index);
}

TYPED_TEST(ValueConstruction, PairsTheDataTypeWithTheAlternative) {
    io_value const value = sample_value<TypeParam>();
    EXPECT_EQ(value.data_type(), this->paired_type());
}

TYPED_TEST(ValueConstruction, KeepsTheContent) {
    io_value const value = sample_value<TypeParam>();
    ASSERT_NE(value.get_if<TypeParam>(), nullptr);
    EXPECT_TRUE(same_content(*value.get_if<TypeParam>(), sample<TypeParam>()));
}

TYPED_TEST(ValueConstruction, GivesTheTypeCodeInEveryForm) {
    io_value const value = sample_value<TypeParam>();
    pairing const row = pairings[this->index];
    unsigned int const code =
        static_cast<unsigned int>(row.element) | (row.is_array ? 0x80000000U : 0U);
    EXPECT_EQ(value.type_code(), code);
    EXPECT_EQ(value.p_basic_type(), code);
    EXPECT_EQ(io_value::p_basic_type(value.data_type()), code);
}

TYPED_TEST(ValueConstruction, KeepsAStatedTypeUnchecked) {
    io_data_type const stated{types{99}, 1234567890123ULL, 3, 5};
    io_value const value(stated, sample<TypeParam>());
    EXPECT_EQ(value.data_type(), stated);
    EXPECT_EQ(value.index(), this->index);
    EXPECT_TRUE(same_content(*value.get_if<TypeParam>(), sample<TypeParam>()));
}

TEST(EmptyValue, HasZeroInEveryField) {
    EXPECT_TRUE(is_exactly_empty(io_value()));
    EXPECT_TRUE(is_exactly_empty(io_value{}));
}

TEST(ValueOfAnObject, TakesTheStructureIdOfTheObject) {
    io_value const value(io_object(18446744073709551615ULL, io_structure_type()));
    EXPECT_EQ(value.data_type(), io_data_type::object(18446744073709551615ULL));
    EXPECT_EQ(io_value(io_object()).data_type(), io_data_type::object(0));
}

TEST(ValueOfAnObject, StaysAScalarWhateverTypeTheObjectHas) {
    io_value const value(io_object(io_data_type{types::object, 9, 2, 5}, io_structure_type()));
    EXPECT_EQ(value.data_type(), io_data_type::object(9));
}

TEST(ValueOfValues, LeavesTheElementTypeOpen) {
    io_value const value(array<io_value>::of(1, 2));
    EXPECT_EQ(value.data_type(), (io_data_type{types::empty, 0, 2, 0}));
    EXPECT_EQ(value.type_code(), 0x80000000U);
}

TEST(ValueOfValues, TakesAStatedElementType) {
    io_value const value(io_data_type::array_of(types::i32), array<io_value>::of(1, 2));
    EXPECT_EQ(value.data_type(), io_data_type::array_of(types::i32));
    EXPECT_EQ(value.index(), 33);
}

TEST(ValueFactories, AlwaysGiveSixtyFourBits) {
    io_value const lowest = io_value::from_i64(std::int64_t{INT64_MIN});
    EXPECT_EQ(lowest.index(), 6);
    EXPECT_EQ(lowest.data_type(), io_data_type::scalar(types::i64));
    EXPECT_EQ(*lowest.get_if<long long>(), INT64_MIN);
    io_value const highest = io_value::from_u64(std::uint64_t{UINT64_MAX});
    EXPECT_EQ(highest.index(), 11);
    EXPECT_EQ(highest.data_type(), io_data_type::scalar(types::u64));
    EXPECT_EQ(*highest.get_if<unsigned long long>(), UINT64_MAX);
}

// std::int64_t is long where long has 64 bits, and long is paired with i32 everywhere.
TEST(ValueOfAStandardInteger, FollowsTheTypeBehindTheAlias) {
    io_value const value(std::int64_t{5000000000});
    io_value const unsigned_value(std::uint64_t{5000000000});
    if constexpr (std::is_same_v<std::int64_t, long>) {
        EXPECT_EQ(value.index(), 5);
        EXPECT_EQ(value.data_type(), io_data_type::scalar(types::i32));
        EXPECT_EQ(unsigned_value.index(), 10);
        EXPECT_EQ(unsigned_value.data_type(), io_data_type::scalar(types::u32));
    } else {
        EXPECT_EQ(value.index(), 6);
        EXPECT_EQ(value.data_type(), io_data_type::scalar(types::i64));
        EXPECT_EQ(unsigned_value.index(), 11);
        EXPECT_EQ(unsigned_value.data_type(), io_data_type::scalar(types::u64));
    }
}

TEST(ValueTypeCode, ComesFromTheArrayKindAlone) {
    EXPECT_EQ(io_value::p_basic_type(io_data_type::array_of(types::i16)), 0x80000007U);
    EXPECT_EQ(io_value::p_basic_type(io_data_type{}), 0U);
    EXPECT_EQ(io_value::p_basic_type(io_data_type::object(1234567)), 13U);
    EXPECT_EQ(io_value::p_basic_type(io_data_type{types::i16, 0, 0, 5}), 7U);
    EXPECT_EQ(io_value::p_basic_type(io_data_type{types::i16, 0, 1, 0}), 0x80000007U);
}

} // namespace
} // namespace values_test
