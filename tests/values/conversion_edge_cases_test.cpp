#include "conversion_of.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace values_test {
namespace {

constexpr auto too_large = io_errc::value_too_large;
constexpr auto incompatible = io_errc::incompatible_type;
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(EmptyToInt, IsZeroWithoutError) {
    EXPECT_TRUE(gives<int>(io_value(), 0));
}

TEST(BoolToInt, IsTooLarge) {
    EXPECT_TRUE(refuses<int>(true, too_large));
    EXPECT_TRUE(refuses<int>(false, too_large));
}

TEST(BoolToChar, IsTooLarge) {
    EXPECT_TRUE(refuses<char>(true, too_large));
}

TEST(ObjectToInt, IsIncompatible) {
    EXPECT_TRUE(refuses<int>(io_object(), incompatible));
}

TEST(IntToSignedChar, TakesUpTo127) {
    EXPECT_TRUE(gives<signed char>(127, 127));
    EXPECT_TRUE(refuses<signed char>(128, too_large));
}

TEST(UnsignedCharToSignedChar, Refuses200) {
    EXPECT_TRUE(refuses<signed char>(static_cast<unsigned char>(200), too_large));
}

TEST(LongLongToUnsignedInt, TakesItsMaximumAndRefusesMinusOne) {
    EXPECT_TRUE(gives<unsigned int>(4294967295LL, 4294967295U));
    EXPECT_TRUE(refuses<unsigned int>(-1LL, too_large));
    EXPECT_TRUE(refuses<unsigned int>(4294967296LL, too_large));
}

TEST(IntToFloat, EndsOneBelowTwoToThe24) {
    EXPECT_TRUE(gives<float>(16777215, 16777215.0F));
    EXPECT_TRUE(gives<float>(-16777215, -16777215.0F));
    EXPECT_TRUE(refuses<float>(16777216, too_large));
    EXPECT_TRUE(refuses<float>(-16777216, too_large));
}

TEST(UnsignedLongLongToDouble, EndsOneBelowTwoToThe53) {
    EXPECT_TRUE(gives<double>(9007199254740991ULL, 9007199254740991.0));
    EXPECT_TRUE(refuses<double>(9007199254740992ULL, too_large));
}

TEST(LongLongToLongDouble, GoesAsFarAsItsMantissa) {
    long long const number = -9007199254740992;
    if constexpr (std::numeric_limits<long double>::digits == 53) {
        EXPECT_TRUE(refuses<long double>(number, too_large));
    } else {
        EXPECT_TRUE(gives<long double>(number, -9007199254740992.0L));
        EXPECT_TRUE(gives<long double>(std::numeric_limits<unsigned long long>::max(),
                                       18446744073709551615.0L));
    }
}

TEST(DoubleToInt, TakesWholeNumbersAlone) {
    EXPECT_TRUE(refuses<int>(1.5, too_large));
    EXPECT_TRUE(refuses<int>(0.5, too_large));
    EXPECT_TRUE(gives<int>(2.0, 2));
    EXPECT_TRUE(refuses<int>(nan_value, too_large));
    EXPECT_TRUE(refuses<int>(infinity, too_large));
    EXPECT_TRUE(refuses<int>(-infinity, too_large));
}

TEST(MinusZeroToInt, IsZero) {
    EXPECT_TRUE(gives<int>(-0.0, 0));
    EXPECT_TRUE(gives<unsigned char>(-0.0F, 0));
}

TEST(FloatToNarrowInteger, KeepsTheLowBits) {
    EXPECT_TRUE(gives<unsigned char>(300.0F, 44));
    EXPECT_TRUE(gives<char>(300.0F, 44));
    EXPECT_TRUE(gives<short>(70000.0F, 4464));
    EXPECT_TRUE(gives<signed char>(200.0F, -56));
    EXPECT_TRUE(gives<unsigned short>(65537.0F, 1));
}

TEST(DoubleToInt, ClampsAtItsBounds) {
    EXPECT_TRUE(gives<int>(3000000000.0, 2147483647));
    EXPECT_TRUE(gives<int>(-3000000000.0, std::numeric_limits<int>::min()));
    EXPECT_TRUE(gives<unsigned int>(5000000000.0, 4294967295U));
}

TEST(DoubleToShort, ClampsToThirtyTwoBitsFirst) {
    EXPECT_TRUE(gives<short>(3000000000.0, -1));
    EXPECT_TRUE(gives<short>(-3000000000.0, 0));
    EXPECT_TRUE(gives<signed char>(3000000000.0, -1));
    EXPECT_TRUE(gives<unsigned short>(5000000000.0, 65535));
    EXPECT_TRUE(gives<unsigned char>(5000000000.0, 255));
}

TEST(NegativeRealToUnsigned, IsZero) {
    EXPECT_TRUE(gives<unsigned int>(-3.0F, 0));
    EXPECT_TRUE(gives<unsigned char>(-3.0, 0));
    EXPECT_TRUE(gives<unsigned short>(-3.0, 0));
    EXPECT_TRUE(gives<unsigned long>(-3.0, 0));
    EXPECT_TRUE(gives<unsigned long long>(-3.0, 0));
}

TEST(DoubleToLong, FollowsTheWidthOfLong) {
    if constexpr (sizeof(long) == 8) {
        EXPECT_TRUE((gives<long>(9007199254740991.0, static_cast<long>(9007199254740991LL))));
        EXPECT_TRUE((gives<long>(3000000000.0, static_cast<long>(3000000000LL))));
    } else {
        EXPECT_TRUE((gives<long>(9007199254740991.0, 2147483647L)));
        EXPECT_TRUE((gives<long>(3000000000.0, 2147483647L)));
    }
}

TEST(FloatToInteger, IsTrustedUpToItsOwnLimit) {
    EXPECT_TRUE(gives<long long>(16777215.0F, 16777215));
    EXPECT_TRUE(refuses<long long>(16777216.0F, too_large));
}

TEST(DoubleToFloat, RefusesWhatIsBeyondTheLargestFloat) {
    EXPECT_TRUE(refuses<float>(1e39, too_large));
    EXPECT_TRUE(refuses<float>(3.4028234663852889e+38, too_large));
    EXPECT_TRUE(refuses<float>(infinity, too_large));
    EXPECT_TRUE(refuses<float>(nan_value, too_large));
    EXPECT_TRUE(gives<float>(3.4028234663852886e+38, std::numeric_limits<float>::max()));
}

TEST(DoubleToFloat, LetsWhatIsTooSmallVanish) {
    EXPECT_TRUE(gives<float>(1e-60, 0.0F));
    EXPECT_TRUE(gives<float>(-1e-60, -0.0F));
    EXPECT_TRUE(gives<float>(1e-45, std::numeric_limits<float>::denorm_min()));
}

TEST(RealToItsOwnType, KeepsAllThatIsNoNumber) {
    constexpr float float_nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float float_infinity = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(gives<float>(float_nan, float_nan));
    EXPECT_TRUE(gives<float>(-float_infinity, -float_infinity));
    EXPECT_TRUE(gives<double>(float_nan, nan_value));
    EXPECT_TRUE(gives<double>(nan_value, nan_value));
    EXPECT_TRUE(gives<double>(infinity, infinity));
    EXPECT_TRUE(gives<long double>(-infinity, -std::numeric_limits<long double>::infinity()));
    EXPECT_TRUE(gives<double>(-0.0, -0.0));
}

TEST(TextToInt, IsParsedWhole) {
    EXPECT_TRUE(gives<int>("42", 42));
    EXPECT_TRUE(gives<int>("", 0));
    EXPECT_TRUE(gives<int>("-2147483648", std::numeric_limits<int>::min()));
    EXPECT_TRUE(refuses<int>("2147483648", incompatible));
    EXPECT_TRUE(refuses<int>("42 ", incompatible));
    EXPECT_TRUE(refuses<int>("4.2", incompatible));
}

TEST(TextToUnsignedInt, RefusesASign) {
    EXPECT_TRUE(refuses<unsigned int>("-1", incompatible));
    EXPECT_TRUE(refuses<unsigned int>("-0", incompatible));
}

TEST(TextToChar, IsANumber) {
    EXPECT_TRUE(gives<char>("65", 65));
    EXPECT_TRUE(gives<char>("255", static_cast<char>(static_cast<unsigned char>(255))));
    EXPECT_TRUE(refuses<char>("256", incompatible));
    EXPECT_TRUE(refuses<char>("A", incompatible));
    EXPECT_TRUE(refuses<char>("-1", incompatible));
}

TEST(TextThatDoesNotFit, IsIncompatibleAndNotTooLarge) {
    EXPECT_TRUE(refuses<unsigned char>("300", incompatible));
    EXPECT_TRUE(refuses<int>("99999999999", incompatible));
}

TEST(TextToBool, IsTrueWhereItIsNoNumber) {
    EXPECT_TRUE(gives<bool>("false", true));
    EXPECT_TRUE(gives<bool>("0", false));
    EXPECT_TRUE(gives<bool>("", false));
}

TEST(EmptyArrayToBool, IsFalse) {
    EXPECT_TRUE(gives<bool>(array<int>(), false));
}

TEST(TextToDouble, RefusesWhatIsOutOfRange) {
    EXPECT_TRUE(refuses<double>("1e400", incompatible));
}

TEST(ArrayToText, IsIncompatible) {
    EXPECT_TRUE(refuses<std::string>(array<int>{1}, incompatible));
    EXPECT_TRUE(refuses<std::string>(array<char>{'a'}, incompatible));
}

// A stored char counts from 0 to 255, whatever sign the platform gives to char.
TEST(StoredChar, IsAnUnsignedNumber) {
    char const byte = static_cast<char>(static_cast<unsigned char>(200));
    EXPECT_TRUE(gives<int>(byte, 200));
    EXPECT_TRUE(gives<short>(byte, 200));
    EXPECT_TRUE(gives<long long>(byte, 200));
    EXPECT_TRUE(gives<unsigned long long>(byte, 200));
    EXPECT_TRUE(gives<unsigned char>(byte, 200));
    EXPECT_TRUE(gives<char>(byte, byte));
    EXPECT_TRUE(refuses<signed char>(byte, too_large));
    EXPECT_TRUE(gives<double>(byte, 200.0));
    EXPECT_TRUE(gives<std::string>(byte, "200"));
    EXPECT_TRUE(gives<bool>(byte, true));
}

TEST(SignedCharToChar, RefusesNegativeNumbers) {
    EXPECT_TRUE(refuses<char>(static_cast<signed char>(-1), too_large));
    EXPECT_TRUE(gives<char>(static_cast<signed char>(127), 127));
}

TEST(LongSource, IsExactInItsOwnWidth) {
    long const highest = std::numeric_limits<long>::max();
    EXPECT_TRUE(gives<long>(highest, highest));
    EXPECT_TRUE(gives<long long>(highest, highest));
    if constexpr (sizeof(long) == 8) {
        EXPECT_TRUE(refuses<int>(highest, too_large));
        EXPECT_TRUE(refuses<double>(highest, too_large));
    } else {
        EXPECT_TRUE(gives<int>(highest, 2147483647));
        EXPECT_TRUE(gives<double>(highest, 2147483647.0));
    }
}

} // namespace
} // namespace values_test
