#pragma once

#include <tavi/ioapi/v2/io_timestamp.hpp>

#include <backend_support/clock.hpp>
#include <iohost/polling.hpp>

#include <algorithm>
#include <chrono>

namespace endurance {

/// Time that passes only where somebody waits.
class simulated_time {
public:
    using duration = std::chrono::microseconds;

    /// Since the beginning.
    [[nodiscard]] duration passed() const noexcept { return passed_; }
    /// What is past already stays so.
    void advance_to(duration moment) noexcept { passed_ = std::max(passed_, moment); }

private:
    duration passed_{0};
};

/// That of a backend, which begins at some time of the calendar.
class backend_time final : public backend_support::clock {
public:
    explicit backend_time(simulated_time const& time) noexcept : time_(time) {}

    [[nodiscard]] static tavi::ioapi::v2::io_timestamp at(
        simulated_time::duration moment) noexcept {
        using std::chrono::sys_days;
        return tavi::ioapi::v2::io_timestamp(sys_days(std::chrono::year(2024) / 2 / 28) + moment);
    }
    [[nodiscard]] tavi::ioapi::v2::io_timestamp now() const noexcept override {
        return at(time_.passed());
    }

private:
    simulated_time const& time_;
};

/// That of a host, who is never asked to end before.
class host_time final : public iohost::poll_clock {
public:
    explicit host_time(simulated_time& time) noexcept : time_(time) {}

    [[nodiscard]] time_point now() const override { return time_point(time_.passed()); }
    [[nodiscard]] bool came_before(time_point deadline) override {
        auto const moment = deadline.time_since_epoch();
        time_.advance_to(std::chrono::duration_cast<simulated_time::duration>(moment));
        return false;
    }

private:
    simulated_time& time_;
};

} // namespace endurance
