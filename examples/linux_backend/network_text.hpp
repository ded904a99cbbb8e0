#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace linux_backend {

/// A line of `net/dev`: the name before the colon, and what stands behind it.
struct interface_line {
    std::string name;
    std::string counters;
};

/// Of `net/dev`: the interfaces in its order, each name once. \throws bad_text
[[nodiscard]] std::vector<interface_line> interface_lines(std::string_view text);

/// What went through an interface in one direction.
struct traffic {
    unsigned long long bytes = 0;
    unsigned long long packets = 0;
    unsigned long long errors = 0;
    unsigned long long dropped = 0;
};

struct interface_traffic {
    traffic receive;
    traffic transmit;
};

/// \throws bad_text
[[nodiscard]] interface_traffic traffic_in(std::string_view counters);

} // namespace linux_backend
