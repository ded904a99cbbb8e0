#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>
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

TEST(iohost, shows_arrays_and_structures_in_its_table) {
    running_station const station;
    auto const finished = host(options_for(station).read({"tank.profile", "pump1.state"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find("\ntank.profile  flt[]               "
                                "[2, 1.875, 1.75, 1.625, 1.5, 1.375, 1.25, 1.125]  "),
              std::string::npos)
        << finished.out;
    EXPECT_NE(
        finished.out.find("\npump1.state   object<pump_state>  "
                          "{currents: [120, 122, 124], runs: 1, speed: 1450, starts: 1000}  "),
        std::string::npos)
        << finished.out;
}

TEST(iohost, prints_values_at_length) {
    running_station const station;
    auto const finished =
        host(options_for(station).read({"--print", "pumps.run", "tank.level", "station.name"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "pumps.run:\n"
                            "  array (2) {\n"
                            "    (boolean) true\n"
                            "    (boolean) false\n"
                            "  }\n"
                            "tank.level:\n"
                            "  (flt) 2\n"
                            "station.name:\n"
                            "  (string) \"Pump station 7\"\n");
}

TEST(iohost, prints_structures_with_the_id_of_their_type) {
    running_station const station;
    auto const finished = host(options_for(station).read({"--print", "pump2.state"}));
    EXPECT_EQ(finished.status, 0);
    std::string const head = "pump2.state:\n  object<";
    ASSERT_EQ(finished.out.substr(0, head.size()), head);
    auto const id_end = finished.out.find_first_not_of("0123456789", head.size());
    EXPECT_GT(id_end, head.size());
    EXPECT_EQ(finished.out.substr(id_end), "> {\n"
                                           "  [currents] =>\n"
                                           "    array (3) {\n"
                                           "      (u16) 0\n"
                                           "      (u16) 0\n"
                                           "      (u16) 0\n"
                                           "    }\n"
                                           "  [runs] =>\n"
                                           "    (u16) 0\n"
                                           "  [speed] =>\n"
                                           "    (flt) 0\n"
                                           "  [starts] =>\n"
                                           "    (u32) 2000\n"
                                           "  }\n");
}

TEST(iohost, prints_errors_and_reports_them_by_its_status) {
    running_station const station;
    auto const finished = host(options_for(station).read({"--print", "tank2.level", "tank.level"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "tank2.level: modbus:2 illegal data address\ntank.level:\n  (flt) 2\n");
}

TEST(iohost, converts_values_to_a_type) {
    running_station const station;
    auto const finished = host(options_for(station).read({"--as", "i32", "tank.level"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find("\ntank.level  i32   2 "), std::string::npos) << finished.out;
    auto const texts = host(options_for(station).read({"--as", "string[]", "pumps.run"}));
    EXPECT_EQ(texts.status, 0);
    EXPECT_NE(texts.out.find("\npumps.run   string[]  [\"true\", \"false\"]  "), std::string::npos)
        << texts.out;
}

TEST(iohost, reports_what_does_not_convert_beside_what_does) {
    running_station const station;
    auto const finished = host(options_for(station).read(
        {"--as", "i32", "pipe.flow", "tank.setpoint", "tank.profile", "pump1.state", "no.such"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "");
    EXPECT_NE(finished.out.find("\ntank.setpoint  i32   1500 "), std::string::npos) << finished.out;
    for (char const* const line :
         {"\npipe.flow      -     -      -                             -        generic:4 ",
          "\ntank.profile   -     -      -                             -        generic:3 ",
          "\npump1.state    -     -      -                             -        generic:3 ",
          "\nno.such        -     -      -                             -        generic:1 "}) {
        EXPECT_NE(finished.out.find(line), std::string::npos) << finished.out;
    }
}

TEST(iohost, prints_what_it_has_converted) {
    running_station const station;
    auto const finished =
        host(options_for(station).read({"tank.level", "pipe.flow", "--print", "--as", "u8"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "tank.level:\n  (u8) 2\npipe.flow: generic:4 value too large\n");
}

TEST(iohost, refuses_types_that_are_none) {
    for (char const* const type : {"i33", "i32[8]", "", "type(99)"}) {
        auto const finished = host(options().read({"--as", type, "tank.level"}));
        expect_refused(finished, "iohost: --as: unknown type '" + std::string(type) +
                                     "', not empty, boolean, u8, ");
    }
    expect_refused(host(options().read({"--as"})), "iohost: ");
}

TEST(iohost, explains_itself) {
    auto const help = host({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (char const* const option : {"--backend", "--map", "--host", "--port", "read"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
    auto const read_help = host({"read", "--help"});
    EXPECT_EQ(read_help.status, 0);
    for (char const* const option : {"--print", "--as TYPE"}) {
        EXPECT_NE(read_help.out.find(option), std::string::npos) << option;
    }
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

TEST(iohost, refuses_a_module_that_has_an_earlier_entry_function_only) {
    options all;
    all.backend = NO_BACKEND_PATH;
    expect_refused(host(all.read()),
                   "iohost: '" NO_BACKEND_PATH "' is no backend: it has no function "
                   "example_open_backend_2\n");
}

} // namespace
