#include "support/host_process.hpp"
#include "support/terminal_process.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <iohost/stop_signal.hpp>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

// A backend that waits does not keep its user waiting.

namespace {

using iohost_support::terminal_process;
using iohost_support::with_backend;
using iohost_support::words;
using stop_clock = std::chrono::steady_clock;
using test_support::child_process;

constexpr char const* pressed = "\x03"; // Ctrl-C

/// A second, and what a busy machine takes besides; far less than any backend waits here.
constexpr std::chrono::seconds soon{20};

words hanging(std::string const& operation, words const& more = {}) {
    words command{"watch", "tank.count", "no.such"};
    command.insert(command.end(), more.begin(), more.end());
    auto all = with_backend({"fault=" + operation + "_hangs"}, command);
    all.insert(all.begin(), IOHOST_PATH);
    return all;
}

std::string come_back(std::string const& operation) {
    return "iohost: ended without waiting for the backend, which has not come back from " +
           operation;
}

class stop_of_a_hanging : public testing::TestWithParam<char const*> {};

TEST_P(stop_of_a_hanging, call_takes_a_second_and_shows_the_summary) {
    std::string const operation = GetParam();
    terminal_process watch(
        hanging(operation, operation == "release" ? words{"--count", "1"} : words{}));
    watch.read_until("hangs in " + operation);
    watch.type(pressed);
    auto const begin = stop_clock::now();
    EXPECT_EQ(watch.finish(), 1);
    EXPECT_LT(stop_clock::now() - begin, soon);
    auto const& shown = watch.shown();
    auto const summary = shown.find("watched for ");
    ASSERT_NE(summary, std::string::npos) << shown;
    EXPECT_EQ(shown.find("watched for ", summary + 1), std::string::npos) << shown;
    EXPECT_NE(shown.find(come_back(operation), summary), std::string::npos) << shown;
}

INSTANTIATE_TEST_SUITE_P(in_every_operation,
                         stop_of_a_hanging,
                         testing::Values("open", "poll", "release"),
                         [](auto const& each) { return std::string(each.param); });

TEST(stop, of_a_hanging_call_comes_at_once_when_it_is_asked_for_twice) {
    terminal_process watch(hanging("poll"));
    watch.read_until("hangs in poll");
    watch.type(pressed);
    watch.type(pressed);
    EXPECT_EQ(watch.finish(), 1);
    EXPECT_NE(watch.shown().find(come_back("poll")), std::string::npos) << watch.shown();
}

TEST(stop, of_a_hanging_call_has_its_summary_in_json) {
    child_process watch(hanging("poll", {"--json"}));
    (void)watch.read_line(); // no.such
    EXPECT_NE(watch.read_line().find("tank.count"), std::string::npos);
    // It may come before the poll that hangs: then all ends well but the variable that is none.
    watch.send(SIGTERM);
    auto const finished = watch.finish();
    EXPECT_EQ(finished.status, 1);
    EXPECT_NE(finished.out.find(R"("refused":1)"), std::string::npos) << finished.out;
}

/// A controller on this machine that answers nothing.
class deaf_listener {
public:
    explicit deaf_listener(int waiting) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address_);
        auto* const place = reinterpret_cast<sockaddr*>(&address_);
        if (::bind(socket_, place, size) != 0 || ::listen(socket_, waiting) != 0 ||
            ::getsockname(socket_, place, &size) != 0) {
            throw std::runtime_error("no socket");
        }
    }
    deaf_listener(deaf_listener const&) = delete;
    deaf_listener& operator=(deaf_listener const&) = delete;
    ~deaf_listener() {
        for (int const each : waiting_) ::close(each);
        ::close(socket_);
    }

    [[nodiscard]] int port() const { return ::ntohs(address_.sin_port); }

    /// Wait until somebody asks for something.
    void wait_for_request() {
        waiting_.push_back(::accept(socket_, nullptr, nullptr));
        char first = 0;
        if (::recv(waiting_.back(), &first, 1, 0) != 1) throw std::runtime_error("no request");
    }

    /// Have so many wait that the system answers no others.
    void fill() {
        for (int i = 0; i < 3; ++i) {
            waiting_.push_back(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            (void)::connect(waiting_.back(), reinterpret_cast<sockaddr*>(&address_),
                            sizeof(address_));
        }
    }

private:
    int socket_;
    sockaddr_in address_{};
    std::vector<int> waiting_;
};

words watching_controller(int port) {
    return {IOHOST_PATH,
            "--backend",
            BACKEND_PATH,
            "--set",
            "host=127.0.0.1",
            "--set",
            "timeout_ms=600000",
            "--set",
            "map=" + std::string(STATION_MAP_PATH),
            "--set",
            "port=" + std::to_string(port),
            "--verbose",
            "watch",
            "tank.level"};
}

TEST(stop, of_a_controller_that_never_answers) {
    deaf_listener controller(5);
    terminal_process watch(watching_controller(controller.port()));
    controller.wait_for_request();
    watch.type(pressed);
    auto const begin = stop_clock::now();
    EXPECT_EQ(watch.finish(), 1);
    EXPECT_LT(stop_clock::now() - begin, soon);
    EXPECT_NE(watch.shown().find("watched for "), std::string::npos) << watch.shown();
    EXPECT_NE(watch.shown().find(come_back("poll")), std::string::npos) << watch.shown();
}

TEST(stop, of_a_connection_that_is_never_made) {
    deaf_listener controller(0);
    controller.fill();
    terminal_process watch(watching_controller(controller.port()));
    // Nothing tells that it tries: where the key comes before, the signal ends it by itself.
    ::usleep(500'000);
    watch.type(pressed);
    auto const begin = stop_clock::now();
    auto const status = watch.finish();
    EXPECT_LT(stop_clock::now() - begin, soon);
    if (status == 128 + SIGINT) return;
    EXPECT_EQ(status, 1);
    EXPECT_NE(watch.shown().find(come_back("open")), std::string::npos) << watch.shown();
}

TEST(stop, without_a_signal_leaves_calls_alone) {
    iohost::stop_signal stop(9);
    EXPECT_EQ(stop.outside("count", [] { return 7; }), 7);
    EXPECT_FALSE(stop.came_before(stop_clock::now() + std::chrono::milliseconds(1)));
    EXPECT_FALSE(stop.came());
}

TEST(stop, of_a_call_that_comes_back_is_left_to_the_caller) {
    iohost::stop_signal stop(9);
    stop.outside("raise", [] { ::kill(::getpid(), SIGTERM); });
    EXPECT_TRUE(stop.came_before(stop_clock::now() + std::chrono::seconds(60)));
    EXPECT_TRUE(stop.came());
}

} // namespace
