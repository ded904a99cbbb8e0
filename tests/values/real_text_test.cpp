#include "conversion_of.hpp"
#include "sample_payloads.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace values_test {
namespace {

using namespace std::string_literals;

// long double reads more where it is wider than double; there its texts go far beyond 1e400.
constexpr bool wide_long_double =
    std::numeric_limits<long double>::max_exponent > std::numeric_limits<double>::max_exponent;

template <class T>
class TextToReal : public ::testing::Test {
protected:
    static constexpr T infinity = std::numeric_limits<T>::infinity();
    static constexpr T not_a_number = std::numeric_limits<T>::quiet_NaN();

    static void expect_refused(std::initializer_list<std::string> texts) {
        for (std::string const& text : texts) {
            EXPECT_TRUE(refuses<T>(text, io_errc::incompatible_type)) << '\'' << text << '\'';
        }
    }
};
using real_targets = ::testing::Types<float, double, long double>;
TYPED_TEST_SUITE(TextToReal, real_targets);

TYPED_TEST(TextToReal, TakesPlainNumbers) {
    EXPECT_TRUE(gives<TypeParam>("0", TypeParam(0)));
    EXPECT_TRUE(gives<TypeParam>("1", TypeParam(1)));
    EXPECT_TRUE(gives<TypeParam>("-2.5", TypeParam(-2.5)));
    EXPECT_TRUE(gives<TypeParam>("000.5000", TypeParam(0.5)));
    EXPECT_TRUE(gives<TypeParam>("16777216", TypeParam(16777216)));
}

TYPED_TEST(TextToReal, TakesExponents) {
    EXPECT_TRUE(gives<TypeParam>("1e3", TypeParam(1000)));
    EXPECT_TRUE(gives<TypeParam>("1E3", TypeParam(1000)));
    EXPECT_TRUE(gives<TypeParam>("1e+3", TypeParam(1000)));
    EXPECT_TRUE(gives<TypeParam>("25e-2", TypeParam(0.25)));
    EXPECT_TRUE(gives<TypeParam>("0e5", TypeParam(0)));
    EXPECT_TRUE(gives<TypeParam>("1e0003", TypeParam(1000)));
}

TYPED_TEST(TextToReal, TakesAPointAtEitherEnd) {
    EXPECT_TRUE(gives<TypeParam>(".5", TypeParam(0.5)));
    EXPECT_TRUE(gives<TypeParam>("5.", TypeParam(5)));
    EXPECT_TRUE(gives<TypeParam>("-.5", TypeParam(-0.5)));
    EXPECT_TRUE(gives<TypeParam>("5.e1", TypeParam(50)));
}

TYPED_TEST(TextToReal, KeepsTheSignOfZero) {
    EXPECT_TRUE(gives<TypeParam>("-0", TypeParam(-0.0)));
    EXPECT_TRUE(gives<TypeParam>("-0.0", TypeParam(-0.0)));
    EXPECT_TRUE(gives<TypeParam>("0.0", TypeParam(0)));
}

TYPED_TEST(TextToReal, TakesInfinityInAnyCase) {
    EXPECT_TRUE(gives<TypeParam>("inf", TestFixture::infinity));
    EXPECT_TRUE(gives<TypeParam>("-inf", -TestFixture::infinity));
    EXPECT_TRUE(gives<TypeParam>("INF", TestFixture::infinity));
    EXPECT_TRUE(gives<TypeParam>("infinity", TestFixture::infinity));
    EXPECT_TRUE(gives<TypeParam>("-Infinity", -TestFixture::infinity));
}

TYPED_TEST(TextToReal, TakesNanInAnyCase) {
    EXPECT_TRUE(gives<TypeParam>("nan", TestFixture::not_a_number));
    EXPECT_TRUE(gives<TypeParam>("NaN", TestFixture::not_a_number));
    EXPECT_TRUE(gives<TypeParam>("-nan", -TestFixture::not_a_number));
}

TYPED_TEST(TextToReal, TakesTheEmptyTextAsZero) {
    EXPECT_TRUE(gives<TypeParam>("", TypeParam(0)));
    EXPECT_TRUE(gives<TypeParam>(utility::string(), TypeParam(0)));
}

TYPED_TEST(TextToReal, RefusesAPlusInFront) {
    TestFixture::expect_refused({"+1", "+0", "+inf", "+nan", "+.5", "-+1", "+"});
}

TYPED_TEST(TextToReal, RefusesSignsAndPointsWithoutDigits) {
    TestFixture::expect_refused({"-", ".", "-.", "e1", ".e1", "--1"});
}

TYPED_TEST(TextToReal, RefusesBlanksAnywhere) {
    TestFixture::expect_refused({" ", " 1", "1 ", "\t1", "1\n", "1 e3", " inf"});
}

TYPED_TEST(TextToReal, RefusesHexadecimals) {
    TestFixture::expect_refused({"0x10", "0x1p3", "0x1.8p1", "1p3", "x10", "0x", "-0x1"});
}

TYPED_TEST(TextToReal, RefusesZeroBytesAnywhere) {
    TestFixture::expect_refused({"\0"s, "1\0"s, "\0001"s, "1.5\0"s, "inf\0"s});
}

TYPED_TEST(TextToReal, RefusesTextBehindTheNumber) {
    TestFixture::expect_refused({"1x", "1e", "1e+", "1.2.3", "1f", "1,5", "1'000", "infinite",
                                 "infx", "nan(", "nanx", "1e3.5", "1e3e3"});
}

TYPED_TEST(TextToReal, RefusesWords) {
    TestFixture::expect_refused({"true", "false", "off", "zero", "NULL", "\xFF"});
}

TYPED_TEST(TextToReal, RefusesWhatIsTooLargeForAnyFormat) {
    TestFixture::expect_refused({"1e5000", "-1e5000", "1e99999", std::string(5000, '9')});
}

TYPED_TEST(TextToReal, RefusesWhatIsTooSmallForAnyFormat) {
    TestFixture::expect_refused({"1e-5000", "-1e-5000", "1e-99999"});
}

TEST(TextToFloat, EndsAtTheLargestFloat) {
    EXPECT_TRUE(gives<float>("3.4028235e38", std::numeric_limits<float>::max()));
    EXPECT_TRUE(gives<float>("-3.4028235e38", std::numeric_limits<float>::lowest()));
    EXPECT_TRUE(refuses<float>("3.4028236e38", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<float>("1e39", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<float>("-1e39", io_errc::incompatible_type));
}

TEST(TextToFloat, RefusesUnderflow) {
    EXPECT_TRUE(gives<float>("1.17549435e-38", std::numeric_limits<float>::min()));
    EXPECT_TRUE(refuses<float>("1e-46", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<float>("1e-60", io_errc::incompatible_type));
}

TEST(TextToFloat, ReadsEveryDigitOnce) {
    // Between two floats; by way of a double it would end on the other one.
    EXPECT_TRUE(gives<float>("1.00000017881393432617187499", 1.00000011920928955078125F));
    EXPECT_TRUE(gives<float>("0.1", 0.1F));
}

TEST(TextToDouble, EndsAtTheLargestDouble) {
    EXPECT_TRUE(gives<double>("1.7976931348623157e308", std::numeric_limits<double>::max()));
    EXPECT_TRUE(refuses<double>("1.7976931348623159e308", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<double>("1e309", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<double>("1e400", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<double>("-1e400", io_errc::incompatible_type));
}

TEST(TextToDouble, RefusesUnderflow) {
    EXPECT_TRUE(gives<double>("2.2250738585072014e-308", std::numeric_limits<double>::min()));
    EXPECT_TRUE(refuses<double>("1e-400", io_errc::incompatible_type));
    EXPECT_TRUE(refuses<double>("1e-324", io_errc::incompatible_type));
}

TEST(TextToLongDouble, HasTheRangeOfItsFormat) {
    if constexpr (wide_long_double) {
        // Literals like these are refused by the compiler where the format is narrow.
        auto const large = conversion_of<long double>("1e400");
        EXPECT_EQ(large.code, 0);
        EXPECT_NEAR(static_cast<double>(large.value / 1e200L / 1e200L), 1.0, 1e-15);
        auto const small = conversion_of<long double>("1e-400");
        EXPECT_EQ(small.code, 0);
        EXPECT_NEAR(static_cast<double>(small.value * 1e200L * 1e200L), 1.0, 1e-15);
        EXPECT_TRUE(gives<long double>("0.1", 0.1L));
    } else {
        EXPECT_TRUE(refuses<long double>("1e400", io_errc::incompatible_type));
        EXPECT_TRUE(refuses<long double>("1e-400", io_errc::incompatible_type));
        EXPECT_TRUE(gives<long double>("0.1", static_cast<long double>(0.1)));
    }
}

} // namespace
} // namespace values_test
