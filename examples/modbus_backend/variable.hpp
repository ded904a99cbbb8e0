#pragma once

#include <string>

namespace modbus_backend {

/// The four tables of a Modbus controller: two of bits, two of registers of 16 bits.
enum class register_kind { coil, discrete, holding, input };

[[nodiscard]] constexpr bool holds_bits(register_kind kind) noexcept {
    return kind == register_kind::coil || kind == register_kind::discrete;
}

enum class value_type { boolean, u16, i16, u32, i32, u64, i64, flt, dbl, string };

/// Which part comes first. On the wire a register has its high byte first, so `big` is the
/// default for bytes; values of several registers follow no standard, and `big` is the most usual.
enum class part_order { big, little };

/// A named place of a controller.
struct variable {
    std::string name;
    register_kind kind = register_kind::holding;
    unsigned int address = 0; ///< counted from 0, as on the wire
    value_type type = value_type::u16;
    unsigned int width = 1; ///< how many bits or registers it takes
    part_order bytes = part_order::big;
    part_order words = part_order::big;
};

/// One above the last address.
inline constexpr unsigned int address_end = 0x10000;

/// What one request may ask for at most.
[[nodiscard]] constexpr unsigned int most_in_a_request(register_kind kind) noexcept {
    return holds_bits(kind) ? 2000 : 125;
}

} // namespace modbus_backend
