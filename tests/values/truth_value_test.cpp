#include "conversion_of.hpp"
#include "raw_value.hpp"
#include "sample_payloads.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

namespace values_test {
namespace {

using namespace std::string_literals;

TEST(ToBool, EmptyIsFalse) {
    EXPECT_TRUE(gives<bool>(io_value(), false));
}

TEST(ToBool, BoolIsItself) {
    EXPECT_TRUE(gives<bool>(true, true));
    EXPECT_TRUE(gives<bool>(false, false));
}

template <class T>
class NumberToBool : public ::testing::Test {};
using number_sources = ::testing::Types<char,
                                        signed char,
                                        unsigned char,
                                        short,
                                        unsigned short,
                                        int,
                                        unsigned int,
                                        long,
                                        unsigned long,
                                        long long,
                                        unsigned long long,
                                        float,
                                        double>;
TYPED_TEST_SUITE(NumberToBool, number_sources);

TYPED_TEST(NumberToBool, ZeroAloneIsFalse) {
    using limits = std::numeric_limits<TypeParam>;
    EXPECT_TRUE(gives<bool>(TypeParam(0), false));
    EXPECT_TRUE(gives<bool>(TypeParam(1), true));
    EXPECT_TRUE(gives<bool>(limits::max(), true));
    EXPECT_TRUE(gives<bool>(limits::lowest(), limits::is_signed));
}

TYPED_TEST(NumberToBool, EveryByteCounts) {
    if constexpr (std::is_integral_v<TypeParam>) {
        for (unsigned int bit = 0; bit < 8 * sizeof(TypeParam); ++bit) {
            EXPECT_TRUE(gives<bool>(static_cast<TypeParam>(1ULL << bit), true)) << bit;
        }
    }
}

TEST(ToBool, MinusZeroIsFalse) {
    EXPECT_TRUE(gives<bool>(-0.0, false));
    EXPECT_TRUE(gives<bool>(-0.0F, false));
}

TEST(ToBool, RealThatIsNotZeroIsTrue) {
    EXPECT_TRUE(gives<bool>(0.5, true));
    EXPECT_TRUE(gives<bool>(std::numeric_limits<double>::denorm_min(), true));
    EXPECT_TRUE(gives<bool>(std::numeric_limits<double>::quiet_NaN(), true));
    EXPECT_TRUE(gives<bool>(std::numeric_limits<float>::quiet_NaN(), true));
    EXPECT_TRUE(gives<bool>(-std::numeric_limits<double>::infinity(), true));
}

TEST(ToBool, TextThatReadsAsZeroIsFalse) {
    for (char const* const text :
         {"", "0", "-0", "0.0", "0.", ".0", "000", "0e5", "-0.0e-3", "0e400"}) {
        EXPECT_TRUE(gives<bool>(text, false)) << text;
    }
}

TEST(ToBool, TextThatReadsAsAnotherNumberIsTrue) {
    for (char const* const text : {"1", "-1", "0.5", "1e3", "1e-300", "nan", "inf", "-inf"}) {
        EXPECT_TRUE(gives<bool>(text, true)) << text;
    }
}

TEST(ToBool, TextThatDoesNotParseIsTrue) {
    for (std::string const& text : {"false"s, "no"s, "off"s, "true"s, "+0"s, " 0"s, "0 "s, "0x0"s,
                                    "-"s, " "s, "\0"s, "0\0"s, "1e400"s, "1e-400"s, "0,0"s}) {
        EXPECT_TRUE(gives<bool>(text, true)) << text;
    }
}

TEST(ToBool, ObjectIsTrue) {
    EXPECT_TRUE(gives<bool>(io_object(), true));
    EXPECT_TRUE(gives<bool>(sample_object(), true));
}

TEST(ToBool, ArrayIsTrueWhereItHasElements) {
    EXPECT_TRUE(gives<bool>(array<bool>(), false));
    EXPECT_TRUE(gives<bool>(array<bool>{false}, true));
    EXPECT_TRUE(gives<bool>(array<int>{0}, true));
    EXPECT_TRUE(gives<bool>(array<utility::string>{""}, true));
    EXPECT_TRUE(gives<bool>(array<io_object>(1), true));
    EXPECT_TRUE(gives<bool>(array<io_value>(1), true));
    EXPECT_TRUE(gives<bool>(array<io_value>(), false));
}

// Another module may store any byte as a truth value.
TEST(StoredBool, IsTrueForAnyByteButZero) {
    for (int const byte : {1, 2, 0x80, 0xFF}) {
        raw_value value(true);
        auto const odd = static_cast<unsigned char>(byte);
        std::memcpy(reinterpret_cast<unsigned char*>(&*value) + payload_offset, &odd, 1);
        EXPECT_TRUE(gives<bool>(*value, true)) << byte;
        EXPECT_TRUE(gives<std::string>(*value, "true")) << byte;
        EXPECT_TRUE(refuses<int>(*value, io_errc::value_too_large)) << byte;
        EXPECT_TRUE(value->visit([](auto const& payload) {
            if constexpr (std::is_same_v<decltype(payload), bool const&>) return payload;
            return false;
        })) << byte;
    }
}

} // namespace
} // namespace values_test
