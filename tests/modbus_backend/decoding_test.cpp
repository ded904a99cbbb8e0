#include <examples/support/recording_host.hpp>
#include <gtest/gtest.h>
#include <modbus_backend/decoding.hpp>
#include <modbus_backend/structure.hpp>
#include <modbus_backend/structure_registration.hpp>

#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace modbus_backend;
using tavi::ioapi::v2::io_data_type;
using tavi::ioapi::v2::io_value;
namespace utility = tavi::ioapi::v2::utility;

using some_registers = std::vector<std::uint16_t>;

constexpr auto big = part_order::big;
constexpr auto little = part_order::little;

io_value decoded(value_type type,
                 some_registers const& words,
                 part_order bytes = big,
                 part_order order = big) {
    variable_type described;
    described.element = type;
    described.element_width = static_cast<unsigned int>(words.size());
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
    some_registers const words{0x1122, 0x3344};
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
    some_registers const words{0x1122, 0x3344, 0x5566, 0x7788};
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
    auto const read = [](some_registers const& words, part_order bytes, part_order order) {
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
    auto const read = [](some_registers const& words, part_order bytes, part_order order) {
        return payload<double>(decoded(value_type::dbl, words, bytes, order), types::dbl);
    };
    EXPECT_EQ(read({0x3FF8, 0, 0, 0}, big, big), 1.5);
    EXPECT_EQ(read({0, 0, 0, 0x3FF8}, big, little), 1.5);
    EXPECT_EQ(read({0xF83F, 0, 0, 0}, little, big), 1.5);
    EXPECT_EQ(read({0, 0, 0, 0xF83F}, little, little), 1.5);
    EXPECT_EQ(read({0, 0, 0, 1}, big, big), std::numeric_limits<double>::denorm_min());
}

std::string text(some_registers const& words, part_order bytes = big) {
    auto const value = decoded(value_type::string, words, bytes);
    return payload<utility::string>(value, types::string).str();
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
    EXPECT_EQ(text(some_registers(125, 0x7878)), std::string(250, 'x'));
}

TEST(decoding, a_string_keeps_bytes_that_are_no_letters) {
    EXPECT_EQ(text({0xFF01, 0x0A80}), "\xFF\x01\x0A\x80");
}

variable_type array_of(value_type element, unsigned int width, unsigned int count) {
    variable_type described;
    described.element = element;
    described.element_width = width;
    described.count = count;
    return described;
}

/// The elements, which must be an array of exactly `T` that the value calls `element`.
template <class T>
std::vector<T> elements(io_value const& value, io_data_type::basic_types element) {
    EXPECT_EQ(value.data_type(), io_data_type::array_of(element));
    auto const* const stored = value.get_if<utility::array<T>>();
    if (stored == nullptr) throw std::runtime_error("another payload");
    return stored->to_vector();
}

TEST(decoding, arrays_of_every_integer) {
    some_registers const words{0x0001, 0xFFFE, 0x0000, 0x0003, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFC};
    auto const read = [&](value_type type, unsigned int width) {
        return decode(array_of(type, width, 8 / width), words);
    };
    EXPECT_EQ(elements<unsigned short>(read(value_type::u16, 1), types::u16),
              (std::vector<unsigned short>{1, 65534, 0, 3, 65535, 65535, 65535, 65532}));
    EXPECT_EQ(elements<short>(read(value_type::i16, 1), types::i16),
              (std::vector<short>{1, -2, 0, 3, -1, -1, -1, -4}));
    EXPECT_EQ(elements<unsigned int>(read(value_type::u32, 2), types::u32),
              (std::vector<unsigned int>{0x1FFFE, 3, 0xFFFFFFFF, 0xFFFFFFFC}));
    EXPECT_EQ(elements<int>(read(value_type::i32, 2), types::i32),
              (std::vector<int>{131070, 3, -1, -4}));
    EXPECT_EQ(elements<unsigned long long>(read(value_type::u64, 4), types::u64),
              (std::vector<unsigned long long>{0x1FFFE00000003, 0xFFFFFFFFFFFFFFFC}));
    EXPECT_EQ(elements<long long>(read(value_type::i64, 4), types::i64),
              (std::vector<long long>{0x1FFFE00000003, -4}));
}

// 1.5 is 0x3FC00000, -2 is 0xC0000000.
TEST(decoding, an_array_of_flt_in_every_order) {
    auto const read = [](some_registers const& words, part_order bytes, part_order order) {
        auto described = array_of(value_type::flt, 2, 2);
        described.bytes = bytes;
        described.words = order;
        return elements<float>(decode(described, words), types::flt);
    };
    std::vector<float> const expected{1.5F, -2.0F};
    EXPECT_EQ(read({0x3FC0, 0, 0xC000, 0}, big, big), expected);
    EXPECT_EQ(read({0, 0x3FC0, 0, 0xC000}, big, little), expected);
    EXPECT_EQ(read({0xC03F, 0, 0x00C0, 0}, little, big), expected);
    EXPECT_EQ(read({0, 0xC03F, 0, 0x00C0}, little, little), expected);
}

TEST(decoding, an_array_of_dbl) {
    auto const described = array_of(value_type::dbl, 4, 2);
    EXPECT_EQ(elements<double>(decode(described, some_registers{0x3FF8, 0, 0, 0, 0, 0, 0, 0}),
                               types::dbl),
              (std::vector<double>{1.5, 0.0}));
}

TEST(decoding, an_array_of_one_is_an_array) {
    EXPECT_EQ(elements<unsigned short>(decode(array_of(value_type::u16, 1, 1), some_registers{7}),
                                       types::u16),
              std::vector<unsigned short>{7});
}

TEST(decoding, each_text_of_an_array_ends_by_itself) {
    auto described = array_of(value_type::string, 2, 3);
    some_registers const words{0x6162, 0x6300, 0x6465, 0x6667, 0x0068, 0x696A};
    auto const read = [&] {
        auto const texts = elements<utility::string>(decode(described, words), types::string);
        return std::vector<std::string>(texts.begin(), texts.end());
    };
    EXPECT_EQ(read(), (std::vector<std::string>{"abc", "defg", ""}));
    described.bytes = little;
    EXPECT_EQ(read(), (std::vector<std::string>{"ba", "edgf", "h"}));
}

using some_bits = std::vector<std::uint8_t>;

TEST(decoding, bits_one_and_many) {
    EXPECT_FALSE(
        payload<bool>(decode(array_of(types::boolean, 1, 0), some_bits{0}), types::boolean));
    EXPECT_TRUE(
        payload<bool>(decode(array_of(types::boolean, 1, 0), some_bits{1}), types::boolean));
    EXPECT_EQ(
        elements<bool>(decode(array_of(types::boolean, 1, 3), some_bits{1, 0, 1}), types::boolean),
        (std::vector<bool>{true, false, true}));
}

/// A registered structure: `numbers`, two u32 with the low word first, from the second register
/// on; `name`, a text of one register with its bytes swapped, in the first.
class decoding_structures : public ::testing::Test {
protected:
    decoding_structures() {
        shape_->name = "sample";
        member numbers{"numbers", 1, array_of(value_type::u32, 2, 2)};
        numbers.type.words = little;
        member name{"name", 0, {}};
        name.type.element = value_type::string;
        name.type.bytes = little;
        shape_->members = {numbers, name};
        shape_->width = 5;
        type_.element = value_type::object;
        type_.element_width = 5;
        type_.members = shape_;
    }

    std::shared_ptr<structure> shape_ = std::make_shared<structure>();
    variable_type type_;
    test_support::recording_host host_;
    some_registers const words_{0x6261, 0x3344, 0x1122, 9, 0};
};

TEST_F(decoding_structures, become_objects_whose_type_names_the_registered_id) {
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    io_value const value = decode(type_, words_);
    auto const* const object = value.get_if<tavi::ioapi::v2::io_object>();
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(value.data_type(), object->type());
    EXPECT_EQ(value.data_type().basic_type, types::object);
    EXPECT_FALSE(value.data_type().is_array());

    tavi::ioapi::v2::io_error error;
    auto const known = host_.lookup_structure_type(value.data_type(), error);
    ASSERT_TRUE(error.ok());
    EXPECT_EQ(known.name(), "sample");
    EXPECT_EQ(known.get_member("numbers"), io_data_type::array_of(types::u32));
    EXPECT_EQ(known.get_member("name"), io_data_type::scalar(types::string));
    EXPECT_EQ(std::distance(known.begin(), known.end()), 2);
}

TEST_F(decoding_structures, have_every_member_decoded_in_its_own_order) {
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    io_value const value = decode(type_, words_);
    auto const* const object = value.get_if<tavi::ioapi::v2::io_object>();
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(elements<unsigned int>(object->get("numbers"), types::u32),
              (std::vector<unsigned int>{0x11223344, 9}));
    EXPECT_EQ(payload<utility::string>(object->get("name"), types::string), "ab");
}

TEST_F(decoding_structures, take_arrays_of_one) {
    shape_->members = {{"only", 4, array_of(value_type::u16, 1, 1)}};
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    io_value const value = decode(type_, some_registers{0, 0, 0, 0, 7});
    EXPECT_EQ(elements<unsigned short>(value.get_if<tavi::ioapi::v2::io_object>()->get("only"),
                                       types::u16),
              std::vector<unsigned short>{7});
}

TEST_F(decoding_structures, know_no_other_keys) {
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    io_value const value = decode(type_, words_);
    tavi::ioapi::v2::io_error error;
    static_cast<void>(value.get_if<tavi::ioapi::v2::io_object>()->get("speed", error));
    EXPECT_EQ(error, tavi::ioapi::v2::io_error(tavi::ioapi::v2::io_errc::invalid_property));
}

TEST_F(decoding_structures, leave_the_pattern_without_values) {
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    static_cast<void>(decode(type_, words_));
    EXPECT_TRUE(shape_->blank->empty());
}

TEST_F(decoding_structures, that_are_registered_again_name_the_new_id) {
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    auto const first = decode(type_, words_).data_type().structure_id;
    register_structures({shape_}, tavi::ioapi::v2::backend_query(host_));
    auto const second = decode(type_, words_).data_type();
    EXPECT_NE(first, second.structure_id);
    tavi::ioapi::v2::io_error error;
    EXPECT_EQ(host_.lookup_structure_type(second, error).name(), "sample");
}

TEST_F(decoding_structures, are_refused_before_they_are_registered) {
    EXPECT_THROW(static_cast<void>(decode(type_, words_)), std::invalid_argument);
}

TEST(decoding, another_count_of_registers_or_bits_is_refused) {
    auto const refuses = [](unsigned int count, std::size_t given) {
        auto const described = array_of(value_type::flt, 2, count);
        EXPECT_THROW(static_cast<void>(decode(described, some_registers(given))),
                     std::invalid_argument)
            << count << ' ' << given;
    };
    for (std::size_t const given : {0U, 1U, 3U}) refuses(0, given);
    for (std::size_t const given : {0U, 2U, 5U, 7U}) refuses(3, given);
    EXPECT_THROW(static_cast<void>(decode(array_of(types::boolean, 1, 2), some_bits(3))),
                 std::invalid_argument);
}

TEST(decoding, registers_hold_no_booleans_and_bits_nothing_else) {
    EXPECT_THROW(static_cast<void>(decoded(value_type::boolean, {1})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(decode(array_of(value_type::u16, 1, 0), some_bits{1})),
                 std::invalid_argument);
}

} // namespace
