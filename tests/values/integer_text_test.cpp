#include "conversion_of.hpp"
#include "sample_payloads.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace values_test {
namespace {

using namespace std::string_literals;

/// A target with the texts of its bounds and of their neighbours outside.
template <class T>
struct text_bounds;
template <>
struct text_bounds<signed char> {
    static constexpr char const* lowest = "-128";
    static constexpr char const* highest = "127";
    static constexpr char const* below = "-129";
    static constexpr char const* above = "128";
};
template <>
struct text_bounds<short> {
    static constexpr char const* lowest = "-32768";
    static constexpr char const* highest = "32767";
    static constexpr char const* below = "-32769";
    static constexpr char const* above = "32768";
};
template <>
struct text_bounds<int> {
    static constexpr char const* lowest = "-2147483648";
    static constexpr char const* highest = "2147483647";
    static constexpr char const* below = "-2147483649";
    static constexpr char const* above = "2147483648";
};
template <>
struct text_bounds<long long> {
    static constexpr char const* lowest = "-9223372036854775808";
    static constexpr char const* highest = "9223372036854775807";
    static constexpr char const* below = "-9223372036854775809";
    static constexpr char const* above = "9223372036854775808";
};
template <>
struct text_bounds<unsigned char> {
    static constexpr char const* lowest = "0";
    static constexpr char const* highest = "255";
    static constexpr char const* below = "-1";
    static constexpr char const* above = "256";
};
template <>
struct text_bounds<unsigned short> {
    static constexpr char const* lowest = "0";
    static constexpr char const* highest = "65535";
    static constexpr char const* below = "-1";
    static constexpr char const* above = "65536";
};
template <>
struct text_bounds<unsigned int> {
    static constexpr char const* lowest = "0";
    static constexpr char const* highest = "4294967295";
    static constexpr char const* below = "-1";
    static constexpr char const* above = "4294967296";
};
template <>
struct text_bounds<unsigned long long> {
    static constexpr char const* lowest = "0";
    static constexpr char const* highest = "18446744073709551615";
    static constexpr char const* below = "-1";
    static constexpr char const* above = "18446744073709551616";
};
template <>
struct text_bounds<char> : text_bounds<unsigned char> {};
template <>
struct text_bounds<long> : text_bounds<std::conditional_t<sizeof(long) == 8, long long, int>> {};
template <>
struct text_bounds<unsigned long>
    : text_bounds<std::conditional_t<sizeof(long) == 8, unsigned long long, unsigned int>> {};

template <class T>
class TextToInteger : public ::testing::Test {
protected:
    using bounds = text_bounds<T>;
    static constexpr bool takes_sign = std::is_signed_v<counted_as<T>>;
    static constexpr T lowest = static_cast<T>(std::numeric_limits<counted_as<T>>::min());
    static constexpr T highest = static_cast<T>(std::numeric_limits<counted_as<T>>::max());

    static void expect_refused(std::initializer_list<std::string> texts) {
        for (std::string const& text : texts) {
            EXPECT_TRUE(refuses<T>(text, io_errc::incompatible_type)) << '\'' << text << '\'';
        }
    }
};
using integer_targets = ::testing::Types<char,
                                         signed char,
                                         unsigned char,
                                         short,
                                         unsigned short,
                                         int,
                                         unsigned int,
                                         long,
                                         unsigned long,
                                         long long,
                                         unsigned long long>;
TYPED_TEST_SUITE(TextToInteger, integer_targets);

TYPED_TEST(TextToInteger, TakesBothBounds) {
    EXPECT_TRUE(gives<TypeParam>(TestFixture::bounds::lowest, TestFixture::lowest));
    EXPECT_TRUE(gives<TypeParam>(TestFixture::bounds::highest, TestFixture::highest));
}

TYPED_TEST(TextToInteger, RefusesOneBeyondEachBound) {
    TestFixture::expect_refused({TestFixture::bounds::below, TestFixture::bounds::above});
}

TYPED_TEST(TextToInteger, RefusesOneDigitMore) {
    for (char const digit : "0123456789"s) {
        TestFixture::expect_refused({TestFixture::bounds::highest + std::string(1, digit)});
    }
}

// Numbers that are small again once the accumulator has run over.
TYPED_TEST(TextToInteger, RefusesManyDigitsMore) {
    TestFixture::expect_refused({std::string(21, '9'), std::string(100, '9'),
                                 "-" + std::string(100, '9'), "1" + std::string(40, '0'),
                                 "18446744073709551617", "36893488147419103233",
                                 "79228162514264337593543950337"});
    if constexpr (sizeof(TypeParam) < 8) {
        TestFixture::expect_refused({"4294967296", "4294967297", "8589934593"});
    }
}

TYPED_TEST(TextToInteger, RefusesTextAfterAnOverflow) {
    TestFixture::expect_refused({std::string(100, '9') + "x", std::string(100, '9') + " "});
}

TYPED_TEST(TextToInteger, TakesAnyNumberOfLeadingZeros) {
    EXPECT_TRUE(gives<TypeParam>("0", 0));
    EXPECT_TRUE(gives<TypeParam>("007", 7));
    EXPECT_TRUE(gives<TypeParam>(std::string(1000, '0') + TestFixture::bounds::highest,
                                 TestFixture::highest));
    EXPECT_TRUE(gives<TypeParam>(std::string(1000, '0'), 0));
}

TYPED_TEST(TextToInteger, TakesTheEmptyTextAsZero) {
    EXPECT_TRUE(gives<TypeParam>("", 0));
    EXPECT_TRUE(gives<TypeParam>(utility::string(), 0));
}

TYPED_TEST(TextToInteger, TakesAMinusForSignedTargetsAlone) {
    if constexpr (TestFixture::takes_sign) {
        EXPECT_TRUE(gives<TypeParam>("-0", 0));
        EXPECT_TRUE(gives<TypeParam>("-1", static_cast<TypeParam>(-1)));
        EXPECT_TRUE(gives<TypeParam>("-007", static_cast<TypeParam>(-7)));
    } else {
        TestFixture::expect_refused({"-0", "-1", "-007"});
    }
}

TYPED_TEST(TextToInteger, RefusesASignWithoutDigitsAndAllOtherSigns) {
    TestFixture::expect_refused({"-", "+", "+1", "+0", "--1", "-+1", "+-1", "1-", "- 1",
                                 "\xE2\x88\x92"
                                 "1"});
}

TYPED_TEST(TextToInteger, RefusesBlanksAnywhere) {
    TestFixture::expect_refused({" ", " 1", "1 ", "1 2", "\t1", "1\n", "1\r\n", "\v1",
                                 "\xC2\xA0"
                                 "1"});
}

TYPED_TEST(TextToInteger, RefusesZeroBytesAnywhere) {
    TestFixture::expect_refused({"\0"s, "1\0"s, "\0001"s, "1\0002"s});
}

TYPED_TEST(TextToInteger, RefusesOtherWaysToWriteANumber) {
    TestFixture::expect_refused({"0x10", "0b1", "1e0", "1e3", "1.", "1.0", ".5", "1,0", "1'0",
                                 "1_0", "1u", "1L", "#1", "(1)", "\"1\""});
}

TYPED_TEST(TextToInteger, RefusesWords) {
    TestFixture::expect_refused({"true", "false", "inf", "nan", "one", "A", "null"});
}

TYPED_TEST(TextToInteger, RefusesTheCharactersBesideTheDigits) {
    TestFixture::expect_refused({"/", ":", "1/", "1:", "\xB0", "\xFF", "1\x80"});
}

} // namespace
} // namespace values_test
