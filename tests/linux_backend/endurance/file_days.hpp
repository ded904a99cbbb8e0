#pragma once

#include "mishap.hpp"

#include <examples/endurance/findings.hpp>
#include <examples/endurance/growth.hpp>

#include <array>
#include <chrono>
#include <cstdint>

namespace endurance {

/// What came of a host that watched a made-up machine in simulated time.
struct file_figures {
    std::chrono::seconds span{0};
    unsigned long long polls = 0;
    std::array<unsigned long long, mishap_count> met{}; ///< how often each began
    unsigned long long changes = 0;                     ///< of what the files are to show
    unsigned long long delivered = 0;                   ///< values by subscription
    unsigned long long read = 0;                        ///< values that were read beside that
    unsigned long long brief = 0;                       ///< changes that no poll could have seen
    unsigned long long missed = 0; ///< changes that a poll could have seen, and not delivered
    unsigned long long faulty = 0; ///< errors that were delivered
    growth held;
    findings wrong;
};

/// Let a host poll the Linux backend once a second for so long, ten minutes at least, and read,
/// browse, write and subscribe anew now and then. First each mishap has its turn with each file;
/// from then on they come by chance, which depends on the seed, as do the changes.
[[nodiscard]] file_figures watch_files_for(std::chrono::seconds span, std::uint64_t seed);

} // namespace endurance
