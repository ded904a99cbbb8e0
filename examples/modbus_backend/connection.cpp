#include "connection.hpp"

#include "error_category.hpp"
#include "setup_error.hpp"

#include <netdb.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/select.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace modbus_backend {

namespace {

using tavi::ioapi::v2::io_error;
using level = tavi::ioapi::v2::log_severity_level;

// The library numbers its own errors from a base on, the protocol's exceptions first, and among
// them one that the protocol does not know.
bool is_exception(int number) {
    return number > MODBUS_ENOBASE && number < MODBUS_ENOBASE + MODBUS_EXCEPTION_MAX &&
           number != MODBUS_ENOBASE + MODBUS_EXCEPTION_NOT_DEFINED;
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
        throw setup_error(modbus_errc::not_connected,
                          "cannot find the host '" + host + "': " + ::gai_strerror(error));
    }
    ::freeaddrinfo(addresses);
}

modbus_t* context_for(endpoint const& where) {
    require_address(where.host);
    modbus_t* const context =
        modbus_new_tcp_pi(where.host.c_str(), std::to_string(where.port).c_str());
    if (context == nullptr) {
        throw setup_error(modbus_errc::bad_setting,
                          "no connection can be made to '" + where.host + "'");
    }
    return context;
}

// Without a time of their own for single bytes, the library gives all of an answer this time.
void set_timeout(modbus_t* context, std::chrono::milliseconds timeout) {
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(timeout);
    std::chrono::microseconds const rest = timeout - seconds;
    modbus_set_response_timeout(context, static_cast<std::uint32_t>(seconds.count()),
                                static_cast<std::uint32_t>(rest.count()));
    modbus_set_byte_timeout(context, 0, 0);
}

// The library waits by `select`, whose sets end at a fixed descriptor: with one beyond, it would
// write over what stands behind its set. The next socket gets the lowest one that is free now.
bool can_wait_by_select() {
    int const next = ::eventfd(0, EFD_CLOEXEC);
    if (next < 0) return false;
    ::close(next);
    if (next < FD_SETSIZE) return true;
    errno = EMFILE;
    return false;
}

} // namespace

connection::connection(endpoint const& where, journal log)
    : name_(where.host + ":" + std::to_string(where.port)),
      log_(log),
      context_(context_for(where)),
      why_closed_(make_modbus_error(modbus_errc::not_connected)) {
    set_timeout(context_.get(), where.timeout);
    modbus_set_slave(context_.get(), where.unit);
}

connection::~connection() {
    if (!is_open_) return;
    modbus_close(context_.get());
    log_.write(level::information, "connection to ", name_, " closed");
}

bool connection::open() {
    bool const was_open = is_open_;
    if (was_open) end_stale();
    if (is_open_) return true;
    if (!can_wait_by_select() || modbus_connect(context_.get()) != 0) {
        if (!was_open) why_closed_ = make_modbus_error(modbus_errc::not_connected);
        return false;
    }
    is_open_ = true;
    log_.write(level::information, "connected to ", name_, was_lost_ ? " again" : "");
    return true;
}

// Between two exchanges there is nothing to hear but the end of the connection.
void connection::end_stale() {
    pollfd waiting{modbus_get_socket(context_.get()), POLLIN | POLLRDHUP, 0};
    if (::poll(&waiting, 1, 0) <= 0) return;
    bool const has_ended = (waiting.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
    lose(make_modbus_error(has_ended ? modbus_errc::connection_lost : modbus_errc::bad_answer));
}

void connection::lose(io_error const& reason) {
    why_closed_ = reason;
    modbus_close(context_.get());
    is_open_ = false;
    was_lost_ = true;
    log_.write(level::warning, "connection to ", name_, " is down: ", reason.message().str());
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

io_error connection::write_coils(unsigned int first, std::span<std::uint8_t const> bits) {
    if (!is_open_) return why_closed_;
    auto const address = static_cast<int>(first);
    int const answered = bits.size() == 1
                             ? modbus_write_bit(context_.get(), address, bits[0])
                             : modbus_write_bits(context_.get(), address,
                                                 static_cast<int>(bits.size()), bits.data());
    return outcome(answered, bits.size());
}

io_error connection::write_holdings(unsigned int first, std::span<std::uint16_t const> registers) {
    if (!is_open_) return why_closed_;
    auto const address = static_cast<int>(first);
    int const answered =
        registers.size() == 1
            ? modbus_write_register(context_.get(), address, registers[0])
            : modbus_write_registers(context_.get(), address, static_cast<int>(registers.size()),
                                     registers.data());
    return outcome(answered, registers.size());
}

io_error connection::outcome(int answered, std::size_t wanted) {
    int const number = errno;
    if (answered >= 0 && static_cast<std::size_t>(answered) == wanted) return {};
    io_error error = make_modbus_error(answered < 0 ? code_of(number) : modbus_errc::bad_answer);
    if (answered >= 0 || !is_exception(number)) lose(error);
    return error;
}

} // namespace modbus_backend
