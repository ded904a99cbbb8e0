#include "array_conversion_oracle.hpp"
#include "array_conversion_truth_bytes.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

std::vector<unsigned char> const bytes{0, 1, 2, 0x80, 0xFF, 0};
std::vector<bool> const meaning{false, true, true, true, true, false};

TEST(TruthBytes, OtherThanZeroAreTrueAsTruthValues) {
    io_error error;
    array<bool> const result = detail::get_as<array<bool>>(truths_of(bytes), error);
    EXPECT_EQ(error.code(), 0);
    EXPECT_EQ(meant_by(result), meaning);
}

TEST(TruthBytes, OtherThanZeroAreTheTextTrue) {
    EXPECT_TRUE(gives_array<utility::string>(truths_of(bytes),
                                             {"false", "true", "true", "true", "true", "false"}));
}

TEST(TruthBytes, OtherThanZeroAreTrueAsValues) {
    auto const result = io_value(truths_of(bytes)).as<array<io_value>>();
    ASSERT_EQ(result.size(), bytes.size());
    for (unsigned int i = 0; i < result.size(); ++i) {
        EXPECT_EQ(result[i].index(), 1);
        EXPECT_EQ(result[i].as<bool>(), meaning[i]);
    }
}

TEST(TruthBytes, OtherThanZeroAreTrueInAStandardVector) {
    EXPECT_EQ(io_value(truths_of(bytes)).as<std::vector<bool>>(), meaning);
}

TEST(TruthBytes, OtherThanZeroAreTrueInAnArrayOfValues) {
    io_value const value(
        array<io_value>::of(truth_of(0), truth_of(1), truth_of(2), truth_of(0x80), truth_of(0xFF)));
    io_error error;
    auto const result = detail::get_as<array<bool>>(value, error);
    EXPECT_EQ(error.code(), 0);
    EXPECT_EQ(meant_by(result), (std::vector<bool>{false, true, true, true, true}));
    EXPECT_TRUE(gives_array<utility::string>(value, {"false", "true", "true", "true", "true"}));
}

TEST(TruthBytes, AreTooLargeForANumberWhateverTheyAre) {
    EXPECT_TRUE(refuses_array<int>(truths_of({2}), io_errc::value_too_large));
    EXPECT_TRUE(refuses_array<double>(array<io_value>::of(truth_of(2)), io_errc::value_too_large));
}

TEST(TruthBytes, PassToDeclaredTypes) {
    auto const array_type = io_data_type::array_of(types::boolean);
    io_value const value(io_data_type::array_of(types::u8), truths_of(bytes));
    EXPECT_TRUE(value.converts_to(array_type));
    io_value const result = value.to_variant(array_type);
    EXPECT_EQ(meant_by(*result.get_if<array<bool>>()), meaning);
    EXPECT_TRUE(truth_of(2).converts_to(io_data_type::scalar(types::string)));
    EXPECT_EQ(truth_of(2).to_variant(io_data_type::scalar(types::string)).as<std::string>(),
              "true");
}

TEST(TruthBytes, AreEqualByTheirBytesAmongTruthValues) {
    EXPECT_TRUE(truth_of(2) == truth_of(2));
    EXPECT_FALSE(truth_of(2) == truth_of(1));
    EXPECT_TRUE(io_value(truths_of({0, 2})) == io_value(truths_of({0, 2})));
    EXPECT_FALSE(io_value(truths_of({0, 2})) == io_value(truths_of({0, 1})));
}

TEST(TruthBytes, ArePrintedByTheirMeaning) {
    EXPECT_EQ(truth_of(0x80).printable_string(), "(boolean) true");
    EXPECT_EQ(io_value(truths_of({0, 2, 1})).printable_string(),
              "array (3) {\n  (boolean) false\n  (boolean) true\n  (boolean) true\n}");
}

} // namespace
} // namespace whole_values
