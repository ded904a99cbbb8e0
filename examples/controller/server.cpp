#include "server.hpp"

#include "write_request.hpp"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace station {

namespace {

constexpr int backlog = 16;
constexpr std::size_t most_clients = 64;

// The library answers from tables of its own description; it only reads and writes what they
// point at, which is our image.
modbus_mapping_t tables_of(image& shown) {
    modbus_mapping_t tables{};
    tables.nb_bits = coil_count;
    tables.tab_bits = shown.coils.data();
    tables.nb_input_bits = discrete_count;
    tables.tab_input_bits = shown.discretes.data();
    tables.nb_input_registers = input_count;
    tables.tab_input_registers = shown.inputs.data();
    tables.nb_registers = holding_count;
    tables.tab_registers = shown.holdings.data();
    return tables;
}

auto panel_of(image& shown) {
    return std::span(shown.holdings).subspan<panel, panel_size>();
}

auto lamps_of(image& shown) {
    return std::span(shown.coils).subspan<lamps, lamp_count>();
}

/// All but the panel. That is written over with what it holds, for the process may be ended at any
/// moment.
void show_tick(image& shown, tick_count t) {
    image next = image_at(t);
    std::ranges::copy(panel_of(shown), panel_of(next).begin());
    std::ranges::copy(lamps_of(shown), lamps_of(next).begin());
    shown = next;
}

void wait_for(std::vector<pollfd>& waiting) {
    while (::poll(waiting.data(), waiting.size(), -1) < 0) {
        if (errno != EINTR) throw failure("cannot wait for clients");
    }
}

} // namespace

server::server(std::uint16_t port, memory kept)
    : context_(modbus_new_tcp("127.0.0.1", port)), shown_(std::move(kept)) {
    if (context_ == nullptr) throw failure("cannot serve");
    listener_ = descriptor(modbus_tcp_listen(context_.get(), backlog));
    if (listener_.get() < 0) throw failure("cannot listen on port " + std::to_string(port));
    // A refused function makes the library pause for this long, in which nobody else is served.
    modbus_set_response_timeout(context_.get(), 0, 1000);
}

std::uint16_t server::port() const {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    if (::getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw failure("cannot tell the port");
    }
    return ntohs(address.sin_port);
}

void server::run(descriptor const& end) {
    for (;;) {
        std::vector<pollfd> waiting{{end.get(), POLLIN, 0}, {listener_.get(), POLLIN, 0}};
        waiting.reserve(waiting.size() + clients_.size());
        for (auto const& client : clients_) waiting.push_back({client.get(), POLLIN, 0});
        wait_for(waiting);

        if (waiting[0].revents != 0) return;
        std::vector<descriptor> staying;
        for (std::size_t i = 0; i < clients_.size(); ++i) {
            if (waiting[i + 2].revents == 0 || serve(clients_[i])) {
                staying.push_back(std::move(clients_[i]));
            }
        }
        clients_ = std::move(staying);
        if (waiting[1].revents != 0) accept_client();
    }
}

void server::accept_client() {
    descriptor client(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    // One that has gone again, or one too many, is dropped: the others must not suffer.
    if (client.get() >= 0 && clients_.size() < most_clients) clients_.push_back(std::move(client));
}

// \return whether the client stays
bool server::serve(descriptor const& client) {
    modbus_set_socket(context_.get(), client.get());
    std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> query{};
    int const size = modbus_receive(context_.get(), query.data());
    if (size < 0) return false;
    answer(std::span(query).first(static_cast<std::size_t>(size)));
    return true;
}

void server::answer(std::span<std::uint8_t const> query) {
    image& shown = *shown_;
    show_tick(shown, tick_);
    modbus_mapping_t tables = tables_of(shown);
    auto const size = static_cast<int>(query.size());
    auto const header = static_cast<std::size_t>(modbus_get_header_length(context_.get()));
    if (may_be_answered(query.subspan(header))) {
        modbus_reply(context_.get(), query.data(), size, &tables);
        tick_ += shown.holdings[step]; // reads as 0, so what stands there has been written
    } else {
        modbus_reply_exception(context_.get(), query.data(), MODBUS_EXCEPTION_ILLEGAL_DATA_ADDRESS);
    }
}

} // namespace station
