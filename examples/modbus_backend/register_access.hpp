#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "variable.hpp"

#include <cstdint>
#include <span>

namespace modbus_backend {

/// The bits and registers of a controller, or in tests of something that plays one. Every operation
/// is one exchange and gives code 0, or what prevented it.
class register_access {
public:
    register_access(register_access const&) = delete;
    register_access& operator=(register_access const&) = delete;

    /// Fill `bits` with those of one kind from `first` on. \param bits  at least one, at most what
    /// a request may ask for, and so below
    [[nodiscard]] virtual tavi::ioapi::v2::io_error read_bits(register_kind kind,
                                                              unsigned int first,
                                                              std::span<std::uint8_t> bits) = 0;

    /// The same for registers.
    [[nodiscard]] virtual tavi::ioapi::v2::io_error read_registers(
        register_kind kind, unsigned int first, std::span<std::uint16_t> registers) = 0;

    /// Switch the coils from `first` on, each to 0 or 1. One coil goes by the function for a single
    /// one, several by that for several.
    [[nodiscard]] virtual tavi::ioapi::v2::io_error write_coils(
        unsigned int first, std::span<std::uint8_t const> bits) = 0;

    /// The same for holding registers.
    [[nodiscard]] virtual tavi::ioapi::v2::io_error write_holdings(
        unsigned int first, std::span<std::uint16_t const> registers) = 0;

protected:
    register_access() = default;
    ~register_access() = default;
};

} // namespace modbus_backend
