#pragma once

#include "child_process.hpp"

#include <controller/modbus_context.hpp>

#include <cstdint>
#include <memory>
#include <string>

namespace test_support {

/// The controller of the examples as a process of its own.
class running_station {
public:
    /// Returns once it accepts connections. \param port  0 for any free one
    /// \param memory  file for its panel; empty for none
    explicit running_station(int port = 0, std::string const& memory = {});

    [[nodiscard]] int port() const noexcept { return port_; }
    /// End it by a signal, and give what it leaves.
    finished_process stop(int signal);
    /// The two halves of that, of which the first one may be called from any thread.
    /// \{
    void send(int signal) const { process_.send(signal); }
    finished_process finish() { return process_.finish(); }
    /// \}

private:
    child_process process_;
    int port_;
};

/// A connection by the protocol library alone.
class modbus_client {
public:
    explicit modbus_client(int port);
    modbus_client(modbus_client const&) = delete;
    modbus_client& operator=(modbus_client const&) = delete;
    ~modbus_client();

    [[nodiscard]] modbus_t* get() const noexcept { return context_.get(); }

private:
    station::modbus_context context_;
};

} // namespace test_support
