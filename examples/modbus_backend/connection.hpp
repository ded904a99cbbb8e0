#pragma once

#include "journal.hpp"
#include "register_access.hpp"

#include <modbus/modbus.h>

#include <chrono>
#include <memory>
#include <string>

namespace modbus_backend {

/// Where a controller is found, and how long it is waited for.
struct endpoint {
    std::string host;
    int port = 502;
    int unit = 255; ///< which device behind a gateway; 255 for the one that answers itself
    /// For each address that the host has to be connected to, and for each whole answer. How long
    /// a name may take to be found is the system's affair.
    std::chrono::milliseconds timeout{2000};
};

/// A connection over Modbus TCP, which can be opened again after it was lost. Its log says when it
/// is opened, lost, opened again and closed.
///
/// It ends with the first exchange that the controller does not answer well and in time, for then
/// nobody knows what still comes on it. Until it is opened again all exchanges have the error that
/// ended it, without waiting. An answer that is an exception is an answer.
class connection final : public register_access {
public:
    /// Not connected yet. \throws setup_error  for a host that has no address
    connection(endpoint const& where, journal log);
    ~connection();

    /// Connect, unless it is connected, also where the controller has closed the connection since.
    /// A process with so many descriptors open that the next one is 1024 or more is refused by the
    /// library's way of waiting, with `EMFILE`.
    /// \return whether it is connected now; if not, `errno` says why
    bool open();

    [[nodiscard]] tavi::ioapi::v2::io_error read_bits(register_kind kind,
                                                      unsigned int first,
                                                      std::span<std::uint8_t> bits) override;
    [[nodiscard]] tavi::ioapi::v2::io_error read_registers(
        register_kind kind, unsigned int first, std::span<std::uint16_t> registers) override;
    [[nodiscard]] tavi::ioapi::v2::io_error write_coils(
        unsigned int first, std::span<std::uint8_t const> bits) override;
    [[nodiscard]] tavi::ioapi::v2::io_error write_holdings(
        unsigned int first, std::span<std::uint16_t const> registers) override;

private:
    struct free_context {
        void operator()(modbus_t* context) const noexcept { modbus_free(context); }
    };

    void end_stale();
    void lose(tavi::ioapi::v2::io_error const& reason);
    tavi::ioapi::v2::io_error outcome(int answered, std::size_t wanted);

    std::string name_; ///< of the controller, for people
    journal log_;
    std::unique_ptr<modbus_t, free_context> context_;
    bool is_open_ = false;
    bool was_lost_ = false;
    tavi::ioapi::v2::io_error why_closed_;
};

} // namespace modbus_backend
