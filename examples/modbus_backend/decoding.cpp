#include "decoding.hpp"

#include "structure.hpp"

#include <bit>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::io_value;
using bits_view = std::span<std::uint8_t const>;
using registers_view = std::span<std::uint16_t const>;

static_assert(sizeof(float) == 4 && std::numeric_limits<float>::is_iec559);
static_assert(sizeof(double) == 8 && std::numeric_limits<double>::is_iec559);

unsigned int ordered(std::uint16_t word, part_order bytes) {
    unsigned int const wide = word;
    return bytes == part_order::big ? wide : (wide << 8 | wide >> 8) & 0xFFFFU;
}

unsigned long long pattern_of(variable_type const& type, registers_view registers) {
    unsigned long long pattern = 0;
    for (std::size_t i = 0; i < registers.size(); ++i) {
        std::size_t const place = type.words == part_order::big ? i : registers.size() - 1 - i;
        pattern = pattern << 16 | ordered(registers[place], type.bytes);
    }
    return pattern;
}

template <class Number>
Number number_of(variable_type const& type, registers_view registers) {
    unsigned long long const pattern = pattern_of(type, registers);
    if constexpr (std::is_same_v<Number, float>) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(pattern));
    } else if constexpr (std::is_same_v<Number, double>) {
        return std::bit_cast<double>(pattern);
    } else {
        return static_cast<Number>(pattern);
    }
}

// The text ends at the first zero byte; one that fills its registers has none.
v2::utility::string text_of(variable_type const& type, registers_view registers) {
    std::string text;
    for (std::uint16_t const word : registers) {
        unsigned int const pair = ordered(word, type.bytes);
        text += static_cast<char>(pair >> 8);
        text += static_cast<char>(pair & 0xFFU);
    }
    return {std::string_view(text).substr(0, text.find('\0'))};
}

bool bit_of(variable_type const&, bits_view bits) {
    return bits.front() != 0;
}

/// One element, or an array of as many as there are.
template <class Element, class Part>
io_value value_of(variable_type const& type,
                  std::span<Part const> parts,
                  Element (*decode_element)(variable_type const&, std::span<Part const>)) {
    if (type.count == 0) return decode_element(type, parts);
    v2::utility::array<Element> elements(type.count);
    for (auto& element : elements) {
        element = decode_element(type, parts.first(type.element_width));
        parts = parts.subspan(type.element_width);
    }
    return elements;
}

io_value object_of(structure const& described, registers_view registers) {
    if (!described.blank) throw std::invalid_argument("a structure that is not registered");
    v2::io_object filled = *described.blank;
    for (auto const& part : described.members) {
        filled.set(part.name, decode(part.type, registers.subspan(part.offset, part.type.width())));
    }
    return filled;
}

} // namespace

// 64-bit numbers are of the long long types, which are the ones that a value calls i64 and u64.
io_value decode(variable_type const& type, registers_view registers) {
    if (registers.size() != type.width()) throw std::invalid_argument("not the registers of it");
    switch (type.element) {
    case value_type::u16: return value_of(type, registers, number_of<unsigned short>);
    case value_type::i16: return value_of(type, registers, number_of<short>);
    case value_type::u32: return value_of(type, registers, number_of<unsigned int>);
    case value_type::i32: return value_of(type, registers, number_of<int>);
    case value_type::u64: return value_of(type, registers, number_of<unsigned long long>);
    case value_type::i64: return value_of(type, registers, number_of<long long>);
    case value_type::flt: return value_of(type, registers, number_of<float>);
    case value_type::dbl: return value_of(type, registers, number_of<double>);
    case value_type::string: return value_of(type, registers, text_of);
    case value_type::object: return object_of(*type.members, registers);
    default: throw std::invalid_argument("not a type of registers");
    }
}

io_value decode(variable_type const& type, bits_view bits) {
    if (bits.size() != type.width()) throw std::invalid_argument("not the bits of it");
    if (type.element != value_type::boolean) throw std::invalid_argument("not a type of bits");
    return value_of(type, bits, bit_of);
}

} // namespace modbus_backend
