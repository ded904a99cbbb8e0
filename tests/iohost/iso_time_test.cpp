#include <gtest/gtest.h>
#include <iohost/iso_time.hpp>

namespace {

using iohost::iso_time;
using tavi::ioapi::v2::io_timestamp;

TEST(iso_time, no_timestamp_is_a_dash) {
    EXPECT_EQ(iso_time(io_timestamp()), "-");
}

TEST(iso_time, shows_every_tick) {
    EXPECT_EQ(iso_time(io_timestamp(1)), "1970-01-01T00:00:00.0000001Z");
    EXPECT_EQ(iso_time(io_timestamp(9'999'999)), "1970-01-01T00:00:00.9999999Z");
    EXPECT_EQ(iso_time(io_timestamp(10'000'000)), "1970-01-01T00:00:01.0000000Z");
}

// `date --utc --date @1709207999` names the second before noon of that day.
TEST(iso_time, knows_leap_days) {
    EXPECT_EQ(iso_time(io_timestamp(1'709'207'999'123'456'7)), "2024-02-29T11:59:59.1234567Z");
}

TEST(iso_time, goes_below_the_epoch) {
    EXPECT_EQ(iso_time(io_timestamp(-1)), "1969-12-31T23:59:59.9999999Z");
    EXPECT_EQ(iso_time(io_timestamp(-864'000'000'000)), "1969-12-31T00:00:00.0000000Z");
}

} // namespace
