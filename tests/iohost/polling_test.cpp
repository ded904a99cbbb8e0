#include <gtest/gtest.h>
#include <iohost/polling.hpp>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using iohost::poll_clock;
using poll_times = std::vector<std::chrono::milliseconds>;

/// Time that passes where somebody waits, and an end that comes at its time.
class played_clock final : public poll_clock {
public:
    [[nodiscard]] time_point now() const override { return now_; }
    [[nodiscard]] bool came_before(time_point deadline) override {
        now_ = std::max(now_, std::min(deadline, signal_));
        return now_ >= signal_;
    }
    void pass(std::chrono::milliseconds span) { now_ += span; }
    void end_at(std::chrono::milliseconds moment) { signal_ = time_point(moment); }

private:
    time_point now_{};
    time_point signal_ = time_point::max();
};

struct polling_case {
    char const* name;
    poll_times taken; ///< by each poll, and no time by those beyond
    std::chrono::milliseconds end;
    poll_times expected; ///< beginnings of the polls
};

class polling : public ::testing::TestWithParam<polling_case> {};

TEST_P(polling, begins_each_poll_in_time) {
    played_clock time;
    poll_times begun;
    auto const end = poll_clock::time_point(GetParam().end);
    poll_regularly(time, {{}, end, 100ms}, [&] {
        auto const number = begun.size();
        begun.push_back(
            std::chrono::duration_cast<std::chrono::milliseconds>(time.now().time_since_epoch()));
        if (number < GetParam().taken.size()) time.pass(GetParam().taken[number]);
        return true;
    });
    EXPECT_EQ(begun, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    all,
    polling,
    ::testing::Values(
        polling_case{"at_once_and_at_every_interval", {}, 350ms, {0ms, 100ms, 200ms, 300ms}},
        polling_case{"none_at_the_end_itself", {}, 200ms, {0ms, 100ms}},
        polling_case{"none_without_time", {}, 0ms, {}},
        polling_case{"the_interval_includes_the_poll", {99ms, 1ms}, 250ms, {0ms, 100ms, 200ms}},
        polling_case{"at_once_after_one_that_took_all", {100ms}, 250ms, {0ms, 100ms, 200ms}},
        polling_case{
            "what_was_missed_is_not_made_up_for", {250ms}, 500ms, {0ms, 250ms, 350ms, 450ms}},
        polling_case{"none_after_one_that_passed_the_end", {600ms}, 500ms, {0ms}}),
    [](auto const& tested) { return std::string(tested.param.name); });

TEST(polling_ends, when_the_poll_says_so) {
    played_clock time;
    int polls = 0;
    poll_regularly(time, {{}, poll_clock::time_point::max(), 100ms}, [&] { return ++polls < 3; });
    EXPECT_EQ(polls, 3);
}

TEST(polling_ends, when_the_clock_says_so) {
    played_clock time;
    time.end_at(250ms);
    int polls = 0;
    poll_regularly(time, {{}, poll_clock::time_point::max(), 100ms}, [&] { return ++polls > 0; });
    EXPECT_EQ(polls, 3);
}

} // namespace
