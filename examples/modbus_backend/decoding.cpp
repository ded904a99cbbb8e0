#include "decoding.hpp"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>

namespace modbus_backend {

namespace {

using tavi::ioapi::v2::io_value;
using registers_view = std::span<std::uint16_t const>;

static_assert(sizeof(float) == 4 && std::numeric_limits<float>::is_iec559);
static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);

unsigned int ordered(std::uint16_t word, part_order bytes) {
    unsigned int const wide = word;
    return bytes == part_order::big ? wide : (wide << 8 | wide >> 8) & 0xFFFFU;
}

unsigned long long pattern_of(variable const& described, registers_view registers) {
    unsigned long long pattern = 0;
    for (std::size_t i = 0; i < registers.size(); ++i) {
        std::size_t const place = described.words == part_order::big ? i : registers.size() - 1 - i;
        pattern = pattern << 16 | ordered(registers[place], described.bytes);
    }
    return pattern;
}

// The text ends at the first zero byte; one that fills its registers has none.
io_value text_of(variable const& described, registers_view registers) {
    std::string text;
    for (std::uint16_t const word : registers) {
        unsigned int const pair = ordered(word, described.bytes);
        text += static_cast<char>(pair >> 8);
        text += static_cast<char>(pair & 0xFFU);
    }
    return io_value(std::string_view(text).substr(0, text.find('\0')));
}

} // namespace

// 64-bit numbers are of the long long types, which are the ones that a value calls i64 and u64.
io_value decode(variable const& described, std::span<std::uint16_t const> registers) {
    if (registers.size() != described.width) throw std::invalid_argument("not the registers of it");
    if (described.type == value_type::string) return text_of(described, registers);

    unsigned long long const pattern = pattern_of(described, registers);
    auto const low_word = static_cast<unsigned short>(pattern);
    auto const low_half = static_cast<unsigned int>(pattern);
    switch (described.type) {
    case value_type::u16: return low_word;
    case value_type::i16: return static_cast<short>(low_word);
    case value_type::u32: return low_half;
    case value_type::i32: return static_cast<int>(low_half);
    case value_type::u64: return pattern;
    case value_type::i64: return static_cast<long long>(pattern);
    case value_type::flt: return std::bit_cast<float>(low_half);
    case value_type::dbl: return std::bit_cast<double>(pattern);
    default: throw std::invalid_argument("not a type of registers");
    }
}

} // namespace modbus_backend
