#include "harness.hpp"

#include <stdexcept>

/// \file
/// Three jobs of which two must come out as errors of their benchmarks.

namespace bench {

void add_operations() {
    auto const nothing = [] {};
    add("check", "right", 1, [=] { return job{nothing, [] { return true; }}; });
    add("check", "wrong", 1, [=] { return job{nothing, [] { return false; }}; });
    add("check", "raising", 1, [=] {
        return job{nothing, []() -> bool { throw std::runtime_error("out of order"); }};
    });
}

} // namespace bench
