#include "support/typed_tests.hpp"

#include <gtest/gtest.h>
#include <modbus_backend/decoding.hpp>
#include <modbus_backend/encoding.hpp>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

// What is encoded and decoded again is the same, in every order: all values of 16 bits, and of the
// wider types those in which every byte and every bit has its turn.

namespace {

namespace v2 = tavi::ioapi::v2;
using modbus_backend::part_order;
using modbus_backend::value_type;
using modbus_backend::variable_type;

constexpr part_order both_orders[] = {part_order::big, part_order::little};

/// Calls with the type in each of the four orders.
template <class Function>
void in_every_order(variable_type type, Function function) {
    for (auto const bytes : both_orders) {
        for (auto const words : both_orders) {
            type.bytes = bytes;
            type.words = words;
            function(type);
        }
    }
}

/// The value after its way into registers and back.
v2::io_value returned(variable_type const& type, v2::io_value const& value) {
    std::vector<std::uint16_t> registers(type.width());
    EXPECT_EQ(encode(type, value, std::span(registers)), v2::io_error());
    return decode(type, std::span<std::uint16_t const>(registers));
}

variable_type returned_type(value_type element, unsigned int width, unsigned int count = 0) {
    variable_type type;
    type.element = element;
    type.element_width = width;
    type.count = count;
    return type;
}

template <class Number>
struct number_shape;
template <>
struct number_shape<unsigned short> {
    static constexpr auto element = value_type::u16;
};
template <>
struct number_shape<short> {
    static constexpr auto element = value_type::i16;
};
template <>
struct number_shape<unsigned int> {
    static constexpr auto element = value_type::u32;
};
template <>
struct number_shape<int> {
    static constexpr auto element = value_type::i32;
};
template <>
struct number_shape<unsigned long long> {
    static constexpr auto element = value_type::u64;
};
template <>
struct number_shape<long long> {
    static constexpr auto element = value_type::i64;
};
template <>
struct number_shape<float> {
    static constexpr auto element = value_type::flt;
};
template <>
struct number_shape<double> {
    static constexpr auto element = value_type::dbl;
};

template <class Number>
class round_trip : public ::testing::Test {
protected:
    using limits = std::numeric_limits<Number>;

    static variable_type type(unsigned int count = 0) {
        return returned_type(number_shape<Number>::element, sizeof(Number) / 2, count);
    }

    static std::vector<Number> samples() {
        std::vector<Number> list{0, 1, limits::lowest(), limits::max(), limits::min()};
        if constexpr (std::is_integral_v<Number>) {
            for (int bit = 0; bit < limits::digits; ++bit) {
                list.push_back(static_cast<Number>(1ULL << bit));
            }
            for (unsigned int byte = 0; byte < sizeof(Number); ++byte) {
                list.push_back(static_cast<Number>(0xA5ULL << 8 * byte));
            }
        } else {
            for (Number number = limits::denorm_min(); number < limits::max() / 16; number *= 7) {
                list.push_back(number);
                list.push_back(-number);
            }
            list.push_back(limits::infinity());
            list.push_back(Number{1} / 3);
        }
        return list;
    }
};

using number_types = ::testing::
    Types<unsigned short, short, unsigned int, int, unsigned long long, long long, float, double>;
TYPED_TEST_SUITE(round_trip, number_types);

TYPED_TEST(round_trip, of_a_number_changes_nothing) {
    in_every_order(this->type(), [](variable_type const& type) {
        for (auto const number : TestFixture::samples()) {
            EXPECT_TRUE(identical(returned(type, number), v2::io_value(number))) << number;
        }
    });
}

TYPED_TEST(round_trip, of_an_array_changes_nothing) {
    auto const samples = this->samples();
    for (std::size_t at = 0; at + 3 <= samples.size(); at += 3) {
        v2::utility::array<TypeParam> const list(samples.begin() + static_cast<long>(at),
                                                 samples.begin() + static_cast<long>(at + 3));
        in_every_order(this->type(3), [&list](variable_type const& type) {
            EXPECT_TRUE(identical(returned(type, list), v2::io_value(list)));
        });
    }
}

TEST(round_trip_of_16_bits, changes_no_value_at_all) {
    for (auto const bytes : both_orders) {
        auto natural = returned_type(value_type::u16, 1);
        auto whole = returned_type(value_type::i16, 1);
        natural.bytes = whole.bytes = bytes;
        for (int number = 0; number <= 65535; ++number) {
            ASSERT_EQ(*returned(natural, number).get_if<unsigned short>(), number);
            ASSERT_EQ(*returned(whole, number - 32768).get_if<short>(), number - 32768);
        }
    }
}

TEST(round_trip_of_texts, changes_no_byte_and_no_length) {
    in_every_order(returned_type(value_type::string, 128), [](variable_type const& type) {
        std::string text;
        for (int byte = 1; byte < 256; ++byte) {
            text += static_cast<char>(byte);
            ASSERT_EQ(returned(type, text).as<std::string>(), text) << byte;
        }
    });
}

TEST(round_trip_of_texts, works_in_arrays) {
    v2::utility::array<v2::utility::string> const list{"", "a", "abcd"};
    in_every_order(returned_type(value_type::string, 2, 3), [&list](variable_type const& type) {
        EXPECT_TRUE(identical(returned(type, list), v2::io_value(list)));
    });
}

TEST(round_trip_of_bits, changes_no_bit) {
    auto const type = returned_type(value_type::boolean, 1, 4);
    for (unsigned int pattern = 0; pattern < 16; ++pattern) {
        v2::utility::array<bool> list(4);
        for (unsigned int i = 0; i < 4; ++i) list[i] = (pattern >> i & 1U) != 0;
        std::vector<std::uint8_t> bits(4);
        ASSERT_TRUE(encode(type, list, std::span(bits)).ok());
        EXPECT_TRUE(
            identical(decode(type, std::span<std::uint8_t const>(bits)), v2::io_value(list)));
    }
}

} // namespace
