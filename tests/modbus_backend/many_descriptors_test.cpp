#include "support/module_test.hpp"

#include <examples/support/running_station.hpp>
#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

// The library of the protocol waits by select, whose sets have no room for the descriptors from
// FD_SETSIZE on. A host may have that many open.

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::summaries;

/// Takes all descriptors that a set has room for.
class crowd {
public:
    crowd() {
        for (int last = 0; last < FD_SETSIZE;) {
            last = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
            if (last < 0) break;
            taken_.push_back(last);
        }
    }
    crowd(crowd const&) = delete;
    crowd& operator=(crowd const&) = delete;
    ~crowd() {
        for (int const each : taken_) ::close(each);
    }

    [[nodiscard]] bool is_complete() const {
        return !taken_.empty() && taken_.back() >= FD_SETSIZE;
    }

private:
    std::vector<int> taken_;
};

class many_descriptors : public test_support::module_test {
protected:
    void SetUp() override {
        ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before_), 0);
        if (before_.rlim_cur >= needed) return;
        if (before_.rlim_max < needed) {
            // Nobody but the administrator may raise the hard limit: where it is lower no process
            // can come to so many descriptors, and there is no fault to look for.
            GTEST_SKIP() << "the hard limit of " << before_.rlim_max
                         << " open descriptors is below the " << needed << " that this takes";
        }
        rlimit wider = before_;
        wider.rlim_cur = needed;
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &wider), 0);
    }
    void TearDown() override { ::setrlimit(RLIMIT_NOFILE, &before_); }

private:
    /// The limit may not be what refuses the descriptors that a set has no room for.
    static constexpr rlim_t needed = FD_SETSIZE + 64;

    rlimit before_{};
};

TEST_F(many_descriptors, leave_no_room_for_a_connection_and_the_opening_says_so) {
    test_support::running_station const station;
    auto const settings = settings_for(station.port(), STATION_MAP_PATH);
    {
        crowd const others;
        ASSERT_TRUE(others.is_complete());
        test_support::recording_host host;
        v2::utility::string problem;
        v2::io_error error;
        EXPECT_EQ(module->open(settings, v2::backend_query(host), problem, error), nullptr);
        EXPECT_EQ(test_support::summary(error), "modbus:256 not connected");
        EXPECT_EQ(problem, "cannot connect to 127.0.0.1:" + std::to_string(station.port()) +
                               ": Too many open files");
    }
    auto const opened = module.open(settings);
    EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"ok"});
}

TEST_F(many_descriptors, do_not_disturb_a_connection_that_is_there) {
    test_support::running_station const station;
    auto const opened = module.open(settings_for(station.port(), STATION_MAP_PATH));
    crowd const others;
    ASSERT_TRUE(others.is_complete());
    EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"ok"});
}

TEST_F(many_descriptors, keep_a_lost_connection_away_until_there_is_room) {
    auto station = std::make_unique<test_support::running_station>();
    int const port = station->port();
    auto const opened = module.open(settings_for(port, STATION_MAP_PATH));
    static_cast<void>(station->stop(SIGKILL));
    EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"modbus:257 connection lost"});
    station = std::make_unique<test_support::running_station>(port);
    {
        crowd const others;
        ASSERT_TRUE(others.is_complete());
        EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"modbus:256 not connected"});
    }
    EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"ok"});
}

} // namespace
