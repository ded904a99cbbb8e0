#pragma once

#include <signal.h>

#include <chrono>

namespace iohost {

/// While it exists, SIGINT and SIGTERM end nothing but the waiting here: they are blocked, in this
/// thread and in those that it starts from now on, and are had from a descriptor, so that none is
/// lost between two looks at it. Made before the backend is opened, whose threads inherit that.
class stop_signal {
public:
    using clock = std::chrono::steady_clock;

    /// \throws std::system_error  where there is no descriptor left
    stop_signal();
    stop_signal(stop_signal const&) = delete;
    stop_signal& operator=(stop_signal const&) = delete;
    ~stop_signal();

    /// Wait until `deadline`. \return whether one of the signals came instead, or before
    [[nodiscard]] bool came_before(clock::time_point deadline);

private:
    sigset_t awaited_{};
    sigset_t before_{};
    int descriptor_;
    bool came_ = false;
};

} // namespace iohost
