#include <tavi/ioapi/v2/io_timestamp.hpp>

#include "support/object_bytes.hpp"
#include "support/printed.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using namespace std::chrono_literals;
using std::chrono::system_clock;
using nanosecond_time = std::chrono::time_point<system_clock, std::chrono::nanoseconds>;

TEST(Timestamp, IsNotGivenByDefault) {
    constexpr io_timestamp timestamp;
    static_assert(timestamp.ticks() == 0);
    static_assert(!timestamp.has_value());
}

TEST(Timestamp, CountsTicks) {
    for (long long const ticks :
         {1LL, -1LL, 17'000'000'000'000'000LL, std::numeric_limits<long long>::max(),
          std::numeric_limits<long long>::min()}) {
        io_timestamp const timestamp(ticks);
        EXPECT_EQ(timestamp.ticks(), ticks);
        EXPECT_TRUE(timestamp.has_value());
    }
}

TEST(Timestamp, TruncatesNanosecondsTowardsTheEpoch) {
    std::pair<long long, long long> const cases[] = {
        {0, 0},
        {1, 0},
        {99, 0},
        {100, 1},
        {199, 1},
        {200, 2},
        {-1, 0},
        {-99, 0},
        {-100, -1},
        {-199, -1},
        {-200, -2},
        {1'700'000'000'123'456'789LL, 17'000'000'001'234'567LL},
        {-1'700'000'000'123'456'789LL, -17'000'000'001'234'567LL},
    };
    for (auto const& [nanoseconds, ticks] : cases) {
        nanosecond_time const time{std::chrono::nanoseconds(nanoseconds)};
        EXPECT_EQ(io_timestamp(time).ticks(), ticks) << nanoseconds;
    }
}

TEST(Timestamp, IsMadeFromCoarserTimes) {
    using second_time = std::chrono::time_point<system_clock, std::chrono::seconds>;
    EXPECT_EQ(io_timestamp(second_time(1s)).ticks(), 10'000'000);
    EXPECT_EQ(io_timestamp(second_time(-1s)).ticks(), -10'000'000);
    using hour_time = std::chrono::time_point<system_clock, std::chrono::hours>;
    EXPECT_EQ(io_timestamp(hour_time(1h)).ticks(), 36'000'000'000LL);
}

TEST(Timestamp, GoesToTheClockAndBack) {
    for (long long const ticks : {0LL, 1LL, -1LL, 17'000'000'001'234'567LL}) {
        io_timestamp const timestamp(ticks);
        EXPECT_EQ(timestamp.to_time_point().time_since_epoch().count(), ticks);
        EXPECT_EQ(io_timestamp(timestamp.to_time_point()), timestamp);
    }
    EXPECT_EQ(std::chrono::nanoseconds(io_timestamp(7).to_time_point().time_since_epoch()), 700ns);
}

TEST(Timestamp, OfNowIsThePresentTime) {
    auto const ticks_now = [] {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(
                   system_clock::now().time_since_epoch())
                   .count() /
               100;
    };
    long long const before = ticks_now();
    long long const now = io_timestamp::now().ticks();
    long long const after = ticks_now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, after);
}

TEST(Timestamp, IsOrderedByItsTicks) {
    std::pair<long long, long long> const cases[] = {
        {1, 1},
        {1, 2},
        {2, 1},
        {-1, 1},
        {0, 0x100000000LL},
        {5, 0x100000005LL},
        {std::numeric_limits<long long>::min(), std::numeric_limits<long long>::max()}};
    for (auto const& [first, second] : cases) {
        io_timestamp const left(first);
        io_timestamp const right(second);
        EXPECT_EQ(left == right, first == second);
        EXPECT_EQ(left != right, first != second);
        EXPECT_EQ(left < right, first < second);
        EXPECT_EQ(left <= right, first <= second);
        EXPECT_EQ(left > right, first > second);
        EXPECT_EQ(left >= right, first >= second);
    }
}

TEST(Timestamp, IsNotMadeSilently) {
    static_assert(!std::is_convertible_v<long long, io_timestamp>);
    static_assert(!std::is_convertible_v<int, io_timestamp>);
    static_assert(!std::is_convertible_v<system_clock::time_point, io_timestamp>);
    static_assert(std::is_constructible_v<io_timestamp, system_clock::time_point>);
    static_assert(!std::is_constructible_v<io_timestamp, std::chrono::steady_clock::time_point>);
    static_assert(!std::is_convertible_v<io_timestamp, long long>);
    static_assert(!std::is_convertible_v<io_timestamp, bool>);
}

TEST(Timestamp, PrintsItsTicks) {
    EXPECT_EQ(test_support::printed(io_timestamp(-12345)), "-12345");
    EXPECT_EQ(test_support::printed_by_own_traits(io_timestamp(7)), "7");
}

TEST(Timestamp, IsOne64BitWord) {
    static_assert(sizeof(io_timestamp) == 8 && std::is_trivially_copyable_v<io_timestamp>);
    EXPECT_EQ(test_support::field_at<long long>(io_timestamp(-7), 0), -7);
}

} // namespace
