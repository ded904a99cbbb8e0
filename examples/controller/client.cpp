#include "client.hpp"

#include "modbus_context.hpp"
#include "station.hpp"

#include <charconv>
#include <string_view>

namespace station {

namespace {

std::uint16_t port_in(std::string const& where, std::string::size_type colon) {
    std::string_view const text = std::string_view(where).substr(colon + 1);
    std::uint16_t port = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port == 0) {
        throw std::runtime_error("no port in '" + where + "'");
    }
    return port;
}

struct connection {
    explicit connection(modbus_t* context) : context_(context) {
        if (modbus_connect(context_) != 0) throw failure("cannot connect");
    }
    connection(connection const&) = delete;
    connection& operator=(connection const&) = delete;
    ~connection() { modbus_close(context_); }

private:
    modbus_t* context_;
};

} // namespace

void advance(std::string const& where, std::uint16_t by) {
    auto const colon = where.rfind(':');
    if (colon == std::string::npos || colon == 0)
        throw std::runtime_error("'" + where + "' is not HOST:PORT");
    std::string const host = where.substr(0, colon);
    modbus_context const context(modbus_new_tcp(host.c_str(), port_in(where, colon)));
    if (context == nullptr) throw failure("cannot make a client");
    connection const open(context.get());
    if (modbus_write_register(context.get(), static_cast<int>(step), by) != 1) {
        throw failure("cannot step");
    }
}

} // namespace station
