#include "conversion_sources.hpp"
#include "scalar_oracle.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <variant>

namespace values_test {
namespace {

template <class T>
class GetExact : public ::testing::Test {
protected:
    static constexpr bool is_integer = std::is_integral_v<T> && !std::is_same_v<T, bool>;

    static void expect(conversion_source const& from, outcome<T> const& expected) {
        io_error error = io_errc::todo;
        T const result = from.value.get_exact<T>(error);
        if (!same_result(result, expected.value) || error != io_error(expected.code)) {
            ADD_FAILURE() << from.name << " gave code " << error.code() << " in place of "
                          << static_cast<int>(expected.code) << ", or another value";
        }
    }
};
TYPED_TEST_SUITE(GetExact, scalar_targets, target_names);

TYPED_TEST(GetExact, RefusesRealsThatWouldBeClampedOrCut) {
    for (conversion_source const& from : real_sources()) {
        outcome<TypeParam> expected = scalar_oracle<TypeParam>()(from.what);
        if constexpr (TestFixture::is_integer) {
            auto const* const single = std::get_if<source::single_real>(&from.what);
            double const real =
                single != nullptr ? single->value : std::get<source::double_real>(from.what).value;
            if (expected.code == io_errc::success &&
                !fits<TypeParam>(oracle::whole_number_of(real))) {
                expected = {TypeParam(), io_errc::value_too_large};
            }
        }
        this->expect(from, expected);
    }
}

TYPED_TEST(GetExact, ConvertsAllElseAsUsual) {
    for (conversion_sources const& sources : {integer_sources(), text_sources(), other_sources()}) {
        for (conversion_source const& from : sources) {
            this->expect(from, scalar_oracle<TypeParam>()(from.what));
        }
    }
}

TEST(GetExactOfAReal, RefusesWhatWouldBeCut) {
    EXPECT_THROW((void)io_value(300.0F).get_exact<unsigned char>(), io_exception);
    EXPECT_THROW((void)io_value(70000.0F).get_exact<short>(), io_exception);
    EXPECT_EQ(io_value(70000.0F).get_exact<int>(), 70000);
    EXPECT_EQ(io_value(255.0).get_exact<unsigned char>(), 255);
}

TEST(GetExactOfAReal, RefusesWhatWouldBeClamped) {
    EXPECT_THROW((void)io_value(3e9).get_exact<int>(), io_exception);
    EXPECT_THROW((void)io_value(-3.0F).get_exact<unsigned int>(), io_exception);
    EXPECT_THROW((void)io_value(-1.0).get_exact<unsigned long long>(), io_exception);
    EXPECT_EQ(io_value(3e9).get_exact<unsigned int>(), 3000000000U);
    EXPECT_EQ(io_value(3e9).get_exact<long long>(), 3000000000LL);
}

TEST(GetExactOfAReal, RaisesTooLarge) {
    try {
        (void)io_value(300.0).get_exact<signed char>();
        FAIL() << "nothing was raised";
    } catch (io_exception const& raised) {
        EXPECT_EQ(raised.error(), io_error(io_errc::value_too_large));
        EXPECT_STREQ(raised.what(), "value too large");
    }
}

TEST(GetExactOfAReal, TakesMinusZeroAsZero) {
    EXPECT_EQ(io_value(-0.0).get_exact<int>(), 0);
    EXPECT_EQ(io_value(-0.0F).get_exact<unsigned char>(), 0);
}

// A char counts from 0 to 255, so 200 is exact.
TEST(GetExactOfAReal, TakesACharUpTo255) {
    EXPECT_EQ(io_value(127.0).get_exact<char>(), 127);
    EXPECT_EQ(io_value(200.0).get_exact<char>(), static_cast<char>(200));
    EXPECT_EQ(io_value(255.0F).get_exact<char>(), static_cast<char>(255));
    EXPECT_THROW((void)io_value(256.0).get_exact<char>(), io_exception);
    EXPECT_THROW((void)io_value(-1.0).get_exact<char>(), io_exception);
}

TEST(GetExactOfAReal, KeepsTheFullTrustedRange) {
    EXPECT_EQ(io_value(9007199254740991.0).get_exact<unsigned long long>(), 9007199254740991ULL);
    EXPECT_EQ(io_value(-9007199254740991.0).get_exact<long long>(), -9007199254740991LL);
    EXPECT_EQ(io_value(16777215.0F).get_exact<int>(), 16777215);
    EXPECT_THROW((void)io_value(9007199254740992.0).get_exact<long long>(), io_exception);
}

TEST(GetExactOfAReal, LeavesTruthValuesTextsAndRealsAlone) {
    EXPECT_TRUE(io_value(0.5).get_exact<bool>());
    EXPECT_EQ(io_value(0.1).get_exact<float>(), 0.1F);
    EXPECT_EQ(io_value(1.5).get_exact<std::string>(), "1.5");
}

TEST(GetExactOfAllElse, IsTheUsualConversion) {
    EXPECT_EQ(io_value().get_exact<int>(), 0);
    EXPECT_EQ(io_value("42").get_exact<int>(), 42);
    EXPECT_EQ(io_value(42).get_exact<signed char>(), 42);
    EXPECT_THROW((void)io_value(300).get_exact<unsigned char>(), io_exception);
    EXPECT_THROW((void)io_value("300").get_exact<unsigned char>(), io_exception);
}

} // namespace
} // namespace values_test
