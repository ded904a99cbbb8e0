#include "support/host_process.hpp"

#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

namespace {

using iohost_support::host_with_backend;
using iohost_support::line_of;
using iohost_support::with_backend;
using iohost_support::words;
using test_support::child_process;

std::vector<std::string> lines_of(std::string const& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

words watching(words const& settings, words const& arguments) {
    words command{"watch"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    auto all = with_backend(settings, command);
    all.insert(all.begin(), IOHOST_PATH);
    return all;
}

TEST(watch_command, prints_a_line_for_each_change) {
    auto const finished =
        host_with_backend({"watch", "--count", "3", "odd.ticker", "tank.count", "odd.doubtful"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "2023-11-14T22:13:20.0000000Z  odd.ticker  0\n"
                            "2023-11-14T22:13:20.0000000Z  tank.count  1500\n"
                            "2023-11-14T22:13:20.0000000Z  odd.doubtful  5  (bad)\n"
                            "2023-11-14T22:13:20.0000000Z  odd.ticker  1\n"
                            "2023-11-14T22:13:20.0000000Z  odd.ticker  2\n");
    EXPECT_NE(finished.err.find(" s: 3 polls, 0 of them failed\n"
                                "identifier    changes  errors\n"
                                "odd.ticker    3        0\n"
                                "tank.count    1        0\n"
                                "odd.doubtful  1        0\n"),
              std::string::npos)
        << finished.err;
}

TEST(watch_command, watches_a_variable_that_is_named_twice_once) {
    auto const finished = host_with_backend({"watch", "--count", "1", "tank.count", "tank.count"});
    EXPECT_EQ(lines_of(finished.out).size(), 1U);
}

TEST(watch_command, ends_its_subscriptions) {
    auto const finished =
        host_with_backend({"--verbose", "watch", "--count", "1", "tank.count", "tank.level"});
    EXPECT_NE(finished.err.find("released with 0 subscriptions\n"), std::string::npos)
        << finished.err;
}

TEST(watch_command, reports_a_variable_in_error_by_its_status) {
    auto const finished = host_with_backend({"watch", "--count", "1", "odd.broken"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.out.find("Z  odd.broken  error: device:7 valve stuck {address: "),
              std::string::npos)
        << finished.out;
}

TEST(watch_command, goes_on_with_what_can_be_watched) {
    auto const finished = host_with_backend(
        {"watch", "--count", "1", "no.such", "pump.state/speed", "pump.state", "tank.count"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(lines_of(finished.out).size(), 2U) << finished.out;
    EXPECT_NE(line_of(finished.err, "iohost: cannot watch no.such: generic:1 not found"), "");
    EXPECT_NE(
        line_of(finished.err, "iohost: cannot watch pump.state/speed: generic:6 not supported"),
        "");
}

TEST(watch_command, says_once_why_many_cannot_be_watched) {
    words command{"watch", "--count", "1", "tank.count", "pump.state/speed"};
    for (int i = 0; i < 300; ++i) command.push_back("none" + std::to_string(i));
    auto const finished = host_with_backend(command);
    EXPECT_EQ(finished.status, 1);
    auto const lines = lines_of(finished.err);
    ASSERT_EQ(lines.size(), 5U) << finished.err;
    EXPECT_EQ(lines[0], "iohost: cannot watch pump.state/speed: generic:6 not supported");
    EXPECT_EQ(lines[1], "iohost: cannot watch none0 and 299 more: generic:1 not found");
    EXPECT_TRUE(lines[2].ends_with(" s: 1 polls, 0 of them failed, 301 variables refused"));
}

TEST(watch_command, ends_with_one_line_where_its_output_cannot_be_written) {
    for (std::string const json : {"", " --json"}) {
        auto const finished = test_support::run(
            {"sh", "-c", "exec \"$0\" --backend \"$1\"" + json + " watch odd.ticker >/dev/full",
             IOHOST_PATH, TEST_BACKEND_PATH});
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.err, "iohost: cannot write to standard output\n");
    }
}

TEST(watch_command, ends_at_once_where_nothing_can_be_watched) {
    auto const finished = host_with_backend({"watch", "no.such"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
}

TEST(watch_command, reports_polls_that_fail) {
    auto const finished =
        host_with_backend({"fault=poll_fails"}, {"watch", "--count", "3", "tank.count"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(line_of(finished.err, "iohost: poll: device:7 valve stuck"), "");
    EXPECT_NE(finished.err.find("3 polls, 2 of them failed\n"), std::string::npos);
}

TEST(watch_command, prints_an_object_for_each_change_in_json) {
    auto const finished =
        host_with_backend({"--json", "watch", "--count", "2", "odd.ticker", "odd.broken"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "");
    auto const lines = lines_of(finished.out);
    ASSERT_EQ(lines.size(), 4U);
    auto const first = nlohmann::json::parse(lines[0]);
    EXPECT_EQ(first["name"], "odd.ticker");
    EXPECT_EQ(first["value"], 0);
    EXPECT_EQ(first["type"], "u32");
    EXPECT_EQ(first["time"], "2023-11-14T22:13:20.0000000Z");
    auto const broken = nlohmann::json::parse(lines[1]);
    EXPECT_EQ(broken["error"]["category"], "device");
    EXPECT_TRUE(broken["time"].is_string());
    EXPECT_EQ(nlohmann::json::parse(lines[2])["value"], 1);
    auto const summary = nlohmann::json::parse(lines[3])["summary"];
    EXPECT_EQ(summary["polls"], 2);
    EXPECT_EQ(summary["variables"][0],
              nlohmann::json::parse(R"({"name": "odd.ticker", "changes": 2, "errors": 0})"));
    EXPECT_EQ(summary["variables"][1]["errors"], 1);
}

TEST(watch_command, names_what_it_cannot_watch_in_json) {
    auto const finished = host_with_backend({"--json", "watch", "no.such"});
    EXPECT_EQ(finished.status, 1);
    auto const lines = lines_of(finished.out);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(nlohmann::json::parse(lines[0])["error"]["message"], "not found");
    EXPECT_EQ(nlohmann::json::parse(lines[1])["summary"]["polls"], 0);
    EXPECT_EQ(nlohmann::json::parse(lines[1])["summary"]["refused"], 1);
}

using watch_clock = std::chrono::steady_clock;

TEST(watch_command, ends_after_the_time_that_it_is_given) {
    auto const begin = watch_clock::now();
    auto const finished = host_with_backend({"watch", "--for", "0.3", "odd.ticker"});
    auto const span = watch_clock::now() - begin;
    EXPECT_EQ(finished.status, 0);
    EXPECT_GE(span, std::chrono::milliseconds(300));
    EXPECT_LT(span, std::chrono::seconds(20));
    // One every 20 ms, the first at once; fewer on a busy machine.
    auto const changes = lines_of(finished.out).size();
    EXPECT_GE(changes, 1U);
    EXPECT_LE(changes, 16U);
}

TEST(watch_command, does_not_wait_for_a_poll_to_end) {
    auto const begin = watch_clock::now();
    auto const finished =
        host_with_backend({"poll_interval=60000"}, {"watch", "--for", "0.2", "tank.count"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(lines_of(finished.out).size(), 1U);
    EXPECT_LT(watch_clock::now() - begin, std::chrono::seconds(30));
}

class watch_command_signal : public testing::TestWithParam<int> {};

TEST_P(watch_command_signal, ends_it_cleanly) {
    child_process watch(watching({"poll_interval=60000"}, {"--verbose", "tank.count"}));
    EXPECT_TRUE(watch.read_line().ends_with("tank.count  1500"));
    watch.send(GetParam());
    auto const finished = watch.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.err.find("released with 0 subscriptions"), std::string::npos);
    EXPECT_NE(finished.err.find("1 polls, 0 of them failed"), std::string::npos) << finished.err;
}

INSTANTIATE_TEST_SUITE_P(of_either_kind,
                         watch_command_signal,
                         testing::Values(SIGINT, SIGTERM),
                         [](auto const& each) { return each.param == SIGINT ? "int" : "term"; });

TEST(watch_command, shows_changes_at_once_in_a_pipe) {
    child_process watch(watching({}, {"odd.ticker"}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(watch.read_line().ends_with("odd.ticker  " + std::to_string(i)));
    }
    watch.send(SIGINT);
    EXPECT_EQ(watch.finish().status, 0);
}

} // namespace
