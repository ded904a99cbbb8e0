#pragma once

#include "descriptor.hpp"

namespace station {

/// From now on SIGTERM and SIGINT do not end the process but make the descriptor readable, and the
/// death of the parent sends SIGTERM. \throws std::runtime_error
[[nodiscard]] descriptor end_of_life();

} // namespace station
