#include "support/host_process.hpp"

#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <string>

// The controller of the examples, read by the host through the backend for Modbus.

namespace {

using iohost_support::document_of;
using iohost_support::expect_refused;
using iohost_support::host;
using iohost_support::words;
using test_support::running_station;
using test_support::temporary_file;

/// All options of the backend, which single tests then spoil.
struct pump_options {
    std::string map = STATION_MAP_PATH;
    std::string host = "127.0.0.1";
    std::string port = "1";

    [[nodiscard]] words with(words const& command) const {
        words all{"--backend", BACKEND_PATH,   "--set", "map=" + map,
                  "--set",     "host=" + host, "--set", "port=" + port};
        all.insert(all.end(), command.begin(), command.end());
        return all;
    }
    [[nodiscard]] words read(words const& names = {}) const {
        words command{"read"};
        command.insert(command.end(), names.begin(), names.end());
        return with(command);
    }
};

pump_options options_for(running_station const& station) {
    pump_options all;
    all.port = std::to_string(station.port());
    return all;
}

TEST(pump_station, reads_what_is_named) {
    running_station const station;
    auto const finished = host(options_for(station).read({"tank.level", "station.name"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 3);
    EXPECT_NE(finished.out.find("\ntank.level    flt     2 "), std::string::npos) << finished.out;
    EXPECT_NE(finished.out.find("\nstation.name  string  Pump station 7 "), std::string::npos)
        << finished.out;
}

TEST(pump_station, reads_all_of_the_map_where_nothing_is_named) {
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

TEST(pump_station, reports_entries_that_fail_by_its_status) {
    running_station const station;
    auto const refused = host(options_for(station).read({"tank.level", "tank2.level"}));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.out.find("modbus:2 illegal data address {"), std::string::npos)
        << refused.out;
    auto const unknown = host(options_for(station).read({"tank3.level"}));
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.out.find("generic:1 not found {operation: (string) \"read\", variable: "
                               "(string) \"tank3.level\"}\n"),
              std::string::npos)
        << unknown.out;
}

TEST(pump_station, shows_arrays_and_structures_in_its_table) {
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

TEST(pump_station, prints_values_at_length) {
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

TEST(pump_station, prints_structures_with_the_id_of_their_type) {
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

TEST(pump_station, prints_errors_and_reports_them_by_its_status) {
    running_station const station;
    auto const finished = host(options_for(station).read({"--print", "tank2.level", "tank.level"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out.find("tank2.level: modbus:2 illegal data address {"), 0U);
    EXPECT_TRUE(finished.out.ends_with("}\ntank.level:\n  (flt) 2\n")) << finished.out;
}

// The socket must not take the number of a stream that the program writes to.
TEST(pump_station, is_read_by_a_host_whose_streams_are_closed) {
    running_station const station;
    for (char const* const closed : {"<&-", "2>&-", "<&- 2>&-"}) {
        words command{"/bin/sh", "-c", std::string("exec \"$@\" ") + closed, "sh", IOHOST_PATH};
        auto const read = options_for(station).read({"tank2.level", "clock.ticks"});
        command.insert(command.end(), read.begin(), read.end());
        auto const finished = test_support::run(command);
        EXPECT_EQ(finished.status, 1) << closed;
        EXPECT_NE(finished.out.find("\nclock.ticks  u32   0 "), std::string::npos) << finished.out;
    }
}

TEST(pump_station, is_not_watched_for_a_reader_that_has_gone) {
    running_station const station;
    words command{"/bin/sh", "-c", "\"$@\" 2>/dev/null | head -n 1", "sh", IOHOST_PATH};
    auto const watch = options_for(station).with({"watch", "tank.level"});
    command.insert(command.end(), watch.begin(), watch.end());
    auto const finished = test_support::run(command);
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 1) << finished.out;
}

TEST(pump_station, converts_values_to_a_type) {
    running_station const station;
    auto const finished = host(options_for(station).read({"--as", "i32", "tank.level"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find("\ntank.level  i32   2 "), std::string::npos) << finished.out;
    auto const texts = host(options_for(station).read({"--as", "string[]", "pumps.run"}));
    EXPECT_EQ(texts.status, 0);
    EXPECT_NE(texts.out.find("\npumps.run   string[]  [\"true\", \"false\"]  "), std::string::npos)
        << texts.out;
}

TEST(pump_station, reports_what_does_not_convert_beside_what_does) {
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

TEST(pump_station, prints_what_it_has_converted) {
    running_station const station;
    auto const finished =
        host(options_for(station).read({"tank.level", "pipe.flow", "--print", "--as", "u8"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "tank.level:\n  (u8) 2\npipe.flow: generic:4 value too large\n");
}

TEST(pump_station, refuses_ports_that_are_none) {
    for (char const* const port : {"0", "65536", "-1", "http", ""}) {
        pump_options all;
        all.port = port;
        expect_refused(host(all.read()), "iohost: ");
    }
}

TEST(pump_station, refuses_a_host_without_a_name) {
    pump_options all;
    all.host = "";
    expect_refused(host(all.read()), "iohost: ");
}

TEST(pump_station, says_that_a_host_cannot_be_found) {
    pump_options all;
    all.host = "two..dots";
    auto const finished = host(all.read());
    EXPECT_EQ(finished.status, 1);
    EXPECT_TRUE(finished.err.starts_with("iohost: cannot find the host 'two..dots': "));
}

TEST(pump_station, refuses_a_map_that_is_missing) {
    pump_options all;
    all.map = "/nowhere/at_all.map";
    expect_refused(host(all.read()), "iohost: cannot read the map '/nowhere/at_all.map': "
                                     "No such file or directory\n");
}

TEST(pump_station, refuses_a_directory_as_a_map) {
    pump_options all;
    all.map = "/";
    expect_refused(host(all.read()), "iohost: cannot read the map '/': Is a directory\n");
}

TEST(pump_station, names_the_line_of_a_map_that_does_not_parse) {
    temporary_file const map("a holding 1 u16\n\nb holdign 1 u16\n");
    pump_options all;
    all.map = map.path();
    expect_refused(host(all.read()), "iohost: " + map.path() + ": line 3: unknown kind 'holdign'");
}

TEST(pump_station, a_wrong_word_of_a_map_stays_on_its_line) {
    temporary_file const map("a hol\x1b\x02\x7f 1 u16\n");
    pump_options all;
    all.map = map.path();
    expect_refused(host(all.read()),
                   "iohost: " + map.path() + ": line 1: unknown kind 'hol\\x1b\\x02\\x7f'");
}

TEST(pump_station, says_that_nobody_listens) {
    running_station station;
    auto const all = options_for(station);
    station.stop(SIGTERM);
    auto const finished = host(all.read());
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err,
              "iohost: cannot connect to 127.0.0.1:" + all.port + ": Connection refused\n");
}

TEST(pump_station, is_browsed) {
    running_station const station;
    auto const document = document_of(host(options_for(station).with({"--json", "browse"})));
    auto const text = document.dump();
    for (char const* const name :
         {"tank.level", "pump1.state", "station.name", "object<pump_state>"}) {
        EXPECT_NE(text.find(name), std::string::npos) << text;
    }
}

TEST(pump_station, takes_a_value_and_gives_it_back) {
    running_station const station;
    auto const options = options_for(station);
    auto const written = host(options.with({"write", "panel.limit=2.75"}));
    EXPECT_EQ(written.status, 0) << written.out << written.err;
    auto const read = document_of(host(options.with({"--json", "read", "panel.limit"})));
    EXPECT_EQ(read["entries"][0].value("value", 0.0), 2.75);
}

// panel.limit is a flt, to which the library converts no dbl that is not finite.
TEST(pump_station, takes_what_is_no_number_in_every_spelling) {
    running_station const station;
    auto const options = options_for(station);
    for (char const* const assigned : {"=nan", ":dbl=-inf", ":flt=nan", ":dbl=inf", ":dbl=nan"}) {
        auto const written = host(options.with({"write", std::string("panel.limit") + assigned}));
        EXPECT_EQ(written.status, 0) << assigned << written.out;
        auto const read = document_of(host(options.with({"--json", "read", "panel.limit"})));
        std::string const value = assigned;
        EXPECT_EQ(read["entries"][0]["value"], value.substr(value.find('=') + 1)) << assigned;
    }
}

TEST(pump_station, is_watched) {
    running_station const station;
    auto const finished =
        host(options_for(station).with({"watch", "--count", "1", "tank.level", "station.name"}));
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 2) << finished.out;
    EXPECT_NE(finished.out.find("  tank.level  2\n"), std::string::npos) << finished.out;
    EXPECT_NE(finished.out.find("  station.name  Pump station 7\n"), std::string::npos);
}

TEST(pump_station, has_a_backend_that_keeps_the_rules) {
    running_station const station;
    auto const finished =
        host(options_for(station).with({"check", "--allow-writes", "--write", "panel.limit=2.75"}));
    EXPECT_EQ(finished.status, 0) << finished.out << finished.err;
}

TEST(pump_station, has_a_backend_that_is_found_by_its_word) {
    auto const finished = host({"info", "modbus"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_NE(finished.out.find("modbus"), std::string::npos);
}

} // namespace
