#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

/// End the process with the sentence that does not hold: this is how a target tells of a finding.
inline void check(bool holds, char const* sentence) {
    if (holds) return;
    (void)std::fprintf(stderr, "fuzz: does not hold: %s\n", sentence);
    std::abort();
}

} // namespace fuzz
