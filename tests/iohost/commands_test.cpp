#include "support/host_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using iohost_support::document_of;
using iohost_support::environment_variable;
using iohost_support::host_with_backend;
using iohost_support::line_of;
using iohost_support::words;

TEST(form_command, shows_options_as_a_person_reads_them) {
    environment_variable const form("TEST_BACKEND_FORM", "required");
    auto const finished = host_with_backend({"form"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out,
              "Behaviour: What is tested\n"
              "  fault          string   default \"none\"\n"
              "      Fault: What it does wrong\n"
              "  mode           string   default \"calm\"\n"
              "      Mode: How much it says\n"
              "      choice \"calm\"  Calm: says nothing\n"
              "      choice \"busy\"  Busy: warns when it is opened\n"
              "  variables      u32      default 0\n"
              "      Variables: How many more there are\n"
              "  poll_interval  u32      default 20\n"
              "      Interval: Milliseconds between polls\n"
              "  cycle          boolean  default false\n"
              "      A folder that contains itself\n"
              "\n"
              "Place (its values are best chosen with a connection; folded at first)\n"
              "  station  string  required\n"
              "      Station: Where it stands\n");
}

TEST(form_command, shows_options_in_json) {
    environment_variable const form("TEST_BACKEND_FORM", "required");
    auto const document = document_of(host_with_backend({"--json", "form"}));
    auto const& categories = document["categories"];
    ASSERT_EQ(categories.size(), 2U);
    EXPECT_EQ(categories[0]["name"], "Behaviour");
    EXPECT_EQ(categories[0]["wants_connection"], false);
    EXPECT_EQ(categories[1]["wants_connection"], true);
    EXPECT_EQ(categories[1]["collapsed"], true);
    auto const& mode = categories[0]["options"][1];
    EXPECT_EQ(mode["key"], "mode");
    EXPECT_EQ(mode["type"], "string");
    EXPECT_EQ(mode["required"], false);
    EXPECT_EQ(mode["default"], "calm");
    EXPECT_EQ(mode["choices"][1]["value"], "busy");
    auto const& station = categories[1]["options"][0];
    EXPECT_EQ(station["required"], true);
    EXPECT_EQ(station["default"], nullptr);
    EXPECT_EQ(station["choices"], nlohmann::json::array());
}

TEST(verify_command, has_no_issues_with_a_good_configuration) {
    auto const finished = host_with_backend({"mode=busy"}, {"verify"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "no issues\n");
    EXPECT_EQ(finished.err, ""); // nothing was opened
}

TEST(verify_command, passes_warnings_and_no_errors) {
    auto const warned = host_with_backend({"poll_interval=20000"}, {"verify"});
    EXPECT_EQ(warned.status, 0);
    EXPECT_EQ(warned.out, "severity  options        message\n"
                          "warning   poll_interval  polls will be rare\n");
    auto const finished = host_with_backend({"poll_interval=20000", "x=1"}, {"--json", "verify"});
    EXPECT_EQ(finished.status, 1);
    auto const document = document_of(finished);
    EXPECT_EQ(document["valid"], false);
    ASSERT_EQ(document["issues"].size(), 2U);
    auto const& issue = document["issues"][0];
    EXPECT_EQ(issue["severity"], "error");
    EXPECT_EQ(issue["options"], nlohmann::json::array({"x"}));
    EXPECT_EQ(issue["message"], "there is no option 'x'");
}

TEST(verify_command, goes_on_after_values_of_a_wrong_type) {
    auto const finished =
        host_with_backend({"cycle=maybe", "variables=many", "poll_interval=20000"}, {"verify"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(line_of(finished.out, "error     variables"),
              "error     variables      the value of 'variables' has a wrong type");
    EXPECT_EQ(line_of(finished.out, "error     cycle"),
              "error     cycle          the value 'maybe' is no boolean");
    EXPECT_EQ(line_of(finished.out, "warning   poll_interval"),
              "warning   poll_interval  polls will be rare");
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 4);
}

TEST(browse_command, shows_the_tree) {
    auto const finished = host_with_backend({"browse", "plant"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out,
              "name            class     type                identifier    description\n"
              "tank            folder    -                   plant//tank   folder\n"
              "  tank.level    variable  flt                 tank.level    m above ground\n"
              "  tank.count    variable  u16                 tank.count    -\n"
              "  tank.name     variable  string              tank.name     -\n"
              "  tank.open     variable  boolean             tank.open     -\n"
              "  tank.profile  variable  i32[]               tank.profile  -\n"
              "  tank.volume   variable  dbl                 tank.volume   -\n"
              "pump            folder    -                   plant//pump   folder\n"
              "  pump.state    variable  object<pump_state>  pump.state    -\n"
              "  pump.fixed    variable  u8                  pump.fixed    -\n");
}

TEST(browse_command, browses_a_folder_by_the_name_that_it_shows) {
    auto const finished = host_with_backend({"browse", "plant//pump"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(std::count(finished.out.begin(), finished.out.end(), '\n'), 3);
}

TEST(browse_command, ends_where_a_folder_contains_itself) {
    auto const finished = host_with_backend({"cycle=true"}, {"browse"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_NE(finished.out.find("\n  loop "), std::string::npos);
    EXPECT_NE(finished.out.find("folder (shown elsewhere)\n"), std::string::npos);
    EXPECT_EQ(finished.out.find("\n    loop "), std::string::npos);
}

TEST(browse_command, shows_the_tree_in_json) {
    auto const document = document_of(host_with_backend({"cycle=true"}, {"browse", "--json"}));
    auto const& nodes = document["nodes"];
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_EQ(nodes[0]["name"], "plant");
    EXPECT_EQ(nodes[0]["class"], "folder");
    EXPECT_EQ(nodes[0]["type"], nullptr);
    auto const& tank = nodes[0]["nodes"][0];
    EXPECT_EQ(tank["name"], "plant//tank");
    EXPECT_EQ(tank["browse_name"], "tank");
    EXPECT_EQ(tank["nodes"].size(), 6U);
    EXPECT_EQ(tank["nodes"][0]["type"], "flt");
    EXPECT_EQ(tank["nodes"][0]["description"], "m above ground");
    EXPECT_EQ(nodes[2]["nodes"][0]["repeated"], true);
}

TEST(browse_command, shows_nothing_that_controls_the_terminal) {
    auto const finished = host_with_backend({"browse"});
    EXPECT_EQ(finished.out.find('\x1b'), std::string::npos);
    EXPECT_NE(finished.out.find("clears\\x1b[2J"), std::string::npos);
}

TEST(browse_command, reports_an_unknown_folder_by_its_status) {
    auto const finished = host_with_backend({"browse", "nowhere"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "iohost: browse 'nowhere': generic:1 not found\n");
    auto const document = document_of(host_with_backend({"--json", "browse", "no//where"}));
    EXPECT_EQ(document["operation"], "browse");
    EXPECT_EQ(document["folder"], "no//where");
    EXPECT_EQ(document["error"]["code"], 1);
}

TEST(operations, that_fail_as_a_whole_are_documents_in_json) {
    auto const finished = host_with_backend({"fault=browse_fails"}, {"browse", "--json"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "iohost: browse: device:7 valve stuck\n");
    auto const document = document_of(finished);
    EXPECT_EQ(document["operation"], "browse");
    EXPECT_EQ(document["error"]["category"], "device");
    EXPECT_EQ(document["error"]["code"], 7);
    auto const read = host_with_backend({"fault=read_fails"}, {"read", "tank.level"});
    EXPECT_EQ(read.status, 1);
    EXPECT_EQ(read.err, "iohost: read: device:7 valve stuck\n");
}

constexpr char const* moment = "2023-11-14T22:13:20.0000000Z";

TEST(read_command, reads_what_is_named) {
    auto const finished =
        host_with_backend({"read", "tank.level", "pump.state/speed", "a//b", "#17", "##17"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    std::string const time = moment;
    EXPECT_EQ(finished.out,
              "identifier        type  value  time                          quality  error\n"
              "tank.level        flt   2.5    " +
                  time +
                  "  good     -\n"
                  "pump.state/speed  flt   1.5    " +
                  time +
                  "  good     -\n"
                  "a//b              u8    1      " +
                  time +
                  "  good     -\n"
                  "#17               u32   170    " +
                  time +
                  "  good     -\n"
                  "##17              u32   171    " +
                  time + "  good     -\n");
}

TEST(read_command, reads_all_that_browsing_finds_where_nothing_is_named) {
    auto const finished = host_with_backend({"variables=1200"}, {"read", "--json"});
    EXPECT_EQ(finished.status, 1); // odd.broken
    EXPECT_EQ(finished.err, "");
    auto const document = document_of(finished);
    ASSERT_EQ(document["entries"].size(), 1218U);
    EXPECT_EQ(document["entries"][1217]["name"], "v1199");
    EXPECT_EQ(document["entries"][1217]["value"], 1199);
}

TEST(read_command, shows_errors_with_their_diagnostics) {
    auto const finished = host_with_backend({"read", "odd.broken", "no.such", "tank.level/x"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_TRUE(line_of(finished.out, "odd.broken")
                    .ends_with("device:7 valve stuck {address: (u32) 40001, device_text: (string) "
                               "\"no answer\"}"))
        << finished.out;
    EXPECT_TRUE(line_of(finished.out, "no.such").ends_with("generic:1 not found"));
    EXPECT_TRUE(line_of(finished.out, "tank.level/x").ends_with("generic:2 invalid property"));
}

TEST(read_command, shows_values_and_errors_in_json) {
    auto const finished = host_with_backend({"read", "--json", "pump.state", "odd.big", "odd.nan",
                                             "odd.bytes", "odd.doubtful", "odd.broken"});
    EXPECT_EQ(finished.status, 1);
    auto const entries = document_of(finished)["entries"];
    ASSERT_EQ(entries.size(), 6U);
    EXPECT_EQ(entries[0],
              nlohmann::json::parse(R"({"name": "pump.state", "type": "object<pump_state>",
        "value": {"currents": [1, 2], "on": true, "runs": 7, "speed": 1.5},
        "time": "2023-11-14T22:13:20.0000000Z", "quality": "good"})"));
    EXPECT_EQ(entries[1]["value"].get<long long>(), 9007199254740993LL);
    EXPECT_EQ(entries[2]["value"], "nan");
    EXPECT_EQ(entries[3]["value"], "a\xEF\xBF\xBDz");
    EXPECT_EQ(entries[4]["quality"], "bad");
    EXPECT_EQ(entries[5], nlohmann::json::parse(R"({"name": "odd.broken", "error": {"code": 7,
        "category": "device", "message": "valve stuck",
        "diagnostics": {"address": 40001, "device_text": "no answer"}}})"));
}

TEST(read_command, keeps_names_as_they_are_in_json) {
    auto const document = document_of(host_with_backend({"--json", "read", "esc\x1b[2J", "##17"}));
    EXPECT_EQ(document["entries"][0]["name"], "esc\x1b[2J");
    EXPECT_EQ(document["entries"][0]["value"], "bell\a");
    EXPECT_EQ(document["entries"][1]["name"], "##17");
}

TEST(read_command, prints_values_at_length_and_as_another_type) {
    auto const finished = host_with_backend({"read", "--print", "tank.open", "tank.count"});
    EXPECT_EQ(finished.out, "tank.open:\n  (boolean) true\ntank.count:\n  (u16) 1500\n");
    auto const converted = host_with_backend({"read", "--as", "string", "tank.count"});
    EXPECT_NE(line_of(converted.out, "tank.count  string  1500 "), "") << converted.out;
    auto const failed = host_with_backend({"read", "--as", "u8", "tank.count", "tank.level"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(line_of(failed.out, "tank.count").ends_with("generic:4 value too large"));
}

/// What the backend says that was written, one line each.
std::string written(words const& assignments) {
    words command{"--verbose", "write"};
    command.insert(command.end(), assignments.begin(), assignments.end());
    auto const finished = host_with_backend(command);
    EXPECT_EQ(finished.status, 0) << finished.out;
    std::string lines;
    std::string const head = "iohost: information: write ";
    for (auto at = finished.err.find(head); at != std::string::npos;
         at = finished.err.find(head, at + 1)) {
        auto const begin = at + head.size();
        lines += finished.err.substr(begin, finished.err.find('\n', begin) - begin) + '\n';
    }
    return lines;
}

TEST(write_command, writes_values_that_the_backend_converts) {
    EXPECT_EQ(written({"tank.level=1500"}), "\"tank.level\" = (flt) 1500\n");
    EXPECT_EQ(written({"tank.count=7", "tank.open=false"}),
              "\"tank.count\" = (u16) 7\n\"tank.open\" = (boolean) false\n");
    EXPECT_EQ(written({"tank.name=south"}), "\"tank.name\" = (string) \"south\"\n");
    EXPECT_EQ(written({"tank.name=\"5\""}), "\"tank.name\" = (string) \"5\"\n");
    EXPECT_EQ(written({"tank.name="}), "\"tank.name\" = (string) \"\"\n");
    EXPECT_EQ(written({"tank.level:u16=3"}), "\"tank.level\" = (flt) 3\n");
    EXPECT_EQ(written({"tank.profile=[4, 5]"}),
              "\"tank.profile\" = array (2) {\\x0a  (i32) 4\\x0a  (i32) 5\\x0a}\n");
    EXPECT_EQ(written({"#17=-0", "a//b=2"}), "17 = (u32) 0\n\"a/b\" = (u8) 2\n");
}

TEST(write_command, writes_members_and_structures) {
    auto const member = written({"pump.state/runs=8"});
    EXPECT_NE(member.find("[runs] =>\\x0a  (u16) 8\\x0a"), std::string::npos) << member;
    EXPECT_NE(member.find("[speed] =>\\x0a  (flt) 1.5\\x0a"), std::string::npos) << member;
    auto const whole = written({R"(pump.state={"runs": 9, "currents": [3]})"});
    EXPECT_NE(whole.find("[runs] =>\\x0a  (u16) 9\\x0a"), std::string::npos) << whole;
    EXPECT_NE(whole.find("(u16) 3\\x0a"), std::string::npos) << whole;
}

TEST(write_command, reports_the_outcome_of_each) {
    auto const finished =
        host_with_backend({"write", "tank.count=7", "tank.count=70000", "tank.level=deep",
                           "pump.fixed=1", "no.such=1", R"(pump.state={"rnus": 1})",
                           R"(tank.level={"a": 1})", R"(no.such={"a": 1})"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out, "identifier  outcome      error\n"
                            "tank.count  written      -\n"
                            "tank.count  not written  generic:4 value too large\n"
                            "tank.level  not written  generic:3 incompatible type\n"
                            "pump.fixed  not written  generic:6 not supported\n"
                            "no.such     not written  generic:1 not found\n"
                            "pump.state  not written  generic:2 invalid property {member: "
                            "(string) \"rnus\", operation: (string) \"convert\", variable: "
                            "(string) \"pump.state\"}\n"
                            "tank.level  not written  generic:3 incompatible type {operation: "
                            "(string) \"convert\", variable: (string) \"tank.level\"}\n"
                            "no.such     not written  generic:1 not found {operation: (string) "
                            "\"read\", variable: (string) \"no.such\"}\n");
}

TEST(write_command, names_variable_and_member_of_what_it_refuses_itself) {
    auto const finished = host_with_backend({"--json", "write", R"(pump.state/speed={"x": 1})",
                                             R"(pump.state/none={"x": 1})",
                                             R"(pump.state={"currents": [1, "many"]})"});
    EXPECT_EQ(finished.status, 1);
    auto const entries = document_of(finished)["entries"];
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0]["error"]["diagnostics"],
              nlohmann::json::parse(
                  R"({"member": "speed", "operation": "convert", "variable": "pump.state"})"));
    EXPECT_EQ(entries[1]["error"]["diagnostics"],
              nlohmann::json::parse(
                  R"({"member": "none", "operation": "read", "variable": "pump.state"})"));
    EXPECT_EQ(entries[2]["error"]["diagnostics"],
              nlohmann::json::parse(R"({"index": 1, "member": "currents", "operation": "convert",
                  "variable": "pump.state"})"));
}

TEST(write_command, refuses_an_object_with_a_member_twice) {
    iohost_support::expect_refused(
        host_with_backend({"write", R"(pump.state={"runs": 1, "runs": 2})"}),
        "iohost: the value '{\"runs\": 1, \"runs\": 2}' has the member 'runs' twice\n");
}

TEST(write_command, reports_outcomes_in_json) {
    auto const finished = host_with_backend({"--json", "write", "tank.count=7", "no.such=1"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(document_of(finished)["entries"], nlohmann::json::parse(R"([
        {"name": "tank.count", "written": true},
        {"name": "no.such", "written": false, "error": {"code": 1, "category": "generic",
            "message": "not found", "diagnostics": {}}}])"));
}

} // namespace
