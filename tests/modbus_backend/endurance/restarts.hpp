#pragma once

#include <examples/endurance/findings.hpp>
#include <examples/endurance/growth.hpp>

#include <cstdint>

namespace endurance {

/// What came of a host whose controller was ended and started again and again.
struct restart_figures {
    unsigned long long restarts = 0;
    unsigned long long killed = 0; ///< of these, without a warning
    unsigned long long told = 0;   ///< writes that the host was told to have succeeded
    unsigned long long failed = 0; ///< writes that it was told to have failed
    unsigned long long lost = 0;   ///< told to have succeeded, and not in the controller's memory
    unsigned long long read = 0;   ///< values that were read back
    unsigned long long delivered = 0; ///< values that came by subscription
    growth held;
    findings wrong;
};

/// Let a host write, read back and subscribe, while the controller, whose panel lies in a file, is
/// ended by a signal in the midst of it, at a time and in a way that depend on the seed, and
/// started again.
/// \param module  the backend's module, with a slash
[[nodiscard]] restart_figures restart(unsigned int times, std::uint64_t seed, char const* module);

} // namespace endurance
