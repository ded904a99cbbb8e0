#include <tavi/ioapi/v2/ioapi.hpp>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace tavi::ioapi::v2;

// Scoped, and 32 bits wide whatever its enumerators are, so that unknown numbers are legal.
template <class Enumeration>
constexpr bool is_open_32_bit_enumeration = std::is_enum_v<Enumeration> &&
                                            sizeof(Enumeration) == 4 &&
                                            !std::is_convertible_v<Enumeration, int> &&
                                            (Enumeration{0x7FFFFFFF} != Enumeration{0});

TEST(Enumerations, AreScopedWith32Bits) {
    static_assert(is_open_32_bit_enumeration<io_errc>);
    static_assert(is_open_32_bit_enumeration<io_data_type::basic_types>);
    static_assert(is_open_32_bit_enumeration<io_data_value::value_quality>);
    static_assert(is_open_32_bit_enumeration<plc_identifier_kind>);
    static_assert(is_open_32_bit_enumeration<browsing::node_class>);
}

TEST(Enumerations, OfCodesAndQualitiesAreSigned) {
    static_assert(std::is_signed_v<std::underlying_type_t<io_errc>>);
    static_assert(std::is_signed_v<std::underlying_type_t<io_data_value::value_quality>>);
}

TEST(Enumerations, OfNodeClassesHaveTheirNumbers) {
    static_assert(static_cast<int>(browsing::node_class::unspecified) == 0);
    static_assert(static_cast<int>(browsing::node_class::folder) == 1);
    static_assert(static_cast<int>(browsing::node_class::variable) == 2);
    static_assert(static_cast<int>(browsing::node_class::type) == 3);
}

TEST(Enumerations, OfElementKindsHaveTheirNumbers) {
    using types = io_data_type::basic_types;
    constexpr types in_order[] = {types::empty,  types::boolean, types::u8,  types::u16,
                                  types::u32,    types::u64,     types::i8,  types::i16,
                                  types::i32,    types::i64,     types::flt, types::dbl,
                                  types::string, types::object};
    for (unsigned int i = 0; i < 14; ++i) EXPECT_EQ(static_cast<unsigned int>(in_order[i]), i);
}

} // namespace
