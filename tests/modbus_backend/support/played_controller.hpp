#pragma once

#include <modbus_backend/error_category.hpp>
#include <modbus_backend/register_access.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace test_support {

/// Coils and registers in memory, and a list of what was asked of them, as `read 20+8` or
/// `write 21+2`.
class played_controller final : public modbus_backend::register_access {
public:
    using io_error = tavi::ioapi::v2::io_error;
    using register_kind = modbus_backend::register_kind;

    std::array<std::uint8_t, 3000> bits{};
    std::array<std::uint16_t, 300> registers{};
    std::vector<std::string> asked;
    io_error read_error{};
    io_error write_error{};
    int good_writes = 0; ///< how many come before the error

    io_error read_bits(register_kind, unsigned int first, std::span<std::uint8_t> read) override {
        note("read", first, read.size());
        std::copy_n(bits.begin() + first, read.size(), read.begin());
        return read_error;
    }
    io_error read_registers(register_kind,
                            unsigned int first,
                            std::span<std::uint16_t> read) override {
        note("read", first, read.size());
        std::copy_n(registers.begin() + first, read.size(), read.begin());
        return read_error;
    }
    io_error write_coils(unsigned int first, std::span<std::uint8_t const> given) override {
        note("write", first, given.size());
        if (good_writes-- <= 0 && write_error) return write_error;
        std::copy(given.begin(), given.end(), bits.begin() + first);
        return {};
    }
    io_error write_holdings(unsigned int first, std::span<std::uint16_t const> given) override {
        note("write", first, given.size());
        if (good_writes-- <= 0 && write_error) return write_error;
        std::copy(given.begin(), given.end(), registers.begin() + first);
        return {};
    }

private:
    void note(char const* what, unsigned int first, std::size_t count) {
        asked.push_back(what + (" " + std::to_string(first)) + "+" + std::to_string(count));
    }
};

} // namespace test_support
