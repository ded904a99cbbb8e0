#include "support/module_test.hpp"

#include <dlfcn.h>
#include <examples/support/running_station.hpp>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::summaries;
using test_support::summary;

/// Accepts connections by its backlog and never says a word.
class silent_listener {
public:
    silent_listener() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(::bind(socket_, plain, size), 0);
        EXPECT_EQ(::listen(socket_, 4), 0);
        EXPECT_EQ(::getsockname(socket_, plain, &size), 0);
        port_ = ntohs(address.sin_port);
    }
    silent_listener(silent_listener const&) = delete;
    silent_listener& operator=(silent_listener const&) = delete;
    ~silent_listener() { ::close(socket_); }

    [[nodiscard]] int port() const noexcept { return port_; }

private:
    int socket_;
    int port_ = 0;
};

class opening : public test_support::module_test {};

TEST_F(opening, without_a_listener_says_why) {
    int port = 0;
    {
        silent_listener const listener;
        port = listener.port();
    }
    test_support::recording_host host;
    v2::utility::string problem;
    v2::io_error error;
    auto* const opened =
        module->open(settings_for(port, STATION_MAP_PATH), v2::backend_query(host), problem, error);
    EXPECT_EQ(opened, nullptr);
    EXPECT_EQ(summary(error), "modbus:256 not connected");
    EXPECT_EQ(problem,
              "cannot connect to 127.0.0.1:" + std::to_string(port) + ": Connection refused");
    EXPECT_TRUE(host.log().empty());
    EXPECT_TRUE(host.types().empty());
}

TEST_F(opening, clears_the_error_of_another_operation) {
    test_support::running_station const station;
    test_support::recording_host host;
    v2::utility::string problem;
    v2::io_error error(v2::io_errc::todo);
    auto* const opened = module->open(settings_for(station.port(), STATION_MAP_PATH),
                                      v2::backend_query(host), problem, error);
    ASSERT_NE(opened, nullptr) << problem;
    EXPECT_EQ(error, v2::io_error());
    opened->release();
}

TEST_F(opening, takes_a_name_for_a_host) {
    test_support::running_station const station;
    auto values = settings_for(station.port(), STATION_MAP_PATH);
    values.set("host", "localhost");
    auto const opened = module.open(values);
    EXPECT_EQ(summaries(read(*opened, {"tank.level"})), texts{"ok"});
}

TEST_F(opening, registers_every_structure_of_the_map) {
    test_support::running_station const station;
    auto const opened = module.open(settings_for(station.port(), STATION_MAP_PATH));
    EXPECT_EQ(opened.host().types().size(), 2U);
    for (char const* const name : {"pump_state", "recipe"}) {
        v2::io_error error;
        static_cast<void>(opened.host().lookup_data_type(v2::plc_identifier(name), error));
        EXPECT_EQ(error, v2::io_error()) << name;
    }
}

// One timeout is enough: what comes after it in the same read gets its error without waiting.
TEST_F(opening, a_controller_that_never_answers_costs_one_timeout_for_each_request) {
    silent_listener const listener;
    auto const opened = module.open(settings_for(listener.port(), STATION_MAP_PATH, 200));
    texts const one_of_each_kind{"pump1.runs", "tank.is_low", "tank.level", "tank.setpoint"};
    auto const before = std::chrono::steady_clock::now();
    EXPECT_EQ(summaries(read(*opened, one_of_each_kind)), texts(4, "modbus:258 no answer in time"));
    auto const took = std::chrono::steady_clock::now() - before;
    EXPECT_GE(took, std::chrono::milliseconds(150));
    EXPECT_LT(took, std::chrono::milliseconds(750)); // four requests that wait would take 800
}

TEST(unloading, leaves_nothing_of_the_module_behind) {
    test_support::running_station const station;
    {
        test_support::opened_module const module(BACKEND_PATH);
        example::v2::config::store values;
        values.set("map", STATION_MAP_PATH);
        values.set("host", "127.0.0.1");
        values.set("port", station.port());
        static_cast<void>(module.open(values));
    }
    EXPECT_EQ(::dlopen(BACKEND_PATH, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

} // namespace
