#pragma once

#include <controller/descriptor.hpp>

#include <cstdint>

namespace endurance {

/// \return the address of a port of the loopback interface, to which a socket is bound that does
/// not listen. While it lives, connections to that port are refused where nobody else listens
/// there, and the system gives it to nobody who asks for any.
[[nodiscard]] station::descriptor reserved_port(std::uint16_t& port);

/// \return a socket that listens on a reserved port \throws std::runtime_error
[[nodiscard]] station::descriptor listening_on(std::uint16_t port, int backlog);

/// \return one whose connection to that port has begun
[[nodiscard]] station::descriptor connecting_to(std::uint16_t port);

/// The ports of both ends of a connection; 0 where there is none.
/// \{
[[nodiscard]] std::uint16_t port_here(int socket);
[[nodiscard]] std::uint16_t port_there(int socket);
/// \}

/// Wait, but no longer than machines are ever busy. \param events  as of `poll`
/// \return whether one of them came
[[nodiscard]] bool comes_to_pass(int socket, short events);

/// Let the end of a connection be a reset.
void reset_at_end(int socket);

} // namespace endurance
