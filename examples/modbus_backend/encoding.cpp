#include "encoding.hpp"

#include "data_type.hpp"
#include "error_category.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <vector>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::io_error;
using v2::io_value;
using bits_span = std::span<std::uint8_t>;
using registers_span = std::span<std::uint16_t>;

std::uint16_t ordered(unsigned int word, part_order bytes) {
    unsigned int const shown = bytes == part_order::big ? word : word << 8 | (word & 0xFFFFU) >> 8;
    return static_cast<std::uint16_t>(shown);
}

template <class Number>
unsigned long long pattern_of(Number number) {
    if constexpr (std::is_same_v<Number, float>) {
        return std::bit_cast<std::uint32_t>(number);
    } else if constexpr (std::is_same_v<Number, double>) {
        return std::bit_cast<std::uint64_t>(number);
    } else {
        return static_cast<unsigned long long>(number);
    }
}

template <class Number>
io_error store_number(variable_type const& type, Number const& number, registers_span registers) {
    unsigned long long pattern = pattern_of(number);
    for (std::size_t i = 0; i < registers.size(); ++i) {
        std::size_t const place = type.words == part_order::big ? registers.size() - 1 - i : i;
        registers[place] = ordered(static_cast<unsigned int>(pattern & 0xFFFFU), type.bytes);
        pattern >>= 16;
    }
    return {};
}

// The rest is filled with zeros; a text that fills its registers needs none.
io_error store_text(variable_type const& type,
                    v2::utility::string const& given,
                    registers_span registers) {
    std::string_view const text = given;
    bool const fits = text.size() <= 2 * registers.size();
    if (!fits || text.find('\0') != std::string_view::npos) {
        return make_modbus_error(modbus_errc::unfit_text);
    }
    auto const byte = [text](std::size_t place) -> unsigned int {
        return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
    };
    for (std::size_t i = 0; i < registers.size(); ++i) {
        registers[i] = ordered(byte(2 * i) << 8 | byte(2 * i + 1), type.bytes);
    }
    return {};
}

io_error store_bit(variable_type const&, bool const& bit, bits_span bits) {
    bits.front() = bit ? 1 : 0;
    return {};
}

/// One element, or an array of as many as the type states.
template <class Element, class Part>
io_error store(variable_type const& type,
               io_value const& value,
               std::span<Part> parts,
               io_error (*store_element)(variable_type const&, Element const&, std::span<Part>)) {
    io_error error;
    if (type.count == 0) {
        Element const element = value.get_exact<Element>(error);
        return error ? error : store_element(type, element, parts);
    }
    auto const elements = value.get_exact<v2::utility::array<Element>>(error);
    if (error) return error;
    if (elements.size() != type.count) return make_modbus_error(modbus_errc::wrong_count);
    auto const list = elements.to_vector();
    for (std::size_t i = 0; i < list.size() && error.ok(); ++i) {
        error =
            store_element(type, list[i], parts.subspan(i * type.element_width, type.element_width));
    }
    return error;
}

bool is_misleading_text(value_type element, v2::utility::string const& text) {
    if (element == value_type::string) return false;
    return text.empty() || (element == value_type::boolean && text != "0" && text != "1");
}

// What converts all the same: any text, "off" as well, any array and any object to a truth value,
// and an empty text to the number 0. Machines are not moved by that.
bool misleads(variable_type const& type, io_value const& value) {
    if (value.data_type().basic_type == value_type::object) return true;
    if (type.count == 0 && value.is_array()) return true;
    if (auto const* const text = value.get_if<v2::utility::string>()) {
        return is_misleading_text(type.element, *text);
    }
    if (auto const* const texts = value.get_if<v2::utility::array<v2::utility::string>>()) {
        return std::any_of(texts->begin(), texts->end(), [&](auto const& text) {
            return is_misleading_text(type.element, text);
        });
    }
    auto const* const elements = value.get_if<v2::utility::array<io_value>>();
    if (elements == nullptr) return false;
    auto element = type;
    element.count = 0;
    return std::any_of(elements->begin(), elements->end(),
                       [&](auto const& each) { return misleads(element, each); });
}

// The empty value converts to a default, which nobody has asked to be written.
io_error why_unconvertible(variable_type const& type, io_value const& value) {
    auto const wanted = data_type_of(type);
    if (misleads(type, value)) return v2::io_errc::incompatible_type;
    if (value.converts_to(wanted)) return {};
    io_error error;
    static_cast<void>(value.to_variant(wanted, error));
    return error ? error : io_error(v2::io_errc::incompatible_type);
}

bool is_not_finite(double number) {
    return !std::isfinite(number);
}

/// What is no number or no finite one is the same in 32 bits, and yet no conversion of the library:
/// that takes it for a number beyond the range. As a text it is written, and so it is here.
io_value narrowed(variable_type const& type, io_value const& value, io_error& error) {
    if (type.element != value_type::flt) return value;
    if (auto const* const number = value.get_if<double>()) {
        return is_not_finite(*number) ? io_value(static_cast<float>(*number)) : value;
    }
    auto const* const numbers = value.get_if<v2::utility::array<double>>();
    if (numbers == nullptr || std::none_of(numbers->begin(), numbers->end(), is_not_finite)) {
        return value;
    }
    std::vector<float> narrow;
    for (double const number : *numbers) {
        narrow.push_back(is_not_finite(number) ? static_cast<float>(number)
                                               : io_value(number).as<float>(error));
        if (error) return value;
    }
    return v2::utility::array<float>(narrow);
}

} // namespace

io_error encode(variable_type const& type, io_value const& given, registers_span registers) {
    if (registers.size() != type.width()) throw std::invalid_argument("not the registers of it");
    io_error unfit;
    auto const value = narrowed(type, given, unfit);
    if (unfit) return unfit;
    if (auto error = why_unconvertible(type, value)) return error;
    switch (type.element) {
    case value_type::u16: return store(type, value, registers, store_number<unsigned short>);
    case value_type::i16: return store(type, value, registers, store_number<short>);
    case value_type::u32: return store(type, value, registers, store_number<unsigned int>);
    case value_type::i32: return store(type, value, registers, store_number<int>);
    case value_type::u64: return store(type, value, registers, store_number<unsigned long long>);
    case value_type::i64: return store(type, value, registers, store_number<long long>);
    case value_type::flt: return store(type, value, registers, store_number<float>);
    case value_type::dbl: return store(type, value, registers, store_number<double>);
    case value_type::string: return store(type, value, registers, store_text);
    default: throw std::invalid_argument("not a type of registers");
    }
}

io_error encode(variable_type const& type, io_value const& value, bits_span bits) {
    if (bits.size() != type.width()) throw std::invalid_argument("not the bits of it");
    if (type.element != value_type::boolean) throw std::invalid_argument("not a type of bits");
    if (auto error = why_unconvertible(type, value)) return error;
    return store(type, value, bits, store_bit);
}

} // namespace modbus_backend
