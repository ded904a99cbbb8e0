#pragma once

#include "detail/data_model.hpp"

#include <chrono>
#include <iosfwd>
#include <ratio>
#include <type_traits>

namespace tavi::ioapi::v2 {

/// A point in time as a signed count of ticks of 100 nanoseconds since 1970-01-01 00:00:00 UTC,
/// without leap seconds. 0 means that no timestamp was given. Passed by value.
class io_timestamp {
public:
    /// Ticks as a standard duration.
    using duration = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;
    using time_point = std::chrono::time_point<std::chrono::system_clock, duration>;

    /// No timestamp.
    constexpr io_timestamp() noexcept = default;

    /// \param ticks  of 100 nanoseconds since the epoch; negative before it
    explicit constexpr io_timestamp(long long ticks) noexcept : ticks_(ticks) {}

    /// A time of the system clock, truncated towards the epoch to whole ticks.
    template <class Duration>
    explicit constexpr io_timestamp(
        std::chrono::time_point<std::chrono::system_clock, Duration> time) noexcept
        : ticks_(std::chrono::duration_cast<duration>(time.time_since_epoch()).count()) {}

    /// The present time of the system clock.
    [[nodiscard]] static io_timestamp now() noexcept {
        return io_timestamp(std::chrono::system_clock::now());
    }

    /// The count of 100-nanosecond ticks since the epoch.
    [[nodiscard]] constexpr long long ticks() const noexcept { return ticks_; }
    /// The same point on the system clock, exact.
    [[nodiscard]] constexpr time_point to_time_point() const noexcept {
        return time_point(duration(ticks_));
    }
    /// Whether a timestamp was given.
    [[nodiscard]] constexpr bool has_value() const noexcept { return ticks_ != 0; }

private:
    friend struct detail::layout_of<io_timestamp>;

    long long ticks_ = 0;
};

/// By the count of ticks.
[[nodiscard]] constexpr bool operator==(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() == right.ticks();
}
[[nodiscard]] constexpr bool operator!=(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() != right.ticks();
}
/// The earlier one is the lesser.
[[nodiscard]] constexpr bool operator<(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() < right.ticks();
}
[[nodiscard]] constexpr bool operator<=(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() <= right.ticks();
}
[[nodiscard]] constexpr bool operator>(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() > right.ticks();
}
[[nodiscard]] constexpr bool operator>=(io_timestamp left, io_timestamp right) noexcept {
    return left.ticks() >= right.ticks();
}

/// Print the count of ticks.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             io_timestamp timestamp) {
    return out << timestamp.ticks();
}

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(std::is_trivially_copyable_v<io_timestamp>, "passed by value in two words");

template <>
struct layout_of<io_timestamp> {
    static_assert(sizeof(io_timestamp) == 8);
    static_assert(alignof(io_timestamp) == 8);
};

} // namespace tavi::ioapi::v2::detail
