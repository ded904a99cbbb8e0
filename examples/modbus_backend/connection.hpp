#pragma once

#include "register_source.hpp"

#include <modbus/modbus.h>

#include <chrono>
#include <memory>
#include <string>

namespace modbus_backend {

/// A connection over Modbus TCP, which can be opened again after it was lost.
class connection final : public register_source {
public:
    /// Not connected yet. \param timeout  for connecting and for each answer
    /// \throws setup_error  for a host that has no address
    connection(std::string const& host, int port, std::chrono::milliseconds timeout);
    ~connection();

    /// Connect, unless it is connected. \return whether it is now; if not, `errno` says why
    bool open();

    [[nodiscard]] tavi::ioapi::v2::io_error read_bits(register_kind kind,
                                                      unsigned int first,
                                                      std::span<std::uint8_t> bits) override;
    [[nodiscard]] tavi::ioapi::v2::io_error read_registers(
        register_kind kind, unsigned int first, std::span<std::uint16_t> registers) override;

private:
    struct free_context {
        void operator()(modbus_t* context) const noexcept { modbus_free(context); }
    };

    void close() noexcept;
    tavi::ioapi::v2::io_error outcome(int answered, std::size_t wanted);

    std::unique_ptr<modbus_t, free_context> context_;
    bool is_open_ = false;
    tavi::ioapi::v2::io_error why_closed_;
};

} // namespace modbus_backend
