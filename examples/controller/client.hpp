#pragma once

#include <cstdint>
#include <string>

namespace station {

/// Advance the clock of a running station. \param where  HOST:PORT, the host as an IPv4 address
/// \throws std::runtime_error
void advance(std::string const& where, std::uint16_t by);

} // namespace station
