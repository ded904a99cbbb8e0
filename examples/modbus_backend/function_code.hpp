#pragma once

#include "variable.hpp"

#include <cstddef>

namespace modbus_backend {

/// What a request asks for, by its number in the protocol.
enum class function_code : unsigned int {
    read_coils = 1,
    read_discrete_inputs = 2,
    read_holding_registers = 3,
    read_input_registers = 4,
    write_single_coil = 5,
    write_single_register = 6,
    write_multiple_coils = 15,
    write_multiple_registers = 16,
};

/// The function that reads one kind.
[[nodiscard]] constexpr function_code read_function(register_kind kind) noexcept {
    switch (kind) {
    case register_kind::coil: return function_code::read_coils;
    case register_kind::discrete: return function_code::read_discrete_inputs;
    case register_kind::holding: return function_code::read_holding_registers;
    case register_kind::input: break;
    }
    return function_code::read_input_registers;
}

/// The functions that write `count` coils or holding registers.
[[nodiscard]] constexpr function_code write_coils_function(std::size_t count) noexcept {
    return count == 1 ? function_code::write_single_coil : function_code::write_multiple_coils;
}
[[nodiscard]] constexpr function_code write_holdings_function(std::size_t count) noexcept {
    return count == 1 ? function_code::write_single_register
                      : function_code::write_multiple_registers;
}

/// The function by which a variable of this kind is written; of one that can only be read, the one
/// that reads it. \param width  of the variable, in coils or registers
[[nodiscard]] constexpr function_code write_function(register_kind kind,
                                                     std::size_t width) noexcept {
    if (!can_be_written(kind)) return read_function(kind);
    return holds_bits(kind) ? write_coils_function(width) : write_holdings_function(width);
}

/// What a function does, as people call it.
[[nodiscard]] constexpr char const* name_of(function_code function) noexcept {
    switch (function) {
    case function_code::read_coils: return "read coils";
    case function_code::read_discrete_inputs: return "read discrete inputs";
    case function_code::read_holding_registers: return "read holding registers";
    case function_code::read_input_registers: return "read input registers";
    case function_code::write_single_coil: return "write single coil";
    case function_code::write_single_register: return "write single register";
    case function_code::write_multiple_coils: return "write multiple coils";
    case function_code::write_multiple_registers: return "write multiple registers";
    }
    return "";
}

} // namespace modbus_backend
