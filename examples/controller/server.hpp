#pragma once

#include "descriptor.hpp"
#include "memory.hpp"
#include "modbus_context.hpp"

#include <cstdint>
#include <span>
#include <vector>

namespace station {

/// Serves the station over Modbus TCP on the loopback interface, to several clients at a time.
class server {
public:
    /// Listens from now on. \param port  0 for any free one
    /// \param kept  with the panel of the station; its clock begins anew \throws std::runtime_error
    explicit server(std::uint16_t port, memory kept = memory());

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
    memory shown_;
};

} // namespace station
