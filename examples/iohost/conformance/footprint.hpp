#pragma once

#include <cstddef>

namespace iohost::conformance {

/// What this process holds at a time.
struct footprint {
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t heap = 0; ///< bytes that are allocated and not freed
};

/// \return what is held now. Threads and descriptors that are on their way out are given up to half
/// a second to go, as long as there are more than in `expected`.
[[nodiscard]] footprint measured(footprint const& expected);

} // namespace iohost::conformance
