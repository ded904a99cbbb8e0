#include "array_conversion_oracle.hpp"
#include "array_conversion_sources.hpp"
#include "support/alternatives.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

array<io_value> values_of(io_value const& source) {
    io_error error(io_errc::not_found);
    array<io_value> result = detail::get_as<array<io_value>>(source, error);
    EXPECT_EQ(error.code(), 0);
    return result;
}

struct element_row {
    types element;
    int index;
};

/// What the elements of each array alternative become.
template <class S>
element_row row_for() {
    if constexpr (std::is_same_v<S, bool>) return {types::boolean, 1};
    if constexpr (std::is_same_v<S, signed char>) return {types::i8, 2};
    if constexpr (std::is_same_v<S, short>) return {types::i16, 3};
    if constexpr (std::is_same_v<S, int>) return {types::i32, 4};
    if constexpr (std::is_same_v<S, long>) return {types::i32, 5};
    if constexpr (std::is_same_v<S, long long>) return {types::i64, 6};
    if constexpr (std::is_same_v<S, unsigned char>) return {types::u8, 7};
    if constexpr (std::is_same_v<S, unsigned short>) return {types::u16, 8};
    if constexpr (std::is_same_v<S, unsigned int>) return {types::u32, 9};
    if constexpr (std::is_same_v<S, unsigned long>) return {types::u32, 10};
    if constexpr (std::is_same_v<S, unsigned long long>) return {types::u64, 11};
    if constexpr (std::is_same_v<S, float>) return {types::flt, 12};
    if constexpr (std::is_same_v<S, double>) return {types::dbl, 13};
    if constexpr (std::is_same_v<S, utility::string>) return {types::string, 15};
    return {types::object, 16};
}

template <class S>
void expect_own_kinds(picked_sources const& picked) {
    array_source const from = array_of<S>(picked);
    array<io_value> const result = values_of(from.value);
    ASSERT_EQ(result.size(), picked.size());
    element_row const row = row_for<S>();
    for (unsigned int i = 0; i < result.size(); ++i) {
        S const& source = *picked[i]->value.get_if<S>();
        io_data_type expected = io_data_type::scalar(row.element);
        if constexpr (std::is_same_v<S, io_object>) {
            expected.structure_id = source.type().structure_id;
        }
        EXPECT_EQ(result[i].data_type(), expected) << picked[i]->name;
        ASSERT_EQ(result[i].index(), row.index) << picked[i]->name;
        if constexpr (std::is_floating_point_v<S>) {
            EXPECT_TRUE(same_result(*result[i].get_if<S>(), source)) << picked[i]->name;
        } else {
            EXPECT_TRUE(same_content(*result[i].get_if<S>(), source)) << picked[i]->name;
        }
    }
}

TEST(ArrayConversionToValues, GivesEachElementItsOwnKind) {
    for_each_element_type([](auto* element) {
        using S = std::remove_pointer_t<decltype(element)>;
        if constexpr (!std::is_same_v<S, char>) expect_own_kinds<S>(pick_all<S>());
    });
}

TEST(ArrayConversionToValues, KeepsTheElementsOfAnArrayOfValuesAsTheyStand) {
    picked_sources all;
    for (conversion_sources const& bounds : bounds_by_alternative()) {
        for (conversion_source const& bound : bounds) all.push_back(&bound);
    }
    array_source const from = array_of<io_value>(all);
    array<io_value> const result = values_of(from.value);
    ASSERT_EQ(result.size(), all.size());
    for (unsigned int i = 0; i < result.size(); ++i) {
        EXPECT_TRUE(identical(result[i], all[i]->value)) << all[i]->name;
    }
}

TEST(ArrayConversionToValues, KeepsStatedTypesOfTheElements) {
    io_data_type const stated{types{99}, 8, 1, 5};
    array<io_value> const result =
        values_of(array<io_value>::of(io_value(stated, 7), io_value(stated, nullptr)));
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result[0].data_type(), stated);
    EXPECT_EQ(result[0].index(), 4);
    EXPECT_EQ(result[1].data_type(), stated);
    EXPECT_EQ(result[1].index(), 0);
}

TEST(ArrayConversionToValues, TakesNoNoticeOfTheStatedTypeOfTheArray) {
    io_value const source(io_data_type{types::i64, 4, 1, 9}, array<short>{3});
    array<io_value> const result = values_of(source);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].data_type(), io_data_type::scalar(types::i16));
}

TEST(ArrayConversionToValues, CopiesObjectsDeepWithTheirStructureId) {
    io_object object(
        77, io_structure_type({{utility::string("level"), io_data_type::scalar(types::i32)}}));
    object.set("level", 5);
    io_value const source(array<io_object>{object, io_object()});
    array<io_value> const result = values_of(source);
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result[0].data_type(), io_data_type::object(77));
    EXPECT_EQ(result[1].data_type(), io_data_type::object(0));
    io_object const& original = source.get_if<array<io_object>>()->front();
    io_object copy = *result[0].get_if<io_object>();
    EXPECT_FALSE(shares_blocks(*result[0].get_if<io_object>(), original));
    EXPECT_EQ(copy.get("level").as<int>(), 5);
    copy.set("level", 6);
    EXPECT_EQ(original.get("level").as<int>(), 5);
}

TEST(ArrayConversionToValues, SharesNoBlockWithTheSource) {
    for_each_element_type([](auto* element) {
        using S = std::remove_pointer_t<decltype(element)>;
        if constexpr (!std::is_same_v<S, char>) {
            io_value const source(sample<array<S>>());
            array<io_value> const result = values_of(source);
            array<S> const& originals = *source.get_if<array<S>>();
            for (unsigned int i = 0; i < result.size(); ++i) {
                EXPECT_FALSE(shares_blocks(*result[i].template get_if<S>(), originals[i]));
            }
        }
    });
}

TEST(ArrayConversionToValues, AreExactTypesAsExampleOfLong) {
    array<io_value> const result = values_of(array<long>{5});
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].data_type(), io_data_type::scalar(types::i32));
    EXPECT_EQ(result[0].index(), 5);
    EXPECT_EQ(*result[0].get_if<long>(), 5);
}

// --- an array of char is a pair of texts ---

struct char_row {
    char const* name;
    array<char> bytes;
    char const* first;
};

class CharsToValues : public ::testing::TestWithParam<char_row> {};

TEST_P(CharsToValues, AreATextAndAnEmptyOne) {
    array<io_value> const result = values_of(GetParam().bytes);
    ASSERT_EQ(result.size(), 2U);
    for (io_value const& each : result) {
        EXPECT_EQ(each.data_type(), io_data_type::scalar(types::string));
        ASSERT_EQ(each.index(), 15);
    }
    EXPECT_EQ(*result[0].get_if<utility::string>(), GetParam().first);
    EXPECT_EQ(*result[1].get_if<utility::string>(), "");
}

INSTANTIATE_TEST_SUITE_P(Bytes,
                         CharsToValues,
                         ::testing::Values(char_row{"TextAndZero", {'a', 'b', '\0'}, "ab"},
                                           char_row{"TextWithoutZero", {'a', 'b', 'c'}, "abc"},
                                           char_row{"ZeroFirst", {'\0', 'a'}, ""},
                                           char_row{"ZeroAmidst", {'a', '\0', 'b', 'c'}, "a"},
                                           char_row{"ZeroAlone", {'\0'}, ""},
                                           char_row{"OneLetter", {'x'}, "x"},
                                           char_row{"HighByte", {'\xC8', '\0'}, "\xC8"},
                                           char_row{"SixteenWithoutZero",
                                                    array<char>(std::vector<char>(16, 'y')),
                                                    "yyyyyyyyyyyyyyyy"},
                                           char_row{"Nothing", {}, ""}),
                         [](auto const& row) { return std::string(row.param.name); });

TEST(ArrayConversionToValues, ReadsALongCharArrayToItsEndAndNoFurther) {
    for (unsigned int const count : {31U, 32U, 1023U, 1024U, 1025U, 4095U, 4096U, 5000U}) {
        array<char> bytes(count);
        for (char& each : bytes) each = 'q';
        array<io_value> const result = values_of(std::move(bytes));
        ASSERT_EQ(result.size(), 2U);
        EXPECT_EQ(result[0].get_if<utility::string>()->str(), std::string(count, 'q'));
    }
}

TEST(ArrayConversionToValues, RefusesMoreElementsThanAnArrayOfValuesCanHave) {
    io_value const source(array<signed char>(array<io_value>::max_size() + 1));
    EXPECT_TRUE(refuses_array<io_value>(source, io_errc::unhandled_exception));
}

} // namespace
} // namespace whole_values
