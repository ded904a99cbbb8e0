#pragma once

#include "descriptor.hpp"
#include "modbus_context.hpp"
#include "station.hpp"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace station {

/// Serves the station over Modbus TCP on the loopback interface, to several clients at a time.
class server {
public:
    /// Listens from now on. \param port  0 for any free one \throws std::runtime_error
    explicit server(std::uint16_t port);

    /// The port that it listens on.
    [[nodiscard]] std::uint16_t port() const;

    /// Answer until `end` becomes readable. \throws std::runtime_error
    void run(descriptor const& end);

private:
    void accept_client();
    bool serve(descriptor const& client);
    void answer(std::span<std::uint8_t const> query);

    modbus_context context_;
    descriptor listener_;
    std::vector<descriptor> clients_;
    tick_count tick_ = 0;
    std::array<std::uint16_t, panel_size> panel_{};
    std::array<std::uint8_t, lamp_count> lamps_{};
};

} // namespace station
