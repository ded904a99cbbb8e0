#pragma once

#include "fault.hpp"

#include <examples/endurance/findings.hpp>
#include <examples/endurance/growth.hpp>

#include <array>
#include <chrono>
#include <cstdint>

namespace endurance {

/// What came of a host that watched a controller in simulated time.
struct day_figures {
    std::chrono::seconds span{0};
    unsigned long long polls = 0;
    std::array<unsigned long long, fault_count> met{}; ///< polls with each fault
    unsigned long long requests = 0;                   ///< that the controller has heard
    unsigned long long requests_due = 0;               ///< that the intervals and faults demand
    unsigned long long connections = 0;                ///< that the controller has taken
    unsigned long long connections_due = 0;            ///< that the faults demand
    unsigned long long changes = 0;                    ///< of all quantities
    unsigned long long delivered = 0;                  ///< values
    unsigned long long brief = 0;  ///< changes that did not stand long enough to be seen
    unsigned long long missed = 0; ///< changes that stood long enough, and were not delivered
    unsigned long long faulty = 0; ///< errors that were delivered
    growth held;
    findings wrong;
};

/// Let a host poll once a second for so long, five minutes at least. First each fault has its turn;
/// from then on they come by chance, which depends on the seed, as do the changes of the
/// controller's quantities. A fault that does not occur, or without what it is known by, is wrong.
[[nodiscard]] day_figures watch_for(std::chrono::seconds span, std::uint64_t seed);

} // namespace endurance
