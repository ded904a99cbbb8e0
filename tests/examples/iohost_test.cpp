#include "running_station.hpp"
#include "temporary_file.hpp"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using test_support::finished_process;
using test_support::run;
using test_support::running_station;
using test_support::temporary_file;

using words = std::vector<std::string>;

finished_process host(words const& arguments) {
    words command{IOHOST_PATH};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run(command);
}

/// All options, which single tests then spoil.
struct options {
    std::string backend = BACKEND_PATH;
    std::string map = STATION_MAP_PATH;
    std::string host = "127.0.0.1";
    std::string port = "1";

    [[nodiscard]] words read(words const& names = {}) const {
        words all{"--backend", backend, "--map", map, "--host", host, "--port", port, "read"};
        all.insert(all.end(), names.begin(), names.end());
        return all;
    }
};

options options_for(running_station const& station) {
    options all;
    all.port = std::to_string(station.port());
    return all;
}

/// Status 2, nothing on standard output, and one line on standard error that begins so.
void expect_refused(finished_process const& finished, std::string const& line) {
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(std::count(finished.err.begin(), finished.err.end(), '\n'), 1) << finished.err;
    EXPECT_EQ(finished.err.substr(0, line.size()), line);
    EXPECT_EQ(finished.err.back(), '\n');
}

TEST(iohost, reads_what_is_named) {
    running_station const station;
    auto const finished = host(options_for(station).read({"tank.level", "station.name"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 3);
    EXPECT_NE(finished.out.find("\ntank.level    flt     2 "), std::string::npos) << finished.out;
    EXPECT_NE(finished.out.find("\nstation.name  string  Pump station 7 "), std::string::npos)
        << finished.out;
}

TEST(iohost, reads_all_of_the_map_where_nothing_is_named) {
    running_station const station;
    temporary_file const map("b holding 1 u16\na coil 0 boolean\n");
    auto all = options_for(station);
    all.map = map.path();
    auto const finished = host(all.read());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 3);
    EXPECT_NE(finished.out.find("\nb           u16      1500 "), std::string::npos) << finished.out;
    EXPECT_NE(finished.out.find("\na           boolean  true "), std::string::npos) << finished.out;
}

TEST(iohost, reports_entries_that_fail_by_its_status) {
    running_station const station;
    auto const refused = host(options_for(station).read({"tank.level", "tank2.level"}));
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "");
    EXPECT_NE(refused.out.find("modbus:2 illegal data address\n"), std::string::npos);
    auto const unknown = host(options_for(station).read({"tank3.level"}));
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.out.find("generic:1 not found\n"), std::string::npos);
}

TEST(iohost, explains_itself) {
    auto const help = host({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (char const* const option : {"--backend", "--map", "--host", "--port", "read"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
    EXPECT_EQ(host({"read", "--help"}).status, 0);
}

TEST(iohost, refuses_wrong_usage) {
    expect_refused(host({}), "iohost: ");
    expect_refused(host({"read"}), "iohost: --backend is required");
    expect_refused(host({"--backend", "x", "--map", "x", "--host", "x"}), "iohost: ");
    expect_refused(host({"--bakcend", "x"}), "iohost: ");
    expect_refused(host({"write"}), "iohost: ");
    auto all = options().read();
    all.insert(all.begin(), "--verbose");
    expect_refused(host(all), "iohost: ");
    all = options().read({"tank.level", "--verbose"});
    expect_refused(host(all), "iohost: The following argument was not expected: --verbose");
}

TEST(iohost, refuses_ports_that_are_none) {
    for (char const* const port : {"0", "65536", "-1", "http", ""}) {
        options all;
        all.port = port;
        expect_refused(host(all.read()), "iohost: ");
    }
}

TEST(iohost, refuses_a_host_without_a_name) {
    options all;
    all.host = "";
    expect_refused(host(all.read()), "iohost: setting 'host' is empty or no text\n");
}

TEST(iohost, refuses_a_host_that_cannot_exist) {
    options all;
    all.host = "two..dots";
    expect_refused(host(all.read()), "iohost: cannot find the host 'two..dots': ");
}

TEST(iohost, refuses_a_map_that_is_missing) {
    options all;
    all.map = "/nowhere/at_all.map";
    expect_refused(host(all.read()), "iohost: cannot read the map '/nowhere/at_all.map': "
                                     "No such file or directory\n");
}

TEST(iohost, refuses_a_directory_as_a_map) {
    options all;
    all.map = "/";
    expect_refused(host(all.read()), "iohost: cannot read the map '/': Is a directory\n");
}

TEST(iohost, names_the_line_of_a_map_that_does_not_parse) {
    temporary_file const map("a holding 1 u16\n\nb holdign 1 u16\n");
    options all;
    all.map = map.path();
    expect_refused(host(all.read()), "iohost: " + map.path() + ": line 3: unknown kind 'holdign'");
}

TEST(iohost, a_wrong_word_of_a_map_stays_on_its_line) {
    temporary_file const map("a hol\x1b\x02\x7f 1 u16\n");
    options all;
    all.map = map.path();
    expect_refused(host(all.read()),
                   "iohost: " + map.path() + ": line 1: unknown kind 'hol\\x1b\\x02\\x7f'");
}

TEST(iohost, refuses_a_port_where_nobody_listens) {
    running_station station;
    auto const all = options_for(station);
    station.stop(SIGTERM);
    expect_refused(host(all.read()),
                   "iohost: cannot connect to 127.0.0.1:" + all.port + ": Connection refused\n");
}

TEST(iohost, refuses_a_module_that_is_missing) {
    options all;
    all.backend = "nowhere/no_module.so";
    auto const finished = host(all.read());
    expect_refused(finished, "iohost: cannot load the backend: ");
    EXPECT_NE(finished.err.find("nowhere/no_module.so"), std::string::npos);
    EXPECT_NE(finished.err.find("No such file or directory"), std::string::npos);
}

TEST(iohost, refuses_a_file_that_is_no_module) {
    options all;
    all.backend = STATION_MAP_PATH;
    expect_refused(host(all.read()), "iohost: cannot load the backend: ");
}

TEST(iohost, refuses_a_module_without_the_entry_function) {
    options all;
    all.backend = NO_BACKEND_PATH;
    expect_refused(host(all.read()),
                   "iohost: '" NO_BACKEND_PATH "' is no backend: it has no function "
                   "example_open_backend_1\n");
}

} // namespace
