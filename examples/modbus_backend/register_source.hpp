#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "variable.hpp"

#include <cstdint>
#include <span>

namespace modbus_backend {

/// Where bits and registers come from: a controller, or in tests something that plays one.
class register_source {
public:
    register_source(register_source const&) = delete;
    register_source& operator=(register_source const&) = delete;

    /// Fill `bits` with those of one kind from `first` on. \return code 0, or what prevented it
    [[nodiscard]] virtual tavi::ioapi::v2::io_error read_bits(register_kind kind,
                                                              unsigned int first,
                                                              std::span<std::uint8_t> bits) = 0;

    /// The same for registers.
    [[nodiscard]] virtual tavi::ioapi::v2::io_error read_registers(
        register_kind kind, unsigned int first, std::span<std::uint16_t> registers) = 0;

protected:
    register_source() = default;
    ~register_source() = default;
};

} // namespace modbus_backend
