#include "conversion_of.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace values_test {
namespace {

using namespace std::string_literals;

TEST(TextForm, OfNothingIsEmpty) {
    EXPECT_TRUE(gives<std::string>(io_value(), ""));
}

TEST(TextForm, OfATruthValueIsAWord) {
    EXPECT_TRUE(gives<std::string>(true, "true"));
    EXPECT_TRUE(gives<std::string>(false, "false"));
}

TEST(TextForm, OfAnIntegerIsPlainDecimals) {
    EXPECT_TRUE(gives<std::string>(0, "0"));
    EXPECT_TRUE(gives<std::string>(7, "7"));
    EXPECT_TRUE(gives<std::string>(-7, "-7"));
    EXPECT_TRUE(gives<std::string>(1000000, "1000000"));
}

TEST(TextForm, OfEachIntegerTypeReachesItsBounds) {
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<signed char>::min(), "-128"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<signed char>::max(), "127"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<unsigned char>::max(), "255"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<short>::min(), "-32768"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<unsigned short>::max(), "65535"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<int>::min(), "-2147483648"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<unsigned int>::max(), "4294967295"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<long long>::min(), "-9223372036854775808"));
    EXPECT_TRUE(
        gives<std::string>(std::numeric_limits<unsigned long long>::max(), "18446744073709551615"));
    bool const wide = sizeof(long) == 8;
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<long>::min(),
                                   wide ? "-9223372036854775808" : "-2147483648"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<unsigned long>::max(),
                                   wide ? "18446744073709551615" : "4294967295"));
}

TEST(TextForm, OfACharIsItsNumber) {
    EXPECT_TRUE(gives<std::string>('A', "65"));
    EXPECT_TRUE(gives<std::string>('\0', "0"));
    EXPECT_TRUE(gives<std::string>(static_cast<char>(static_cast<unsigned char>(255)), "255"));
}

TEST(TextForm, OfADoubleIsTheShortestThatReadsBack) {
    EXPECT_TRUE(gives<std::string>(1.0, "1"));
    EXPECT_TRUE(gives<std::string>(0.1, "0.1"));
    EXPECT_TRUE(gives<std::string>(-2.5, "-2.5"));
    EXPECT_TRUE(gives<std::string>(1e6, "1e+06"));
    EXPECT_TRUE(gives<std::string>(123456.0, "123456"));
    EXPECT_TRUE(gives<std::string>(1e-5, "1e-05"));
    EXPECT_TRUE(gives<std::string>(0.1 + 0.2, "0.30000000000000004"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<double>::max(), "1.7976931348623157e+308"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<double>::denorm_min(), "5e-324"));
}

TEST(TextForm, OfAFloatIsTheShortestThatReadsBackAsAFloat) {
    EXPECT_TRUE(gives<std::string>(1.0F, "1"));
    EXPECT_TRUE(gives<std::string>(0.1F, "0.1"));
    EXPECT_TRUE(gives<std::string>(1e6F, "1e+06"));
    EXPECT_TRUE(gives<std::string>(16777216.0F, "16777216"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<float>::max(), "3.4028235e+38"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<float>::denorm_min(), "1e-45"));
}

TEST(TextForm, OfAZeroKeepsItsSign) {
    EXPECT_TRUE(gives<std::string>(0.0, "0"));
    EXPECT_TRUE(gives<std::string>(-0.0, "-0"));
    EXPECT_TRUE(gives<std::string>(-0.0F, "-0"));
}

TEST(TextForm, OfWhatIsNoNumberIsAWord) {
    using limits = std::numeric_limits<double>;
    EXPECT_TRUE(gives<std::string>(limits::infinity(), "inf"));
    EXPECT_TRUE(gives<std::string>(-limits::infinity(), "-inf"));
    EXPECT_TRUE(gives<std::string>(limits::quiet_NaN(), "nan"));
    EXPECT_TRUE(gives<std::string>(-limits::quiet_NaN(), "-nan"));
    EXPECT_TRUE(gives<std::string>(-std::numeric_limits<float>::quiet_NaN(), "-nan"));
    EXPECT_TRUE(gives<std::string>(std::numeric_limits<float>::infinity(), "inf"));
}

TEST(TextForm, OfATextIsACopy) {
    EXPECT_TRUE(gives<std::string>("level", "level"));
    EXPECT_TRUE(gives<std::string>("", ""));
    EXPECT_TRUE(gives<std::string>(" 1 ", " 1 "));
    EXPECT_TRUE(gives<std::string>("a\0b"s, "a\0b"s));
}

TEST(TextForm, OfATextHasABlockOfItsOwn) {
    io_value const value("level");
    io_error error;
    utility::string const text = value.as<utility::string>(error);
    EXPECT_NE(text.data(), value.get_if<utility::string>()->data());
    EXPECT_EQ(text, "level");
}

TEST(TextForm, OfATextMayBeLong) {
    std::string const text(100000, 'x');
    EXPECT_TRUE(gives<std::string>(text, text));
}

TEST(TextForm, DoesNotExistForObjectsAndArrays) {
    EXPECT_TRUE(refuses<std::string>(io_object(), io_errc::incompatible_type));
    EXPECT_TRUE(refuses<std::string>(array<int>(), io_errc::incompatible_type));
    EXPECT_TRUE(refuses<std::string>(array<char>{'a'}, io_errc::incompatible_type));
    EXPECT_TRUE(refuses<std::string>(array<utility::string>{"a"}, io_errc::incompatible_type));
    EXPECT_TRUE(refuses<std::string>(array<io_value>::of("a"), io_errc::incompatible_type));
}

} // namespace
} // namespace values_test
