#include "support/proxied_test.hpp"

#include <chrono>
#include <string>
#include <vector>

// What a controller that nobody here wrote answers is spoilt on its way. Nobody waits longer than
// the timeout, every variable says what has happened, and the next read works.

namespace {

namespace v2 = tavi::ioapi::v2;
using proxy_clock = std::chrono::steady_clock;
using test_support::detail_of;
using test_support::server_process;
using test_support::summaries;
using test_support::summary;

/// One timeout, and time for a busy machine; three requests that wait would take longer.
constexpr std::chrono::milliseconds proxy_patience{1700};

struct line_fault {
    char const* fault;
    char const* error;
};

std::string line_fault_name(::testing::TestParamInfo<line_fault> const& tested) {
    return tested.param.fault;
}

/// Which exchange of which variable has failed.
struct failed_read {
    char const* variable;
    char const* operation;
    unsigned int function;
    unsigned int address;
};

constexpr failed_read failed_reads[] = {{"first", "read holding registers", 3, 62},
                                        {"second", "read holding registers", 3, 60},
                                        {"third", "read input registers", 4, 0}};

void expect_told(v2::io_error const& error, failed_read const& expected) {
    EXPECT_EQ(detail_of(error, "variable"), v2::io_value(expected.variable));
    EXPECT_EQ(detail_of(error, "operation"), v2::io_value(expected.operation));
    EXPECT_EQ(detail_of(error, "function"), v2::io_value(expected.function));
    EXPECT_EQ(detail_of(error, "address"), v2::io_value(expected.address));
}

class spoilt_answer : public test_support::proxied_test,
                      public ::testing::WithParamInterface<line_fault> {};

TEST_P(spoilt_answer, fails_the_whole_read_in_time_and_the_next_read_works) {
    server_process const proxy = proxy_with(GetParam().fault);
    auto const opened = open_through(proxy);
    auto const before = proxy_clock::now();
    auto const result = read(*opened, {"first", "second", "third", "no"});
    EXPECT_LT(proxy_clock::now() - before, proxy_patience);
    std::string const error = GetParam().error;
    EXPECT_EQ(summaries(result), texts({error, error, error, "generic:1 not found"}));
    for (unsigned int i = 0; i < 3; ++i) expect_told(result[i].error(), failed_reads[i]);
    expect_good(*opened);
    EXPECT_EQ(opened.host().log().size(), 3U); // connected, down, connected again
}

INSTANTIATE_TEST_SUITE_P(
    all,
    spoilt_answer,
    ::testing::Values(line_fault{"late", "modbus:258 no answer in time"},
                      line_fault{"stub", "modbus:258 no answer in time"},
                      line_fault{"slow", "modbus:258 no answer in time"},
                      line_fault{"count_longer", "modbus:258 no answer in time"},
                      line_fault{"cut", "modbus:257 connection lost"},
                      line_fault{"short", "modbus:259 answer not understood"},
                      line_fault{"oversized", "modbus:259 answer not understood"},
                      line_fault{"count_shorter", "modbus:259 answer not understood"},
                      line_fault{"transaction", "modbus:259 answer not understood"}),
    line_fault_name);

/// What can be understood all the same: how an answer is cut to pieces means nothing, nor does what
/// its head says of its length, for the function and the count of bytes say it as well.
class odd_answer : public test_support::proxied_test,
                   public ::testing::WithParamInterface<char const*> {};

TEST_P(odd_answer, is_understood_and_the_connection_stays) {
    server_process const proxy = proxy_with(GetParam());
    auto const opened = open_through(proxy);
    expect_good(*opened);
    expect_good(*opened);
    EXPECT_EQ(opened.host().log().size(), 1U); // connected
}

INSTANTIATE_TEST_SUITE_P(
    all,
    odd_answer,
    ::testing::Values("split", "length_zero", "length_swapped", "length_longer", "length_shorter"),
    [](auto const& tested) { return std::string(tested.param); });

class line_fault_test : public test_support::proxied_test {};

// The second answer would be that of the next request; it is noticed before, and goes unread.
TEST_F(line_fault_test, an_answer_that_comes_twice_is_never_that_of_the_next_read) {
    server_process const proxy = proxy_with("doubled", 1);
    auto const opened = open_through(proxy);
    expect_good(*opened);
    expect_good(*opened);
}

TEST_F(line_fault_test, a_line_that_vanishes_and_returns_is_used_again) {
    server_process const proxy = proxy_with("vanish");
    auto const opened = open_through(proxy);
    texts const names{"first", "second", "third"};
    EXPECT_EQ(summaries(read(*opened, names)), texts(3, "modbus:257 connection lost"));
    auto const unreachable = read(*opened, names);
    EXPECT_EQ(summaries(unreachable), texts(3, "modbus:256 not connected"));
    for (unsigned int i = 0; i < 3; ++i) expect_told(unreachable[i].error(), failed_reads[i]);

    server_process const back(
        test_support::faulty_proxy(controller().port(), "none", 0, proxy.port()));
    expect_good(*opened);
}

TEST_F(line_fault_test, a_controller_that_vanishes_behind_the_line_is_found_again) {
    server_process mortal(test_support::foreign_server());
    server_process const proxy(test_support::faulty_proxy(mortal.port(), "none"));
    auto const opened = open_through(proxy);
    expect_good(*opened);
    mortal.kill();
    texts const names{"first", "second", "third"};
    EXPECT_EQ(summaries(read(*opened, names)), texts(3, "modbus:257 connection lost"));
    // The line takes the connection, and ends it for want of a controller.
    EXPECT_EQ(summaries(read(*opened, names)), texts(3, "modbus:257 connection lost"));

    server_process const back(test_support::foreign_server(mortal.port()));
    expect_good(*opened);
}

struct spoilt_request {
    char const* fault;
    int code;
    char const* error;
};

/// The controller itself refuses what it is asked for.
class refused_request : public test_support::proxied_test,
                        public ::testing::WithParamInterface<spoilt_request> {
protected:
    static void expect_refusal(v2::io_error const& error) {
        EXPECT_EQ(summary(error), GetParam().error);
        EXPECT_EQ(detail_of(error, v2::diagnostics_key::device_code),
                  v2::io_value(GetParam().code));
    }
};

TEST_P(refused_request, is_the_error_of_its_own_variable_and_the_connection_stays) {
    server_process const proxy = proxy_with(GetParam().fault);
    auto const opened = open_through(proxy);
    auto const result = read(*opened, {"first", "third"});
    expect_refusal(result[0].error());
    expect_told(result[0].error(), failed_reads[0]);
    EXPECT_EQ(summary(result[1].error()), "ok");
    expect_good(*opened);
    EXPECT_EQ(opened.host().log().size(), 2U); // connected, and what was refused
}

TEST_P(refused_request, of_a_write_is_the_error_of_its_own_entry) {
    server_process const proxy = proxy_with(GetParam().fault, 1);
    auto const opened = open_through(proxy);
    auto const result = write(*opened, {{"first", 62}, {"second", 60 << 16 | 61}, {"first", 62}});
    EXPECT_EQ(summary(result[0].error()), "ok");
    expect_refusal(result[1].error());
    expect_told(result[1].error(), {"second", "write multiple registers", 16, 60});
    EXPECT_EQ(summary(result[2].error()), "ok");
    expect_good(*opened);
}

INSTANTIATE_TEST_SUITE_P(
    all,
    refused_request,
    ::testing::Values(spoilt_request{"unknown_function", 1, "modbus:1 illegal function"},
                      spoilt_request{"no_count", 3, "modbus:3 illegal data value"}),
    [](auto const& tested) { return std::string(tested.param.fault); });

struct odd_unit {
    int unit;
    int code;
    char const* error;
};

/// The controller has the unit and cannot use its contents, or has no such unit.
class unit_without_contents : public test_support::proxied_test,
                              public ::testing::WithParamInterface<odd_unit> {};

TEST_P(unit_without_contents, refuses_every_read_and_write_and_the_connection_stays) {
    auto settings =
        settings_for(controller().port(), map_.path(), test_support::proxied_timeout_ms);
    settings.set("unit", GetParam().unit);
    auto const opened = module.open(settings);
    auto const expect_refusal = [](v2::io_error const& error, failed_read const& expected) {
        EXPECT_EQ(summary(error), GetParam().error);
        EXPECT_EQ(detail_of(error, v2::diagnostics_key::device_code),
                  v2::io_value(GetParam().code));
        expect_told(error, expected);
    };
    auto const result = read(*opened, {"first", "second", "third"});
    for (unsigned int i = 0; i < 3; ++i) expect_refusal(result[i].error(), failed_reads[i]);
    expect_refusal(write_one(*opened, "first", 1), {"first", "write single register", 6, 62});
    expect_refusal(write_one(*opened, "second", 1), {"second", "write multiple registers", 16, 60});
    for (auto const& record : opened.host().log()) {
        EXPECT_EQ(record.text.find(" is down"), std::string::npos) << record.text;
    }
}

INSTANTIATE_TEST_SUITE_P(
    all,
    unit_without_contents,
    ::testing::Values(odd_unit{8, 4, "modbus:4 device failure"},
                      odd_unit{9, 11, "modbus:11 device behind the gateway does not answer"}),
    [](auto const& tested) { return "unit_" + std::to_string(tested.param.unit); });

} // namespace
