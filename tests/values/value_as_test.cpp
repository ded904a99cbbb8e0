#include "sample_payloads.hpp"
#include "scalar_oracle.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace values_test {
namespace {

template <class T>
class ValueAs : public ::testing::Test {};
TYPED_TEST_SUITE(ValueAs, scalar_targets, target_names);

TYPED_TEST(ValueAs, AgreesWithTheConversionItself) {
    for (io_value const& value :
         {io_value(), io_value(true), io_value(1), io_value(-1), io_value("1"), io_value("x"),
          io_value(1.5), io_value(300.0F), io_value(sample_object()), io_value(array<int>(2))}) {
        io_error expected_error;
        TypeParam const expected = detail::get_as<TypeParam>(value, expected_error);
        io_error error = io_errc::todo;
        EXPECT_EQ(value.as<TypeParam>(error), expected) << value.index();
        EXPECT_EQ(error, expected_error) << value.index();
        std::optional<TypeParam> const attempt = value.try_as<TypeParam>();
        EXPECT_EQ(attempt.has_value(), expected_error.ok()) << value.index();
        EXPECT_EQ(attempt.value_or(expected), expected) << value.index();
    }
}

TYPED_TEST(ValueAs, OfNothingIsTheDefaultAndNotTheFallback) {
    io_value const value;
    io_error error;
    EXPECT_EQ(value.as<TypeParam>(error), TypeParam());
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(value.as<TypeParam>(), TypeParam());
    EXPECT_EQ(value.try_as<TypeParam>(), TypeParam());
    EXPECT_EQ(value.value_or(io_value(1).as<TypeParam>()), TypeParam());
}

TYPED_TEST(ValueAs, RaisesTheErrorThatTheOtherFormReports) {
    if constexpr (!std::is_same_v<TypeParam, bool>) {
        try {
            (void)io_value(sample_object()).as<TypeParam>();
            FAIL() << "nothing was raised";
        } catch (io_exception const& raised) {
            EXPECT_EQ(raised.error(), io_error(io_errc::incompatible_type));
            EXPECT_EQ(raised.code(), 3);
            EXPECT_STREQ(raised.what(), "incompatible type");
        }
    }
}

TYPED_TEST(ValueAs, GivesTheFallbackWhereItDoesNotConvert) {
    if constexpr (!std::is_same_v<TypeParam, bool>) {
        TypeParam const fallback = io_value(7).as<TypeParam>();
        EXPECT_EQ(io_value(sample_object()).value_or(fallback), fallback);
        EXPECT_EQ(io_value(sample_object()).template try_as<TypeParam>(), std::nullopt);
        EXPECT_EQ(io_value(9).value_or(fallback), io_value(9).as<TypeParam>());
    }
}

TEST(ValueAsNumber, RaisesTooLarge) {
    try {
        (void)io_value(300).as<unsigned char>();
        FAIL() << "nothing was raised";
    } catch (io_exception const& raised) {
        EXPECT_EQ(raised.code(), 4);
        EXPECT_STREQ(raised.what(), "value too large");
    }
}

TEST(ValueAsNumber, ClampsRealsAsTheConversionDoes) {
    EXPECT_EQ(io_value(3e9).as<int>(), 2147483647);
    EXPECT_EQ(io_value(300.0F).try_as<unsigned char>(), 44);
    EXPECT_EQ(io_value(-3.0F).value_or(5U), 0U);
}

TEST(ValueAsText, GivesAStandardString) {
    EXPECT_EQ(io_value("level").as<std::string>(), "level");
    EXPECT_EQ(io_value(-1.5).as<std::string>(), "-1.5");
    EXPECT_EQ(io_value(true).try_as<std::string>(), "true");
    EXPECT_EQ(io_value(5).value_or(std::string("fallback")), "5");
    EXPECT_EQ(io_value(array<int>()).value_or(std::string("fallback")), "fallback");
    EXPECT_EQ(io_value(array<int>()).try_as<std::string>(), std::nullopt);
    EXPECT_THROW((void)io_value(array<int>()).as<std::string>(), io_exception);
}

TEST(ValueAsText, KeepsZeroBytes) {
    std::string const text("a\0b", 3);
    EXPECT_EQ(io_value(text).as<std::string>(), text);
}

TEST(ValueAsText, ClearsTheErrorFirst) {
    io_error error = io_errc::todo;
    EXPECT_EQ(io_value("level").as<std::string>(error), "level");
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(io_value(io_object()).as<std::string>(error), "");
    EXPECT_EQ(error.code(), 3);
}

} // namespace
} // namespace values_test
