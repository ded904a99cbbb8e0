#include "connection.hpp"

#include "error_category.hpp"
#include "setup_error.hpp"

#include <netdb.h>

#include <cerrno>
#include <cstdint>

namespace modbus_backend {

namespace {

using tavi::ioapi::v2::io_error;

// The library numbers its own errors from a base on, the protocol's exceptions first.
bool is_exception(int number) {
    return number > MODBUS_ENOBASE && number < MODBUS_ENOBASE + MODBUS_EXCEPTION_MAX;
}

modbus_errc code_of(int number) {
    if (is_exception(number)) return static_cast<modbus_errc>(number - MODBUS_ENOBASE);
    if (number >= MODBUS_ENOBASE) return modbus_errc::bad_answer;
    return number == ETIMEDOUT ? modbus_errc::timeout : modbus_errc::connection_lost;
}

// The library takes a name that it cannot resolve for a host that refuses connections.
void require_address(std::string const& host) {
    addrinfo* addresses = nullptr;
    int const error = ::getaddrinfo(host.c_str(), nullptr, nullptr, &addresses);
    if (error != 0) {
        throw setup_error(modbus_errc::bad_setting,
                          "cannot find the host '" + host + "': " + ::gai_strerror(error));
    }
    ::freeaddrinfo(addresses);
}

modbus_t* context_for(std::string const& host, int port) {
    require_address(host);
    modbus_t* const context = modbus_new_tcp_pi(host.c_str(), std::to_string(port).c_str());
    if (context == nullptr) {
        throw setup_error(modbus_errc::bad_setting, "no connection can be made to '" + host + "'");
    }
    return context;
}

} // namespace

connection::connection(std::string const& host, int port, std::chrono::milliseconds timeout)
    : context_(context_for(host, port)),
      why_closed_(make_modbus_error(modbus_errc::not_connected)) {
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(timeout);
    std::chrono::microseconds const rest = timeout - seconds;
    modbus_set_response_timeout(context_.get(), static_cast<std::uint32_t>(seconds.count()),
                                static_cast<std::uint32_t>(rest.count()));
}

connection::~connection() {
    close();
}

bool connection::open() {
    if (is_open_) return true;
    is_open_ = modbus_connect(context_.get()) == 0;
    if (!is_open_) why_closed_ = make_modbus_error(modbus_errc::not_connected);
    return is_open_;
}

void connection::close() noexcept {
    if (is_open_) modbus_close(context_.get());
    is_open_ = false;
}

io_error connection::read_bits(register_kind kind,
                               unsigned int first,
                               std::span<std::uint8_t> bits) {
    if (!is_open_) return why_closed_;
    auto* const read = kind == register_kind::coil ? modbus_read_bits : modbus_read_input_bits;
    return outcome(
        read(context_.get(), static_cast<int>(first), static_cast<int>(bits.size()), bits.data()),
        bits.size());
}

io_error connection::read_registers(register_kind kind,
                                    unsigned int first,
                                    std::span<std::uint16_t> registers) {
    if (!is_open_) return why_closed_;
    auto* const read =
        kind == register_kind::holding ? modbus_read_registers : modbus_read_input_registers;
    return outcome(read(context_.get(), static_cast<int>(first), static_cast<int>(registers.size()),
                        registers.data()),
                   registers.size());
}

// An exception is an answer. After anything else nobody knows what still comes on this connection,
// so it ends here, and what is asked of it until it is opened again gets the same error.
io_error connection::outcome(int answered, std::size_t wanted) {
    int const number = errno;
    if (answered >= 0 && static_cast<std::size_t>(answered) == wanted) return {};
    io_error error = make_modbus_error(answered < 0 ? code_of(number) : modbus_errc::bad_answer);
    if (answered >= 0 || !is_exception(number)) {
        why_closed_ = error;
        close();
    }
    return error;
}

} // namespace modbus_backend
