#include <arpa/inet.h>
#include <controller/station.hpp>
#include <examples/support/child_process.hpp>
#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using test_support::child_process;
using test_support::modbus_client;
using test_support::run;
using test_support::running_station;

std::uint16_t holding(modbus_client const& client, std::size_t address) {
    std::uint16_t value = 0xDEAD;
    EXPECT_EQ(modbus_read_registers(client.get(), static_cast<int>(address), 1, &value), 1);
    return value;
}

int ticks(modbus_client const& client) {
    std::array<std::uint16_t, 2> words{};
    EXPECT_EQ(modbus_read_input_registers(client.get(), station::ticks, 2, words.data()), 2);
    return words[0] << 16 | words[1];
}

TEST(controller, serves_all_of_its_tables) {
    running_station const station;
    modbus_client const client(station.port());
    auto const expected = station::image_at(0);
    auto seen = station::image_at(1);

    EXPECT_EQ(modbus_read_bits(client.get(), 0, 12, seen.coils.data()), 12);
    EXPECT_EQ(modbus_read_input_bits(client.get(), 0, 8, seen.discretes.data()), 8);
    EXPECT_EQ(modbus_read_input_registers(client.get(), 0, 40, seen.inputs.data()), 40);
    EXPECT_EQ(modbus_read_registers(client.get(), 0, 64, seen.holdings.data()), 64);
    EXPECT_EQ(seen.coils, expected.coils);
    EXPECT_EQ(seen.discretes, expected.discretes);
    EXPECT_EQ(seen.inputs, expected.inputs);
    EXPECT_EQ(seen.holdings, expected.holdings);
}

TEST(controller, its_clock_moves_by_what_is_written_to_the_step_register) {
    running_station const station;
    modbus_client const client(station.port());
    EXPECT_EQ(ticks(client), 0);

    EXPECT_EQ(modbus_write_register(client.get(), station::step, 3), 1);
    EXPECT_EQ(ticks(client), 3);
    std::uint16_t const four = 4;
    EXPECT_EQ(modbus_write_registers(client.get(), station::step, 1, &four), 1);
    EXPECT_EQ(ticks(client), 7);
    EXPECT_EQ(modbus_write_register(client.get(), station::step, 0), 1);
    EXPECT_EQ(ticks(client), 7);
    EXPECT_EQ(modbus_write_register(client.get(), station::step, 65535), 1);
    EXPECT_EQ(ticks(client), 65542);
    EXPECT_EQ(holding(client, station::step), 0);
    EXPECT_EQ(holding(client, station::setpoint), 1520); // 65542 mod 5 = 2
}

TEST(controller, steps_by_its_own_client_mode) {
    running_station const station;
    std::string const where = "127.0.0.1:" + std::to_string(station.port());
    EXPECT_EQ(run({CONTROLLER_PATH, "--step", where}).status, 0);
    EXPECT_EQ(run({CONTROLLER_PATH, "--step", where, "--ticks", "41"}).status, 0);
    EXPECT_EQ(ticks(modbus_client(station.port())), 42);
}

TEST(controller, answers_addresses_outside_its_map_with_exception_2) {
    running_station const station;
    modbus_client const client(station.port());
    std::array<std::uint16_t, 2> words{};
    std::array<std::uint8_t, 2> bits{};

    EXPECT_EQ(modbus_read_registers(client.get(), 64, 1, words.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_read_registers(client.get(), 63, 2, words.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_read_input_registers(client.get(), 40, 1, words.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_read_bits(client.get(), 12, 1, bits.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_read_input_bits(client.get(), 65535, 1, bits.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(holding(client, station::setpoint), 1500);
}

TEST(controller, keeps_what_is_written_to_its_panel_whatever_the_clock_does) {
    running_station const station;
    modbus_client const client(station.port());
    std::array<std::uint16_t, 3> const words{7, 8, 9};
    std::array<std::uint8_t, 2> const bits{1, 1};

    EXPECT_EQ(modbus_write_registers(client.get(), 61, 3, words.data()), 3);
    EXPECT_EQ(modbus_write_register(client.get(), station::panel, 6), 1);
    EXPECT_EQ(modbus_write_bits(client.get(), 10, 2, bits.data()), 2);
    EXPECT_EQ(modbus_write_bit(client.get(), station::lamps, 1), 1);
    EXPECT_EQ(modbus_write_register(client.get(), station::step, 119), 1);

    modbus_client const other(station.port());
    EXPECT_EQ(holding(other, station::panel), 6);
    std::array<std::uint16_t, 4> kept{};
    EXPECT_EQ(modbus_read_registers(other.get(), 60, 4, kept.data()), 4);
    EXPECT_EQ(kept, (std::array<std::uint16_t, 4>{0, 7, 8, 9}));
    std::array<std::uint8_t, 4> lamps{};
    EXPECT_EQ(modbus_read_bits(other.get(), station::lamps, 4, lamps.data()), 4);
    EXPECT_EQ(lamps, (std::array<std::uint8_t, 4>{1, 0, 1, 1}));
}

class controller_with_memory : public ::testing::TestWithParam<int> {};

TEST_P(controller_with_memory, has_its_panel_again_after_its_end_and_a_new_clock) {
    test_support::temporary_file const memory("");
    std::array<std::uint16_t, 2> const words{7, 8};
    {
        running_station station(0, memory.path());
        modbus_client const client(station.port());
        EXPECT_EQ(modbus_write_registers(client.get(), station::panel, 2, words.data()), 2);
        EXPECT_EQ(modbus_write_bit(client.get(), station::lamps + 1, 1), 1);
        EXPECT_EQ(modbus_write_register(client.get(), station::step, 3), 1);
        static_cast<void>(station.stop(GetParam()));
    }
    running_station const station(0, memory.path());
    modbus_client const client(station.port());
    auto expected = station::image_at(0);
    expected.holdings[station::panel] = 7;
    expected.holdings[station::panel + 1] = 8;
    expected.coils[station::lamps + 1] = 1;
    auto seen = station::image_at(1);
    EXPECT_EQ(modbus_read_bits(client.get(), 0, 12, seen.coils.data()), 12);
    EXPECT_EQ(modbus_read_input_bits(client.get(), 0, 8, seen.discretes.data()), 8);
    EXPECT_EQ(modbus_read_input_registers(client.get(), 0, 40, seen.inputs.data()), 40);
    EXPECT_EQ(modbus_read_registers(client.get(), 0, 64, seen.holdings.data()), 64);
    EXPECT_EQ(seen.coils, expected.coils);
    EXPECT_EQ(seen.discretes, expected.discretes);
    EXPECT_EQ(seen.inputs, expected.inputs);
    EXPECT_EQ(seen.holdings, expected.holdings);
}

INSTANTIATE_TEST_SUITE_P(by_signal,
                         controller_with_memory,
                         ::testing::Values(SIGTERM, SIGKILL),
                         [](auto const& tested) {
                             return std::string(tested.param == SIGTERM ? "asked" : "killed");
                         });

TEST(controller, leaves_a_file_alone_that_holds_something_else) {
    test_support::temporary_file const memory("not a panel");
    auto const refused = run({CONTROLLER_PATH, "--memory", memory.path()});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "controller: cannot keep the panel in '" + memory.path() +
                               "': it holds something else\n");
    EXPECT_EQ(std::filesystem::file_size(memory.path()), 11U);
    EXPECT_EQ(run({CONTROLLER_PATH, "--memory", "/no/such/folder/file"}).status, 1);
}

TEST(controller, refuses_to_be_written_to_elsewhere) {
    running_station const station;
    modbus_client const client(station.port());
    std::array<std::uint16_t, 2> const words{1, 1};

    EXPECT_EQ(modbus_write_register(client.get(), station::setpoint, 1), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_write_registers(client.get(), station::step, 2, words.data()), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(modbus_write_bit(client.get(), station::valve_open, 1), -1);
    EXPECT_EQ(errno, EMBXILADD);
    EXPECT_EQ(ticks(client), 0);
    EXPECT_EQ(holding(client, station::setpoint), 1500);
}

TEST(controller, serves_several_connections_whoever_leaves) {
    running_station const station;
    modbus_client const lasting(station.port());
    for (int i = 0; i < 3; ++i) {
        modbus_client const passing(station.port());
        EXPECT_EQ(modbus_write_register(passing.get(), station::step, 1), 1);
        EXPECT_EQ(ticks(lasting), i + 1);
    }
    modbus_client const late(station.port());
    EXPECT_EQ(ticks(late), 3);
    EXPECT_EQ(ticks(lasting), 3);
}

/// A plain socket of somebody who need not know the protocol.
class stranger {
public:
    stranger(char const* host, int port)
        : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        ::inet_pton(AF_INET, host, &address.sin_addr);
        auto const* const plain = reinterpret_cast<sockaddr const*>(&address);
        error_ = ::connect(socket_, plain, sizeof(address)) == 0 ? 0 : errno;
    }
    stranger(stranger const&) = delete;
    stranger& operator=(stranger const&) = delete;
    ~stranger() { ::close(socket_); }

    /// 0, or why it could not connect.
    [[nodiscard]] int error() const noexcept { return error_; }
    void say(std::string const& text) const {
        EXPECT_EQ(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(text.size()));
    }
    /// Whether the other side closes the connection before it says a word.
    [[nodiscard]] bool is_dropped() const {
        char byte = 0;
        return ::recv(socket_, &byte, 1, 0) <= 0;
    }

private:
    int socket_;
    int error_ = 0;
};

TEST(controller, listens_on_one_loopback_address_only) {
    running_station const station;
    EXPECT_EQ(stranger("127.0.0.1", station.port()).error(), 0);
    EXPECT_EQ(stranger("127.0.0.2", station.port()).error(), ECONNREFUSED);
}

TEST(controller, drops_who_stops_in_the_middle_and_serves_the_others) {
    running_station const station;
    modbus_client const client(station.port());
    stranger const half("127.0.0.1", station.port());
    half.say("GET /");
    EXPECT_TRUE(half.is_dropped());
    EXPECT_EQ(ticks(client), 0);
}

TEST(controller, ends_cleanly_on_signals) {
    for (int const signal : {SIGTERM, SIGINT}) {
        running_station station;
        modbus_client const client(station.port());
        auto const finished = station.stop(signal);
        EXPECT_EQ(finished.status, 0) << signal;
        EXPECT_EQ(finished.out, "") << signal;
        EXPECT_EQ(finished.err, "") << signal;
    }
}

// This process adopts the orphan, so that its end can be waited for.
TEST(controller, ends_cleanly_when_its_parent_dies) {
    ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
    child_process parent({"sh", "-c", "\"$0\" --port 0 & echo $!; wait", CONTROLLER_PATH});
    std::vector<std::string> lines{parent.read_line(), parent.read_line()};
    std::sort(lines.begin(), lines.end()); // digits come before letters
    EXPECT_EQ(lines[1].rfind("listening on", 0), 0U);

    parent.send(SIGKILL);
    EXPECT_EQ(parent.read_rest(), ""); // both have ended, for both held this pipe
    int status = -1;
    pid_t const orphan = std::stoi(lines[0]);
    EXPECT_EQ(::waitpid(orphan, &status, 0), orphan);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(controller, takes_a_given_port_or_says_why_not) {
    running_station const station;
    std::string const port = std::to_string(station.port());
    auto const second = run({CONTROLLER_PATH, "--port", port});
    EXPECT_EQ(second.status, 1);
    EXPECT_EQ(second.err,
              "controller: cannot listen on port " + port + ": Address already in use\n");
}

TEST(controller, explains_itself) {
    auto const help = run({CONTROLLER_PATH, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--port"), std::string::npos);
    EXPECT_NE(help.out.find("--step"), std::string::npos);
    EXPECT_EQ(run({CONTROLLER_PATH, "--prot", "0"}).status, 2);
    EXPECT_EQ(run({CONTROLLER_PATH, "--ticks", "3"}).status, 2);
    EXPECT_EQ(run({CONTROLLER_PATH, "--step", "127.0.0.1"}).err,
              "controller: '127.0.0.1' is not HOST:PORT\n");
    EXPECT_EQ(run({CONTROLLER_PATH, "--step", "127.0.0.1:0"}).status, 1);
}

} // namespace
