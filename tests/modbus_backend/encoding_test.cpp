#include <gtest/gtest.h>
#include <modbus_backend/encoding.hpp>
#include <modbus_backend/error_category.hpp>

#include <bit>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using modbus_backend::encode;
using modbus_backend::make_modbus_error;
using modbus_backend::modbus_errc;
using modbus_backend::part_order;
using modbus_backend::value_type;
using modbus_backend::variable_type;
using word_list = std::vector<std::uint16_t>;

variable_type encoded_type(value_type element, unsigned int width, unsigned int count = 0) {
    variable_type type;
    type.element = element;
    type.element_width = width;
    type.count = count;
    return type;
}

/// The registers, which the value must be taken for.
word_list encoded(variable_type const& type, v2::io_value const& value) {
    word_list registers(type.width(), 0xDEAD);
    EXPECT_EQ(encode(type, value, std::span(registers)), v2::io_error());
    return registers;
}

struct order_case {
    part_order bytes;
    part_order words;
    word_list registers;
};

class encoding_orders : public ::testing::TestWithParam<order_case> {};

TEST_P(encoding_orders, place_bytes_and_words_of_a_number) {
    auto type = encoded_type(value_type::u32, 2);
    type.bytes = GetParam().bytes;
    type.words = GetParam().words;
    EXPECT_EQ(encoded(type, 0x11223344U), GetParam().registers);
}

INSTANTIATE_TEST_SUITE_P(
    all,
    encoding_orders,
    ::testing::Values(order_case{part_order::big, part_order::big, {0x1122, 0x3344}},
                      order_case{part_order::big, part_order::little, {0x3344, 0x1122}},
                      order_case{part_order::little, part_order::big, {0x2211, 0x4433}},
                      order_case{part_order::little, part_order::little, {0x4433, 0x2211}}));

TEST(encoding, every_number_stands_in_its_registers) {
    EXPECT_EQ(encoded(encoded_type(value_type::u16, 1), 65535), word_list{0xFFFF});
    EXPECT_EQ(encoded(encoded_type(value_type::i16, 1), -2), word_list{0xFFFE});
    EXPECT_EQ(encoded(encoded_type(value_type::i32, 2), -2), (word_list{0xFFFF, 0xFFFE}));
    EXPECT_EQ(encoded(encoded_type(value_type::u64, 4), 0x1122334455667788ULL),
              (word_list{0x1122, 0x3344, 0x5566, 0x7788}));
    EXPECT_EQ(encoded(encoded_type(value_type::i64, 4), -3LL),
              (word_list{0xFFFF, 0xFFFF, 0xFFFF, 0xFFFD}));
    // 1.5 is 0x3FC00000, and 0x3FF8000000000000 in double precision.
    EXPECT_EQ(encoded(encoded_type(value_type::flt, 2), 1.5F), (word_list{0x3FC0, 0}));
    EXPECT_EQ(encoded(encoded_type(value_type::dbl, 4), 1.5), (word_list{0x3FF8, 0, 0, 0}));
}

TEST(encoding, what_is_no_number_keeps_every_bit) {
    auto const value = std::bit_cast<float>(std::uint32_t{0x7FC12345});
    EXPECT_EQ(encoded(encoded_type(value_type::flt, 2), value), (word_list{0x7FC1, 0x2345}));
}

TEST(encoding, a_text_is_filled_up_with_zeros) {
    auto type = encoded_type(value_type::string, 3);
    EXPECT_EQ(encoded(type, "abc"), (word_list{0x6162, 0x6300, 0}));
    EXPECT_EQ(encoded(type, ""), (word_list{0, 0, 0}));
    EXPECT_EQ(encoded(type, "abcdef"), (word_list{0x6162, 0x6364, 0x6566}));
    type.bytes = part_order::little;
    EXPECT_EQ(encoded(type, "abc\xFF"), (word_list{0x6261, 0xFF63, 0}));
}

TEST(encoding, arrays_have_one_element_after_the_other) {
    auto type = encoded_type(value_type::u32, 2, 2);
    type.words = part_order::little;
    EXPECT_EQ(encoded(type, (v2::utility::array<unsigned int>{0x11223344U, 7U})),
              (word_list{0x3344, 0x1122, 7, 0}));
    EXPECT_EQ(encoded(encoded_type(value_type::string, 1, 2),
                      (v2::utility::array<v2::utility::string>{"a", "bc"})),
              (word_list{0x6100, 0x6263}));
}

TEST(encoding, bits_are_0_or_1) {
    std::vector<std::uint8_t> one{9};
    EXPECT_TRUE(encode(encoded_type(value_type::boolean, 1), true, std::span(one)).ok());
    EXPECT_EQ(one, std::vector<std::uint8_t>{1});
    std::vector<std::uint8_t> three(3, 9);
    EXPECT_TRUE(encode(encoded_type(value_type::boolean, 1, 3),
                       v2::utility::array<bool>{true, false, true}, std::span(three))
                    .ok());
    EXPECT_EQ(three, (std::vector<std::uint8_t>{1, 0, 1}));
}

TEST(encoding, values_of_other_types_are_converted) {
    EXPECT_EQ(encoded(encoded_type(value_type::u16, 1), "1500"), word_list{1500});
    EXPECT_EQ(encoded(encoded_type(value_type::u16, 1), 1500.0), word_list{1500});
    EXPECT_EQ(encoded(encoded_type(value_type::flt, 2), 3), (word_list{0x4040, 0}));
    EXPECT_EQ(encoded(encoded_type(value_type::string, 2), 42), (word_list{0x3432, 0}));
    EXPECT_EQ(encoded(encoded_type(value_type::i16, 1, 2),
                      (v2::utility::array<v2::io_value>::of(1, "-1"))),
              (word_list{1, 0xFFFF}));
}

struct refused_encoding {
    std::string name;
    value_type element;
    unsigned int width;
    unsigned int count;
    v2::io_value value;
    v2::io_error error;

    ~refused_encoding() noexcept = default; // as that of GoogleTest, which holds it
};

class encoding_refusals : public ::testing::TestWithParam<refused_encoding> {};

TEST_P(encoding_refusals, carry_the_reason) {
    auto const& given = GetParam();
    auto const type = encoded_type(given.element, given.width, given.count);
    if (given.element == value_type::boolean) {
        std::vector<std::uint8_t> bits(type.width());
        EXPECT_EQ(encode(type, given.value, std::span(bits)), given.error);
    } else {
        word_list registers(type.width());
        EXPECT_EQ(encode(type, given.value, std::span(registers)), given.error);
    }
}

using numbers = v2::utility::array<int>;
using mixed = v2::utility::array<v2::io_value>;
auto const incompatible = v2::io_error(v2::io_errc::incompatible_type);
auto const too_large = v2::io_error(v2::io_errc::value_too_large);

INSTANTIATE_TEST_SUITE_P(
    all,
    encoding_refusals,
    ::testing::Values(
        refused_encoding{"a_text_for_a_number", value_type::u16, 1, 0, "high", incompatible},
        refused_encoding{"an_array_for_a_scalar", value_type::u16, 1, 0, numbers{1}, incompatible},
        refused_encoding{"a_scalar_for_an_array", value_type::u16, 1, 1, 1, incompatible},
        refused_encoding{"an_object_for_a_text", value_type::string, 4, 0, v2::io_object(),
                         incompatible},
        refused_encoding{"a_word_for_a_bit", value_type::boolean, 1, 0, "false", incompatible},
        refused_encoding{"an_empty_text_for_a_bit", value_type::boolean, 1, 0, "", incompatible},
        refused_encoding{"an_array_for_a_bit", value_type::boolean, 1, 0,
                         v2::utility::array<bool>{false}, incompatible},
        refused_encoding{"an_empty_text_for_a_number", value_type::flt, 2, 0, "", incompatible},
        refused_encoding{"an_empty_text_for_an_element", value_type::u16, 1, 2,
                         v2::utility::array<v2::utility::string>{"1", ""}, incompatible},
        refused_encoding{"a_word_for_an_element", value_type::boolean, 1, 2, mixed::of(true, "off"),
                         incompatible},
        refused_encoding{"nothing_for_a_number", value_type::u16, 1, 0, v2::io_value(),
                         incompatible},
        refused_encoding{"nothing_for_a_bit", value_type::boolean, 1, 0, v2::io_value(),
                         incompatible},
        refused_encoding{"nothing_for_an_element", value_type::u16, 1, 2,
                         mixed::of(1, v2::io_value()), incompatible},
        refused_encoding{"above_the_range", value_type::u16, 1, 0, 65536, too_large},
        refused_encoding{"below_the_range", value_type::u16, 1, 0, -1, too_large},
        refused_encoding{"below_the_signed_range", value_type::i16, 1, 0, -32769, too_large},
        refused_encoding{"not_whole", value_type::i32, 2, 0, 1.5, too_large},
        refused_encoding{"a_real_number_that_would_be_cut", value_type::u16, 1, 0, 70000.0,
                         too_large},
        refused_encoding{"an_element_that_would_be_cut", value_type::u16, 1, 2,
                         v2::utility::array<double>{1.0, 65536.0}, too_large},
        refused_encoding{"a_truth_value_for_a_number", value_type::u16, 1, 0, true, too_large},
        refused_encoding{"a_double_beyond_float", value_type::flt, 2, 0, 1e300, too_large},
        refused_encoding{"too_few_elements", value_type::u16, 1, 3, numbers{1, 2},
                         make_modbus_error(modbus_errc::wrong_count)},
        refused_encoding{"too_many_elements", value_type::u16, 1, 1, numbers{1, 2},
                         make_modbus_error(modbus_errc::wrong_count)},
        refused_encoding{"no_elements", value_type::boolean, 1, 2, v2::utility::array<bool>(),
                         make_modbus_error(modbus_errc::wrong_count)},
        refused_encoding{"a_text_too_long", value_type::string, 2, 0, "abcde",
                         make_modbus_error(modbus_errc::unfit_text)},
        refused_encoding{"an_element_too_long", value_type::string, 1, 2,
                         v2::utility::array<v2::utility::string>{"ab", "abc"},
                         make_modbus_error(modbus_errc::unfit_text)},
        refused_encoding{"a_text_that_would_end_early", value_type::string, 2, 0,
                         v2::io_value("a\0b", 3), make_modbus_error(modbus_errc::unfit_text)}),
    [](auto const& given) { return given.param.name; });

TEST(encoding, another_count_of_places_is_no_request_that_can_be_made) {
    word_list registers(3);
    EXPECT_THROW(
        static_cast<void>(encode(encoded_type(value_type::u32, 2), 1U, std::span(registers))),
        std::invalid_argument);
    EXPECT_THROW(
        static_cast<void>(encode(encoded_type(value_type::boolean, 3), true, std::span(registers))),
        std::invalid_argument);
}

} // namespace
