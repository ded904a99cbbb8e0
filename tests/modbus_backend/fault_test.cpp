#include "support/module_test.hpp"
#include "support/server_process.hpp"

#include <examples/support/temporary_file.hpp>

#include <chrono>
#include <string>
#include <vector>

// The controller answers one request wrongly. Nobody waits longer than the timeout, every variable
// says what has happened, and the next read works.

namespace {

namespace v2 = tavi::ioapi::v2;
using fault_clock = std::chrono::steady_clock;
using test_support::summaries;

constexpr unsigned int fault_timeout_ms = 600;

/// One timeout, and time for a busy machine; three requests that wait would take longer.
constexpr std::chrono::milliseconds fault_patience{1700};

/// The first request of every read is the one for the holding registers.
constexpr char const* fault_map = "first holding 10 u16\n"
                                  "second holding 14 u32\n"
                                  "third input 20 u16\n";

class fault_test : public test_support::module_test {
protected:
    [[nodiscard]] test_support::opened_backend open_faulty(
        test_support::server_process const& server) const {
        return module.open(settings_for(server.port(), map_.path(), fault_timeout_ms));
    }

    static void expect_good(example::backend& backend) {
        auto const result = read(backend, {"first", "second", "third"});
        ASSERT_EQ(summaries(result), texts(3, "ok"));
        EXPECT_EQ(result[0].value().value().as<int>(), 10);
        EXPECT_EQ(result[1].value().value().as<int>(), 14 << 16 | 15);
        EXPECT_EQ(result[2].value().value().as<int>(), 20);
    }

    test_support::temporary_file const map_{fault_map};
};

struct fault_case {
    char const* fault;
    char const* error;
};

std::string fault_name(::testing::TestParamInfo<fault_case> const& tested) {
    std::string name = tested.param.fault;
    for (char& letter : name) letter = letter == '-' ? '_' : letter;
    return name;
}

/// Faults that end the connection.
class broken_answer : public fault_test, public ::testing::WithParamInterface<fault_case> {};

TEST_P(broken_answer, fails_the_whole_read_in_time_and_the_next_read_works) {
    test_support::server_process const server(test_support::faulty_server(GetParam().fault));
    auto const opened = open_faulty(server);
    auto const before = fault_clock::now();
    auto const result = read(*opened, {"first", "second", "third", "no"});
    auto const took = fault_clock::now() - before;
    std::string const error = GetParam().error;
    EXPECT_EQ(summaries(result), texts({error, error, error, "generic:1 not found"}));
    EXPECT_LT(took, fault_patience);
    EXPECT_EQ(test_support::detail_of(result[2].error(), "variable"), v2::io_value("third"));
    expect_good(*opened);
    EXPECT_EQ(opened.host().log().size(), 3U); // connected, down, connected again
}

TEST_P(broken_answer, fails_the_rest_of_a_write_and_the_next_write_works) {
    test_support::server_process const server(test_support::faulty_server(GetParam().fault, 1));
    auto const opened = open_faulty(server);
    auto const before = fault_clock::now();
    auto const result = write(*opened, {{"first", 1}, {"first", 2}, {"second", 3}});
    auto const took = fault_clock::now() - before;
    EXPECT_EQ(summaries(result), texts({"ok", GetParam().error, GetParam().error}));
    EXPECT_LT(took, fault_patience);
    EXPECT_EQ(summaries(write(*opened, {{"first", 2}, {"second", 3}})), texts(2, "ok"));
}

INSTANTIATE_TEST_SUITE_P(
    all,
    broken_answer,
    ::testing::Values(fault_case{"late", "modbus:258 no answer in time"},
                      fault_case{"silent", "modbus:258 no answer in time"},
                      fault_case{"stub", "modbus:258 no answer in time"},
                      fault_case{"trickle", "modbus:258 no answer in time"},
                      fault_case{"closed", "modbus:257 connection lost"},
                      fault_case{"reset", "modbus:257 connection lost"},
                      fault_case{"cut", "modbus:257 connection lost"},
                      fault_case{"transaction", "modbus:259 answer not understood"},
                      fault_case{"garbage", "modbus:259 answer not understood"}),
    fault_name);

/// Faults that only an answer with contents can have.
class broken_contents : public fault_test, public ::testing::WithParamInterface<fault_case> {};

TEST_P(broken_contents, fail_the_whole_read_in_time_and_the_next_read_works) {
    test_support::server_process const server(test_support::faulty_server(GetParam().fault));
    auto const opened = open_faulty(server);
    auto const before = fault_clock::now();
    auto const result = read(*opened, {"first", "third"});
    auto const took = fault_clock::now() - before;
    EXPECT_EQ(summaries(result), texts(2, GetParam().error));
    EXPECT_LT(took, fault_patience);
    expect_good(*opened);
}

INSTANTIATE_TEST_SUITE_P(
    all,
    broken_contents,
    ::testing::Values(fault_case{"short", "modbus:259 answer not understood"},
                      fault_case{"oversized", "modbus:259 answer not understood"},
                      fault_case{"excessive", "modbus:259 answer not understood"},
                      fault_case{"function", "modbus:259 answer not understood"},
                      fault_case{"exception-0", "modbus:259 answer not understood"},
                      fault_case{"exception-99", "modbus:259 answer not understood"}),
    fault_name);

struct exception_case {
    int code;
    char const* error;
};

class exception_answer : public fault_test, public ::testing::WithParamInterface<exception_case> {
protected:
    [[nodiscard]] static std::vector<std::string> server_with(int skipped) {
        return test_support::faulty_server("exception-" + std::to_string(GetParam().code), skipped);
    }

    void expect_exception(v2::io_error const& error, char const* operation) const {
        EXPECT_EQ(test_support::summary(error), GetParam().error);
        EXPECT_EQ(test_support::detail_of(error, v2::diagnostics_key::device_code).as<int>(),
                  GetParam().code);
        EXPECT_EQ(test_support::detail_of(error, v2::diagnostics_key::operation),
                  v2::io_value(operation));
    }
};

TEST_P(exception_answer, is_that_of_its_own_request_and_the_connection_stays) {
    test_support::server_process const server(server_with(0));
    auto const opened = open_faulty(server);
    auto const result = read(*opened, {"first", "third"});
    expect_exception(result[0].error(), "read holding registers");
    EXPECT_EQ(test_support::summary(result[1].error()), "ok");
    expect_good(*opened);
    EXPECT_EQ(opened.host().log().size(), 2U); // connected, and what was refused
}

TEST_P(exception_answer, to_a_write_is_that_of_its_own_entry) {
    test_support::server_process const server(server_with(1));
    auto const opened = open_faulty(server);
    auto const result = write(*opened, {{"first", 1}, {"second", 2}, {"first", 3}});
    EXPECT_EQ(test_support::summary(result[0].error()), "ok");
    expect_exception(result[1].error(), "write multiple registers");
    EXPECT_EQ(test_support::summary(result[2].error()), "ok");
}

INSTANTIATE_TEST_SUITE_P(
    all,
    exception_answer,
    ::testing::Values(exception_case{1, "modbus:1 illegal function"},
                      exception_case{2, "modbus:2 illegal data address"},
                      exception_case{3, "modbus:3 illegal data value"},
                      exception_case{4, "modbus:4 device failure"},
                      exception_case{5, "modbus:5 accepted, but still being worked on"},
                      exception_case{6, "modbus:6 device busy"},
                      exception_case{7, "modbus:7 negative acknowledge"},
                      exception_case{8, "modbus:8 memory parity error"},
                      exception_case{10, "modbus:10 gateway path unavailable"},
                      exception_case{11, "modbus:11 device behind the gateway does not answer"}),
    [](auto const& tested) { return "code_" + std::to_string(tested.param.code); });

// What follows a good answer is noticed before the next request, which then goes its own way.
TEST_F(fault_test, an_answer_that_nobody_asked_for_disturbs_nothing) {
    test_support::server_process const server(test_support::faulty_server("followed", 1));
    auto const opened = open_faulty(server);
    expect_good(*opened);
    expect_good(*opened);
    ASSERT_EQ(opened.host().log().size(), 3U);
    EXPECT_EQ(opened.host().log()[1].text,
              "connection to 127.0.0.1:" + std::to_string(server.port()) +
                  " is down: answer not understood");
}

TEST_F(fault_test, a_poll_delivers_the_fault_and_then_the_value) {
    test_support::server_process const server(test_support::faulty_server("stub", 1));
    auto const opened = open_faulty(server);
    v2::subscription_result subscribed;
    v2::io_error error;
    opened->subscribe(test_support::identifiers_of({"first"}), subscribed, error);
    auto const polled = [&opened, &error] {
        v2::read_result changes;
        opened->poll(changes, error);
        EXPECT_EQ(error, v2::io_error());
        return summaries(changes);
    };
    EXPECT_EQ(polled(), texts{"ok"});
    EXPECT_EQ(polled(), texts{"modbus:258 no answer in time"});
    EXPECT_EQ(polled(), texts{"ok"});
    EXPECT_EQ(polled(), texts());
}

} // namespace
