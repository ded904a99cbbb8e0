#include "array_conversion_oracle.hpp"
#include "sample_payloads.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace whole_values {
namespace {

constexpr io_errc too_large = io_errc::value_too_large;
constexpr io_errc incompatible = io_errc::incompatible_type;

TEST(ArrayConversionEdgeCase, EmptyValueScalarAndTextAreNoArrays) {
    EXPECT_TRUE(refuses_array<int>(io_value(), incompatible));
    EXPECT_TRUE(refuses_array<int>(5, incompatible));
    EXPECT_TRUE(refuses_array<int>("5", incompatible));
    EXPECT_TRUE(refuses_array<char>("abc", incompatible));
    EXPECT_TRUE(refuses_array<utility::string>("abc", incompatible));
}

TEST(ArrayConversionEdgeCase, TruthValuesAreNoNumbers) {
    EXPECT_TRUE(refuses_array<int>(array<bool>{true}, too_large));
    EXPECT_TRUE(refuses_array<char>(array<bool>{false}, too_large));
    EXPECT_TRUE(refuses_array<double>(array<bool>{true, false}, too_large));
    EXPECT_TRUE(gives_array<bool>(array<int>{0, 7}, {false, true}));
    EXPECT_TRUE(gives_array<utility::string>(array<bool>{true, false}, {"true", "false"}));
}

TEST(ArrayConversionEdgeCase, OneElementOutOfRangeSpoilsAll) {
    EXPECT_TRUE(refuses_array<unsigned char>(array<int>{1, 300, 2}, too_large));
    EXPECT_TRUE(gives_array<unsigned char>(array<int>{1, 255, 2}, {1, 255, 2}));
}

TEST(ArrayConversionEdgeCase, RealsPassTheGateAndAreCut) {
    EXPECT_TRUE(refuses_array<int>(array<double>{1.0, 2.5}, too_large));
    EXPECT_TRUE(gives_array<int>(array<double>{1.0, -0.0, 3e9}, {1, 0, 2147483647}));
    EXPECT_TRUE(gives_array<unsigned char>(array<float>{300.0F}, {44}));
    EXPECT_TRUE(gives_array<short>(array<float>{70000.0F}, {4464}));
    EXPECT_TRUE(gives_array<unsigned int>(array<float>{-3.0F}, {0}));
}

TEST(ArrayConversionEdgeCase, TextsAreParsedOneByOne) {
    EXPECT_TRUE(refuses_array<int>(array<utility::string>{"1", "", "x"}, incompatible));
    EXPECT_TRUE(gives_array<int>(array<utility::string>{"1", ""}, {1, 0}));
    EXPECT_TRUE(
        gives_array<bool>(array<utility::string>{"1", "", "x", "0.0"}, {true, false, true, false}));
}

TEST(ArrayConversionEdgeCase, EmptyElementGivesTheDefault) {
    EXPECT_TRUE(gives_array<int>(array<io_value>::of(io_value(), 2), {0, 2}));
    EXPECT_TRUE(gives_array<utility::string>(array<io_value>::of(io_value(), 2), {"", "2"}));
    EXPECT_TRUE(gives_array<bool>(array<io_value>::of(io_value(), 2), {false, true}));
    EXPECT_TRUE(gives_array<double>(array<io_value>::of(io_value()), {0.0}));
}

TEST(ArrayConversionEdgeCase, TruthValueInAnArrayOfValuesIsTooLargeForANumber) {
    EXPECT_TRUE(refuses_array<int>(array<io_value>::of(2, true), too_large));
    EXPECT_TRUE(gives_array<bool>(array<io_value>::of(2, true, false), {true, true, false}));
    EXPECT_TRUE(gives_array<utility::string>(array<io_value>::of(2, true), {"2", "true"}));
}

TEST(ArrayConversionEdgeCase, ArraysAndObjectsInAnArrayOfValuesAreOnlyTruthValues) {
    for (io_value const& each : {io_value(array<int>{1}), io_value(io_object())}) {
        io_value const source(array<io_value>::of(1, each));
        EXPECT_TRUE(refuses_array<int>(source, incompatible));
        EXPECT_TRUE(refuses_array<float>(source, incompatible));
        EXPECT_TRUE(refuses_array<utility::string>(source, incompatible));
        EXPECT_TRUE(gives_array<bool>(source, {true, true}));
    }
    EXPECT_TRUE(gives_array<bool>(array<io_value>::of(array<int>()), {false}));
}

TEST(ArrayConversionEdgeCase, ObjectsAreTrueAndNothingElse) {
    io_value const three(array<io_object>(3));
    EXPECT_TRUE(gives_array<bool>(three, {true, true, true}));
    EXPECT_TRUE(refuses_array<int>(three, incompatible));
    EXPECT_TRUE(refuses_array<long double>(three, incompatible));
    EXPECT_TRUE(refuses_array<utility::string>(three, incompatible));
}

TEST(ArrayConversionEdgeCase, CharIsANumberAndNeverFailsAsAText) {
    EXPECT_TRUE(gives_array<utility::string>(array<char>{'A', '\xC8', '\0'}, {"65", "200", "0"}));
    EXPECT_TRUE(gives_array<unsigned char>(array<char>{'A', '\xC8'}, {65, 200}));
    EXPECT_TRUE(gives_array<int>(array<char>{'\xC8'}, {200}));
    EXPECT_TRUE(refuses_array<signed char>(array<char>{'\xC8'}, too_large));
    EXPECT_TRUE(refuses_array<char>(array<signed char>{-56}, too_large));
}

TEST(ArrayConversionEdgeCase, ElementsOfOneRepresentationPassWithoutATest) {
    EXPECT_TRUE(gives_array<char>(array<unsigned char>{200}, {'\xC8'}));
    if constexpr (sizeof(long) == sizeof(int)) {
        EXPECT_TRUE(gives_array<int>(array<long>{-2147483647L - 1}, {-2147483647 - 1}));
        EXPECT_TRUE(gives_array<unsigned int>(array<unsigned long>{4294967295UL}, {4294967295U}));
    } else {
        EXPECT_TRUE(gives_array<long long>(array<long>{std::numeric_limits<long>::min()},
                                           {std::numeric_limits<long>::min()}));
        EXPECT_TRUE(refuses_array<int>(array<long>{static_cast<long>(5000000000LL)}, too_large));
        EXPECT_TRUE(refuses_array<unsigned int>(
            array<unsigned long>{static_cast<unsigned long>(5000000000ULL)}, too_large));
    }
}

TEST(ArrayConversionEdgeCase, DoublesBecomeLongDoublesOneByOne) {
    EXPECT_TRUE(
        gives_array<long double>(array<double>{0.1, -0.0}, {static_cast<long double>(0.1), -0.0L}));
}

TEST(ArrayConversionEdgeCase, NotANumberStaysOneAmongRealsOfItsWidth) {
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(gives_array<float>(array<float>{nan}, {nan}));
    EXPECT_TRUE(gives_array<double>(array<float>{nan}, {static_cast<double>(nan)}));
    EXPECT_TRUE(refuses_array<float>(array<double>{static_cast<double>(nan)}, too_large));
}

} // namespace
} // namespace whole_values
