#include "equality_held_value.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace whole_values {
namespace {

using namespace values_test;

template <class T>
using limits = std::numeric_limits<T>;

struct printed_row {
    char const* name;
    held_value value;
    std::string text;
};

class PrintedScalar : public ::testing::TestWithParam<printed_row> {};

TEST_P(PrintedScalar, IsLabelAndValue) {
    EXPECT_EQ(GetParam().value->printable_string(' ', 2, 0).str(), GetParam().text);
}

TEST_P(PrintedScalar, StandsBehindItsIndentation) {
    EXPECT_EQ(GetParam().value->printable_string('.', 3, 2).str(), "......" + GetParam().text);
}

TEST_P(PrintedScalar, IsTheSameUnderAnyStatedType) {
    io_value const stated = GetParam().value->visit([](auto const& payload) {
        return io_value(io_data_type{types{99}, 3, 1, 4}, payload);
    });
    EXPECT_EQ(stated.printable_string(' ', 2, 0).str(), GetParam().text);
}

auto const name_of_row = [](auto const& row) { return std::string(row.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Signed,
    PrintedScalar,
    ::testing::Values(
        printed_row{"SignedCharIsLabelledI32", static_cast<signed char>(-56), "(i32) -56"},
        printed_row{"SignedCharLowest", limits<signed char>::min(), "(i32) -128"},
        printed_row{"SignedCharHighest", limits<signed char>::max(), "(i32) 127"},
        printed_row{"Short", short{7}, "(i16) 7"},
        printed_row{"ShortLowest", limits<short>::min(), "(i16) -32768"},
        printed_row{"ShortHighest", limits<short>::max(), "(i16) 32767"},
        printed_row{"Int", 42, "(i32) 42"},
        printed_row{"IntZero", 0, "(i32) 0"},
        printed_row{"IntMinusOne", -1, "(i32) -1"},
        printed_row{"IntLowest", limits<int>::min(), "(i32) -2147483648"},
        printed_row{"IntHighest", limits<int>::max(), "(i32) 2147483647"},
        printed_row{"Long", -5L, "(i32) -5"},
        printed_row{"LongLowest", limits<long>::min(),
                    sizeof(long) == 8 ? "(i32) -9223372036854775808" : "(i32) -2147483648"},
        printed_row{"LongHighest", limits<long>::max(),
                    sizeof(long) == 8 ? "(i32) 9223372036854775807" : "(i32) 2147483647"},
        printed_row{"LongLong", 5000000000LL, "(i64) 5000000000"},
        printed_row{"LongLongLowest", limits<long long>::min(), "(i64) -9223372036854775808"},
        printed_row{"LongLongHighest", limits<long long>::max(), "(i64) 9223372036854775807"}),
    name_of_row);

INSTANTIATE_TEST_SUITE_P(
    Unsigned,
    PrintedScalar,
    ::testing::Values(
        printed_row{"UnsignedChar", static_cast<unsigned char>(200), "(u8) 200"},
        printed_row{"UnsignedCharHighest", static_cast<unsigned char>(255), "(u8) 255"},
        printed_row{"UnsignedCharZero", static_cast<unsigned char>(0), "(u8) 0"},
        printed_row{"UnsignedShort", static_cast<unsigned short>(65535), "(u16) 65535"},
        printed_row{"UnsignedInt", 4294967295U, "(u32) 4294967295"},
        printed_row{"UnsignedLong", 7UL, "(u32) 7"},
        printed_row{"UnsignedLongHighest", limits<unsigned long>::max(),
                    sizeof(long) == 8 ? "(u32) 18446744073709551615" : "(u32) 4294967295"},
        printed_row{"UnsignedLongLong", 0ULL, "(u64) 0"},
        printed_row{"UnsignedLongLongHighest", limits<unsigned long long>::max(),
                    "(u64) 18446744073709551615"},
        printed_row{"CharIsANumber", 'A', "(i8) 65"},
        printed_row{"CharZero", '\0', "(i8) 0"},
        printed_row{"CharIsUnsigned", '\xC8', "(i8) 200"},
        printed_row{"CharHighest", '\xFF', "(i8) 255"}),
    name_of_row);

INSTANTIATE_TEST_SUITE_P(
    Real,
    PrintedScalar,
    ::testing::Values(printed_row{"FloatTwo", 2.0F, "(flt) 2"},
                      printed_row{"FloatBroken", 0.1F, "(flt) 0.1"},
                      printed_row{"FloatThird", 1.0F / 3, "(flt) 0.33333334"},
                      printed_row{"FloatMillion", 1000000.0F, "(flt) 1e+06"},
                      printed_row{"FloatLargest", limits<float>::max(), "(flt) 3.4028235e+38"},
                      printed_row{"FloatInfinity", limits<float>::infinity(), "(flt) inf"},
                      printed_row{"FloatNaN", limits<float>::quiet_NaN(), "(flt) nan"},
                      printed_row{"FloatNegativeZero", -0.0F, "(flt) -0"},
                      printed_row{"DoubleTwo", 2.0, "(dbl) 2"},
                      printed_row{"DoubleHalf", 1.5, "(dbl) 1.5"},
                      printed_row{"DoubleNegative", -0.1, "(dbl) -0.1"},
                      printed_row{"DoubleLarge", 1e20, "(dbl) 1e+20"},
                      printed_row{"DoubleTieIsFixed", 10000.0, "(dbl) 10000"},
                      printed_row{"DoubleSmallest", limits<double>::denorm_min(), "(dbl) 5e-324"},
                      printed_row{"DoubleLargest", limits<double>::max(),
                                  "(dbl) 1.7976931348623157e+308"},
                      printed_row{"DoubleMinusInfinity", -limits<double>::infinity(), "(dbl) -inf"},
                      printed_row{"DoubleNaN", limits<double>::quiet_NaN(), "(dbl) nan"},
                      printed_row{"DoubleNegativeNaN", -limits<double>::quiet_NaN(), "(dbl) -nan"}),
    name_of_row);

INSTANTIATE_TEST_SUITE_P(
    Other,
    PrintedScalar,
    ::testing::Values(printed_row{"Nothing", io_value(), "empty"},
                      printed_row{"True", true, "(boolean) true"},
                      printed_row{"False", false, "(boolean) false"},
                      printed_row{"Text", "pump", "(string) \"pump\""},
                      printed_row{"TextOfNothing", "", "(string) \"\""},
                      printed_row{"TextWithoutABlock", utility::string(), "(string) \"\""},
                      printed_row{"TextWithQuote", "a\"b\\c", "(string) \"a\"b\\c\""},
                      printed_row{"TextWithLines", "a\nb\n", "(string) \"a\nb\n\""},
                      printed_row{"TextWithZero", std::string("a\0b", 3),
                                  std::string("(string) \"a\0b\"", 14)},
                      printed_row{"TextOfHighBytes", "\xFF\xC2", "(string) \"\xFF\xC2\""}),
    name_of_row);

TEST(PrintedText, MayBeLong) {
    std::string const text(100000, 'x');
    EXPECT_EQ(io_value(text).printable_string().str(), "(string) \"" + text + "\"");
}

} // namespace
} // namespace whole_values
