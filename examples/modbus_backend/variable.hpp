#pragma once

#include "variable_type.hpp"

#include <string>

namespace modbus_backend {

/// The four tables of a Modbus controller: two of bits, two of registers of 16 bits.
enum class register_kind { coil, discrete, holding, input };

[[nodiscard]] constexpr bool holds_bits(register_kind kind) noexcept {
    return kind == register_kind::coil || kind == register_kind::discrete;
}

/// A named place of a controller.
struct variable {
    std::string name;
    std::string description; ///< for people
    register_kind kind = register_kind::holding;
    unsigned int address = 0; ///< counted from 0, as on the wire
    variable_type type;
};

/// One above the last address.
inline constexpr unsigned int address_end = 0x10000;

[[nodiscard]] constexpr bool can_be_written(register_kind kind) noexcept {
    return kind == register_kind::coil || kind == register_kind::holding;
}

/// What one request may ask for at most, and so the width of the widest variable.
[[nodiscard]] constexpr unsigned int most_in_a_request(register_kind kind) noexcept {
    return holds_bits(kind) ? 2000 : 125;
}

/// What one request may write at most.
[[nodiscard]] constexpr unsigned int most_in_a_write(register_kind kind) noexcept {
    return holds_bits(kind) ? 1968 : 123;
}

} // namespace modbus_backend
