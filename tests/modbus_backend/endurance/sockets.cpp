#include "sockets.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace endurance {

namespace {

constexpr int longest_wait_ms = 30'000;

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

void require(bool succeeded, char const* what) {
    if (!succeeded) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

sockaddr const* generic(sockaddr_in const& address) {
    return reinterpret_cast<sockaddr const*>(&address);
}

station::descriptor bound_to(std::uint16_t port) {
    station::descriptor made(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    require(made.get() >= 0, "socket");
    // Two may share a port as long as not both of them listen.
    int const on = 1;
    ::setsockopt(made.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    auto const address = loopback(port);
    require(::bind(made.get(), generic(address), sizeof(address)) == 0, "bind");
    return made;
}

using name_of_socket = decltype(&::getsockname);

std::uint16_t port_by(name_of_socket name, int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    bool const has_name = name(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    return has_name && address.sin_family == AF_INET ? ntohs(address.sin_port) : std::uint16_t{0};
}

} // namespace

station::descriptor reserved_port(std::uint16_t& port) {
    auto reserved = bound_to(0);
    port = port_here(reserved.get());
    return reserved;
}

station::descriptor listening_on(std::uint16_t port, int backlog) {
    auto listener = bound_to(port);
    require(::listen(listener.get(), backlog) == 0, "listen");
    return listener;
}

station::descriptor connecting_to(std::uint16_t port) {
    station::descriptor made(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    auto const address = loopback(port);
    bool const begun = ::connect(made.get(), generic(address), sizeof(address)) == 0;
    require(begun || errno == EINPROGRESS, "connect");
    return made;
}

std::uint16_t port_here(int socket) {
    return port_by(&::getsockname, socket);
}

std::uint16_t port_there(int socket) {
    return port_by(&::getpeername, socket);
}

bool comes_to_pass(int socket, short events) {
    pollfd waiting{socket, events, 0};
    int found = 0;
    do {
        found = ::poll(&waiting, 1, longest_wait_ms);
    } while (found < 0 && errno == EINTR);
    return found > 0;
}

void reset_at_end(int socket) {
    linger const at_once{1, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &at_once, sizeof(at_once));
}

} // namespace endurance
