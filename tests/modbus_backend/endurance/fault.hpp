#pragma once

#include <array>
#include <cstddef>

namespace endurance {

/// What may go wrong with one exchange, or with the line for a while.
enum class fault {
    none,
    slow,        ///< an answer that takes long, and is in time
    trickle,     ///< byte by byte, and in time
    late,        ///< a good answer after the timeout
    mute,        ///< no answer at all
    stub,        ///< some bytes of the answer, and silence
    late_bytes,  ///< byte by byte, each in time, and the whole of it too late
    cut,         ///< some bytes of the answer, and the end of the connection
    reset,       ///< the same, and the end is a reset
    transaction, ///< the answer to another request
    busy,        ///< an exception that has nothing to do with what was asked for
    doubled,     ///< the answer twice
    hang_up,     ///< the connection ends between two polls
    refusing,    ///< the connection ends, and for a while there is no other to be had
    unplugged,   ///< for a while nothing comes back, not even to who wants to connect
};

inline constexpr std::size_t fault_count = 15;

/// How a fault is to be met.
struct fault_rule {
    char const* name;
    unsigned int share;      ///< how many of 10,000 polls have it
    int error;               ///< code of the variables of the exchange; 0 for a value
    bool ends_connection;    ///< so that what is asked for behind it has the same error
    bool takes_timeout;      ///< and no more
    bool is_of_last = false; ///< can hit no exchange but the last one of a poll
};

/// By the numbers of the faults. The errors are those of `modbus_errc`.
inline constexpr std::array<fault_rule, fault_count> fault_rules{{
    {"none", 9650, 0, false, false},
    {"slow", 70, 0, false, false},
    {"trickle", 30, 0, false, false},
    {"late", 30, 258, true, true},
    {"mute", 30, 258, true, true},
    {"stub", 30, 258, true, true},
    {"late_bytes", 10, 258, true, true},
    {"cut", 30, 257, true, false},
    {"reset", 30, 257, true, false},
    {"transaction", 20, 259, true, false},
    {"busy", 30, 6, false, false},
    {"doubled", 15, 0, false, false, true},
    {"hang_up", 15, 0, false, false},
    {"refusing", 5, 0, false, false},
    {"unplugged", 5, 0, false, false},
}};

[[nodiscard]] constexpr fault_rule const& rule_of(fault which) {
    return fault_rules[static_cast<std::size_t>(which)];
}

} // namespace endurance
