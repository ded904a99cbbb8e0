#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace whole_values {
namespace {

using namespace values_test;

template <class T>
int code_of(io_value const& value) {
    io_error error;
    (void)value.as<T>(error);
    return error.code();
}

TEST(ArrayAs, GivesAnArrayOfTheLibrary) {
    auto const result = io_value(array<short>{1, -2}).as<utility::array<double>>();
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result[0], 1.0);
    EXPECT_EQ(result[1], -2.0);
}

TEST(ArrayAs, GivesAStandardVector) {
    EXPECT_EQ(io_value(array<short>{1, -2}).as<std::vector<long long>>(),
              (std::vector<long long>{1, -2}));
    EXPECT_EQ(io_value(array<short>{1, 2}).as<std::vector<char>>(), (std::vector<char>{1, 2}));
    EXPECT_EQ(io_value(array<float>{0.5F}).as<std::vector<long double>>(),
              (std::vector<long double>{0.5L}));
}

TEST(ArrayAs, GivesAVectorOfTexts) {
    std::vector<std::string> const expected{"1", "true", std::string("a\0b", 3), ""};
    io_value const value(array<io_value>::of(1, true, std::string("a\0b", 3), io_value()));
    EXPECT_EQ(value.as<std::vector<std::string>>(), expected);
    EXPECT_EQ(io_value(array<utility::string>{"x"}).as<std::vector<utility::string>>().size(), 1U);
}

TEST(ArrayAs, GivesAVectorOfTruthValues) {
    EXPECT_EQ(io_value(array<int>{0, 7, -1}).as<std::vector<bool>>(),
              (std::vector<bool>{false, true, true}));
    EXPECT_EQ(io_value(array<bool>{true, false}).as<std::vector<bool>>(),
              (std::vector<bool>{true, false}));
}

TEST(ArrayAs, GivesAVectorOfValues) {
    auto const values = io_value(array<long>{5, 6}).as<std::vector<io_value>>();
    ASSERT_EQ(values.size(), 2U);
    EXPECT_TRUE(identical(values[0], io_value(5L)));
    EXPECT_TRUE(identical(values[1], io_value(6L)));
}

TEST(ArrayAs, GivesNothingOfAnArrayThatDoesNotFit) {
    io_error error;
    EXPECT_TRUE(io_value(array<int>{1, 300}).as<std::vector<unsigned char>>(error).empty());
    EXPECT_EQ(error.code(), 4);
    EXPECT_TRUE(io_value(array<int>{1, 300}).as<array<unsigned char>>(error).empty());
    EXPECT_EQ(error.code(), 4);
    EXPECT_TRUE(io_value("1").as<std::vector<int>>(error).empty());
    EXPECT_EQ(error.code(), 3);
    EXPECT_EQ(code_of<std::vector<bool>>(io_value(array<bool>())), 0);
}

TEST(ArrayAs, RaisesTheErrorWhereNoneIsGiven) {
    try {
        (void)io_value(array<int>{300}).as<std::vector<signed char>>();
        FAIL();
    } catch (io_exception const& raised) {
        EXPECT_EQ(raised.code(), 4);
    }
}

TEST(ArrayAs, TriesAndFallsBack) {
    io_value const value(array<utility::string>{"1", "x"});
    EXPECT_FALSE(value.try_as<std::vector<int>>().has_value());
    EXPECT_EQ(value.try_as<std::vector<bool>>(), (std::vector<bool>{true, true}));
    EXPECT_EQ(value.value_or<std::vector<int>>({7, 8}), (std::vector<int>{7, 8}));
    EXPECT_EQ(io_value(array<int>()).value_or<std::vector<int>>({7}), std::vector<int>());
}

TEST(ArrayAs, RefusesTheEmptyValueThatAScalarWouldTake) {
    EXPECT_EQ(code_of<std::vector<int>>(io_value()), 3);
    EXPECT_EQ(code_of<array<io_value>>(io_value()), 3);
    EXPECT_EQ(code_of<int>(io_value()), 0);
}

// --- exact conversion ---

template <class T>
int exact_code_of(io_value const& value) {
    io_error error;
    bool const empty = value.get_exact<T>(error).empty();
    EXPECT_EQ(empty, error.failed());
    return error.code();
}

TEST(ExactArray, RefusesWhatWouldBeCutOrClamped) {
    EXPECT_EQ(exact_code_of<std::vector<unsigned char>>(array<float>{44.0F, 300.0F}), 4);
    EXPECT_EQ(exact_code_of<std::vector<int>>(array<double>{1.0, 3e9}), 4);
    EXPECT_EQ(exact_code_of<std::vector<unsigned int>>(array<float>{-3.0F}), 4);
    EXPECT_EQ(exact_code_of<array<short>>(array<io_value>::of(1, 70000.0F)), 4);
}

TEST(ExactArray, LooksAtItsFirstElementAsWell) {
    EXPECT_EQ(exact_code_of<std::vector<unsigned char>>(array<float>{300.0F, 44.0F}), 4);
    EXPECT_EQ(exact_code_of<std::vector<int>>(array<double>{3e9, 1.0}), 4);
    EXPECT_EQ(exact_code_of<array<short>>(array<io_value>::of(70000.0F, 1)), 4);
}

TEST(ExactArray, OfWholeNumbersAndTextsIsTheUsualConversion) {
    EXPECT_EQ(io_value(array<short>{1, -2}).get_exact<std::vector<int>>(),
              (std::vector<int>{1, -2}));
    EXPECT_EQ(io_value(array<utility::string>{"7", ""}).get_exact<std::vector<int>>(),
              (std::vector<int>{7, 0}));
    EXPECT_THROW((void)io_value(array<int>{300}).get_exact<std::vector<unsigned char>>(),
                 io_exception);
}

TEST(ExactArray, TakesWhatKeepsItsNumber) {
    EXPECT_EQ(io_value(array<double>{1.0, -2.0, 0.0}).get_exact<std::vector<int>>(),
              (std::vector<int>{1, -2, 0}));
    EXPECT_EQ(io_value(array<float>{200.0F}).get_exact<std::vector<char>>(),
              (std::vector<char>{'\xC8'}));
    EXPECT_EQ(io_value(array<io_value>::of(255.0, "7", 9)).get_exact<std::vector<unsigned char>>(),
              (std::vector<unsigned char>{255, 7, 9}));
    EXPECT_EQ(io_value(array<double>{0.1}).get_exact<std::vector<float>>(),
              (std::vector<float>{0.1F}));
}

TEST(ExactArray, ReportsWhatTheConversionReports) {
    EXPECT_EQ(exact_code_of<std::vector<int>>(array<double>{1.5}), 4);
    EXPECT_EQ(exact_code_of<std::vector<int>>(array<utility::string>{"x"}), 3);
    EXPECT_EQ(exact_code_of<std::vector<int>>(5), 3);
}

} // namespace
} // namespace whole_values
