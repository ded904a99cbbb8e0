#include "polling.hpp"

#include <algorithm>

namespace iohost {

void poll_regularly(poll_clock& time, poll_plan const& plan, std::function<bool()> const& poll) {
    auto next = plan.begin;
    while (!time.came_before(std::min(next, plan.end)) && time.now() < plan.end) {
        if (!poll()) return;
        next = std::max(next + plan.interval, time.now());
    }
}

} // namespace iohost
