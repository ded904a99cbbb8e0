#include <gtest/gtest.h>
#include <modbus_backend/decoding.hpp>

#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace modbus_backend;
using tavi::ioapi::v2::io_data_type;
using tavi::ioapi::v2::io_value;

using registers = std::vector<std::uint16_t>;

constexpr auto big = part_order::big;
constexpr auto little = part_order::little;

io_value decoded(value_type type,
                 registers const& words,
                 part_order bytes = big,
                 part_order order = big) {
    variable described;
    described.type = type;
    described.width = static_cast<unsigned int>(words.size());
    described.bytes = bytes;
    described.words = order;
    return decode(described, words);
}

/// The payload, which must be exactly a `T` that the value calls `element`.
template <class T>
T payload(io_value const& value, io_data_type::basic_types element) {
    EXPECT_EQ(value.data_type(), io_data_type::scalar(element));
    T const* const stored = value.get_if<T>();
    if (stored == nullptr) throw std::runtime_error("another payload");
    return *stored;
}

using types = io_data_type::basic_types;

TEST(decoding, u16) {
    EXPECT_EQ(payload<unsigned short>(decoded(value_type::u16, {0}), types::u16), 0);
    EXPECT_EQ(payload<unsigned short>(decoded(value_type::u16, {0x1234}), types::u16), 0x1234);
    EXPECT_EQ(payload<unsigned short>(decoded(value_type::u16, {0xFFFF}), types::u16), 65535);
    EXPECT_EQ(payload<unsigned short>(decoded(value_type::u16, {0x1234}, little), types::u16),
              0x3412);
}

TEST(decoding, i16) {
    EXPECT_EQ(payload<short>(decoded(value_type::i16, {0x7FFF}), types::i16), 32767);
    EXPECT_EQ(payload<short>(decoded(value_type::i16, {0x8000}), types::i16), -32768);
    EXPECT_EQ(payload<short>(decoded(value_type::i16, {0xFFFF}), types::i16), -1);
    EXPECT_EQ(payload<short>(decoded(value_type::i16, {0xFEFF}, little), types::i16), -2);
}

TEST(decoding, u32_in_every_order) {
    registers const words{0x1122, 0x3344};
    auto const read = [&](part_order bytes, part_order order) {
        return payload<unsigned int>(decoded(value_type::u32, words, bytes, order), types::u32);
    };
    EXPECT_EQ(read(big, big), 0x11223344U);
    EXPECT_EQ(read(big, little), 0x33441122U);
    EXPECT_EQ(read(little, big), 0x22114433U);
    EXPECT_EQ(read(little, little), 0x44332211U);
    EXPECT_EQ(payload<unsigned int>(decoded(value_type::u32, {0xFFFF, 0xFFFF}), types::u32),
              4294967295U);
}

TEST(decoding, i32) {
    auto const least = std::numeric_limits<int>::min();
    EXPECT_EQ(payload<int>(decoded(value_type::i32, {0x8000, 0}), types::i32), least);
    EXPECT_EQ(payload<int>(decoded(value_type::i32, {0x7FFF, 0xFFFF}), types::i32), 2147483647);
    EXPECT_EQ(payload<int>(decoded(value_type::i32, {0xFFFE, 0xFFFF}, big, little), types::i32),
              -2);
}

TEST(decoding, u64_in_every_order) {
    registers const words{0x1122, 0x3344, 0x5566, 0x7788};
    auto const read = [&](part_order bytes, part_order order) {
        return payload<unsigned long long>(decoded(value_type::u64, words, bytes, order),
                                           types::u64);
    };
    EXPECT_EQ(read(big, big), 0x1122334455667788U);
    EXPECT_EQ(read(big, little), 0x7788556633441122U);
    EXPECT_EQ(read(little, big), 0x2211443366558877U);
    EXPECT_EQ(read(little, little), 0x8877665544332211U);
}

TEST(decoding, i64) {
    auto const least = std::numeric_limits<long long>::min();
    EXPECT_EQ(payload<long long>(decoded(value_type::i64, {0x8000, 0, 0, 0}), types::i64), least);
    EXPECT_EQ(
        payload<long long>(decoded(value_type::i64, {0xFFFD, 0xFFFF, 0xFFFF, 0xFFFF}, big, little),
                           types::i64),
        -3);
}

// 1.5 is 0x3FC00000, and 0x3FF8000000000000 in double precision.
TEST(decoding, flt) {
    auto const read = [](registers const& words, part_order bytes, part_order order) {
        return payload<float>(decoded(value_type::flt, words, bytes, order), types::flt);
    };
    EXPECT_EQ(read({0x3FC0, 0x0000}, big, big), 1.5F);
    EXPECT_EQ(read({0x0000, 0x3FC0}, big, little), 1.5F);
    EXPECT_EQ(read({0xC03F, 0x0000}, little, big), 1.5F);
    EXPECT_EQ(read({0x0000, 0xC03F}, little, little), 1.5F);
    EXPECT_EQ(read({0x7F80, 0x0000}, big, big), std::numeric_limits<float>::infinity());
}

TEST(decoding, flt_keeps_every_bit_of_what_is_no_number) {
    float const read = payload<float>(decoded(value_type::flt, {0x7FC1, 0x2345}), types::flt);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(read), 0x7FC12345U);
}

TEST(decoding, dbl) {
    auto const read = [](registers const& words, part_order bytes, part_order order) {
        return payload<double>(decoded(value_type::dbl, words, bytes, order), types::dbl);
    };
    EXPECT_EQ(read({0x3FF8, 0, 0, 0}, big, big), 1.5);
    EXPECT_EQ(read({0, 0, 0, 0x3FF8}, big, little), 1.5);
    EXPECT_EQ(read({0xF83F, 0, 0, 0}, little, big), 1.5);
    EXPECT_EQ(read({0, 0, 0, 0xF83F}, little, little), 1.5);
    EXPECT_EQ(read({0, 0, 0, 1}, big, big), std::numeric_limits<double>::denorm_min());
}

std::string text(registers const& words, part_order bytes = big) {
    auto const value = decoded(value_type::string, words, bytes);
    return payload<tavi::ioapi::v2::utility::string>(value, types::string).str();
}

TEST(decoding, a_string_has_its_first_character_in_the_high_byte_unless_stated) {
    EXPECT_EQ(text({0x6162, 0x6364}), "abcd");
    EXPECT_EQ(text({0x6162, 0x6364}, little), "badc");
}

TEST(decoding, a_string_ends_at_the_first_zero_or_fills_its_registers) {
    EXPECT_EQ(text({0x6162, 0x6300}), "abc");
    EXPECT_EQ(text({0x6162, 0x0063}), "ab");
    EXPECT_EQ(text({0x0061, 0x6263}), "");
    EXPECT_EQ(text({0x6100, 0x6263}), "a");
    EXPECT_EQ(text(registers(125, 0x7878)), std::string(250, 'x'));
}

TEST(decoding, a_string_keeps_bytes_that_are_no_letters) {
    EXPECT_EQ(text({0xFF01, 0x0A80}), "\xFF\x01\x0A\x80");
}

TEST(decoding, another_count_of_registers_is_refused) {
    variable described;
    described.type = value_type::flt;
    described.width = 2;
    EXPECT_THROW(static_cast<void>(decode(described, {})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(decode(described, registers(1))), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(decode(described, registers(3))), std::invalid_argument);
}

TEST(decoding, a_boolean_is_not_in_registers) {
    EXPECT_THROW(static_cast<void>(decoded(value_type::boolean, {1})), std::invalid_argument);
}

} // namespace
