#pragma once

#include <chrono>
#include <functional>

namespace iohost {

/// The time of one who polls until an end comes. A test brings one of its own.
class poll_clock {
public:
    using time_point = std::chrono::steady_clock::time_point;

    poll_clock(poll_clock const&) = delete;
    poll_clock& operator=(poll_clock const&) = delete;

    [[nodiscard]] virtual time_point now() const = 0;
    /// Wait until `deadline`. \return whether the end came instead, or before
    [[nodiscard]] virtual bool came_before(time_point deadline) = 0;

protected:
    poll_clock() noexcept = default;
    ~poll_clock() = default;
};

/// When to poll.
struct poll_plan {
    poll_clock::time_point begin; ///< the first poll
    poll_clock::time_point end;   ///< no poll begins then or later
    std::chrono::milliseconds interval;
};

/// Poll at the beginning and from then on at every interval. A poll that takes longer than that is
/// followed by the next at once, and what it has missed is not made up for.
/// \param poll  gives whether to go on
void poll_regularly(poll_clock& time, poll_plan const& plan, std::function<bool()> const& poll);

} // namespace iohost
