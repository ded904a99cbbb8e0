#include "support/host_process.hpp"

#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>

#include <string>

namespace {

using iohost_support::expect_refused;
using iohost_support::host;
using iohost_support::host_with_backend;
using iohost_support::words;

struct wrong_usage {
    char const* what;
    words arguments; ///< behind the test backend
    std::string line;
};

void PrintTo(wrong_usage const& each, std::ostream* out) {
    *out << each.what;
}

class command_line : public testing::TestWithParam<wrong_usage> {};

TEST_P(command_line, refuses_wrong_usage_by_one_line) {
    expect_refused(host_with_backend(GetParam().arguments), "iohost: " + GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    with_a_backend,
    command_line,
    testing::Values(
        wrong_usage{"no_command", {}, "A subcommand is required"},
        wrong_usage{"unknown_command", {"raedd"}, "there is no command 'raedd'; see iohost --help"},
        wrong_usage{"unknown_option", {"--bakcend", "x", "read"}, ""},
        wrong_usage{"unknown_option_of_a_command",
                    {"read", "tank.level", "--quick"},
                    "The following argument was not expected: --quick"},
        wrong_usage{"option_of_another_command", {"read", "--count", "3"}, ""},
        wrong_usage{"write_without_names", {"write"}, "NAME=VALUE is required"},
        wrong_usage{"watch_without_names", {"watch"}, "NAME is required"},
        wrong_usage{"write_without_a_value",
                    {"write", "tank.level"},
                    "NAME=VALUE: 'tank.level' is none, for it has no '=' behind a name"},
        wrong_usage{"write_without_a_name", {"write", "=5"}, "NAME=VALUE: '=5' is none"},
        wrong_usage{"write_of_a_member_of_a_member",
                    {"write", "a/b/c=5"},
                    "'a/b/c' is no name: it names a member of a member"},
        wrong_usage{"write_as_an_unknown_type",
                    {"write", "tank.level:i33=5"},
                    "'tank.level:i33=5': unknown type 'i33', not empty, boolean, u8, "},
        wrong_usage{"write_of_another_type",
                    {"write", "tank.level:u8=300"},
                    "'tank.level:u8=300': the value '300' is no u8\n"},
        wrong_usage{"write_of_malformed_json",
                    {"write", "tank.profile=[1,"},
                    "the value '[1,' is no well-formed JSON"},
        wrong_usage{"read_of_nothing", {"read", ""}, "'' is no name: it names no variable\n"},
        wrong_usage{"read_of_a_member_alone", {"read", "/speed"}, "'/speed' is no name"},
        wrong_usage{"read_as_an_unknown_type",
                    {"read", "--as", "i33"},
                    "--as: unknown type 'i33', not empty, boolean, u8, "},
        wrong_usage{"read_as_nothing", {"read", "--as"}, ""},
        wrong_usage{"read_as_a_structure",
                    {"read", "--as", "object<7>"},
                    "--as: no value is converted to 'object<7>', a structure; it takes empty, "
                    "boolean, u8, "},
        wrong_usage{"read_as_an_array_of_structures",
                    {"read", "--as", "object<7>[]"},
                    "--as: no value is converted to 'object<7>[]', a structure; "},
        wrong_usage{"form_with_a_configuration",
                    {"--config", "any.conf", "form"},
                    "--config has no use here: form shows the same with any configuration; verify "
                    "judges one\n"},
        wrong_usage{"form_with_a_value",
                    {"form", "--set", "mode=busy"},
                    "--set has no use here: form shows the same with any configuration"},
        wrong_usage{"info_with_a_value",
                    {"info", "--set", "mode=busy"},
                    "--set has no use here: info shows the same with any configuration"},
        wrong_usage{
            "config_without_a_name", {"--config", "", "read"}, "--config is empty; give a file\n"},
        wrong_usage{
            "set_of_two_wrong_values",
            {"--set", "variables=many", "--set", "cycle=maybe", "--set", "mode=busy", "read"},
            "option 'variables': the value 'many' is no u32; option 'cycle': the value "
            "'maybe' is no boolean\n"},
        wrong_usage{"watch_for_no_number", {"watch", "--for", "long", "tank.level"}, ""},
        wrong_usage{"watch_for_not_a_number", {"watch", "--for", "nan", "tank.level"}, "--for"},
        wrong_usage{"watch_for_no_time", {"watch", "--for", "0", "tank.level"}, "--for"},
        wrong_usage{"watch_for_less_than_no_time", {"watch", "--for", "-1", "tank.level"}, ""},
        wrong_usage{"watch_of_no_polls", {"watch", "--count", "0", "tank.level"}, "--count"},
        wrong_usage{"browse_of_two_folders", {"browse", "a", "b"}, ""},
        wrong_usage{"set_without_a_sign",
                    {"--set", "mode", "read"},
                    "--set KEY=VALUE: 'mode' is none, for it has no '=' behind a name\n"},
        wrong_usage{"set_without_a_key", {"--set", "=busy", "read"}, "--set KEY=VALUE: '=busy'"},
        wrong_usage{"set_without_anything", {"read", "--set"}, ""},
        wrong_usage{"set_of_no_number",
                    {"--set", "variables=many", "read"},
                    "option 'variables': the value 'many' is no u32\n"},
        wrong_usage{"set_of_nothing_for_a_number",
                    {"--set", "variables=", "read"},
                    "option 'variables': the value '' is no u32\n"},
        wrong_usage{"set_of_too_large_a_number",
                    {"--set", "variables=4294967296", "read"},
                    "option 'variables': the value '4294967296' is no u32\n"},
        wrong_usage{"set_of_no_truth_value",
                    {"--set", "cycle=maybe", "read"},
                    "option 'cycle': the value 'maybe' is no boolean\n"},
        wrong_usage{"set_of_an_unknown_key",
                    {"--set", "colour=red", "read"},
                    "there is no option 'colour'\n"},
        wrong_usage{"config_that_is_missing",
                    {"--config", "/nowhere/at_all.conf", "read"},
                    "cannot read the configuration '/nowhere/at_all.conf': No such file or "
                    "directory\n"},
        wrong_usage{"config_that_is_a_directory",
                    {"--config", "/", "read"},
                    "cannot read the configuration '/': Is a directory\n"}),
    [](auto const& each) { return each.param.what; });

TEST(command_line, refuses_wrong_usage_in_json_as_well) {
    expect_refused(host_with_backend({"--json", "raedd"}), "iohost: there is no command 'raedd'");
    expect_refused(host_with_backend({"--json", "write"}), "iohost: NAME=VALUE is required");
}

TEST(command_line, tells_a_connection_that_fails_from_wrong_usage) {
    auto const finished = host_with_backend({"fault=does_not_open"}, {"--json", "browse"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "iohost: nobody\\x0aanswers\n");
    auto const document = document_of(finished);
    EXPECT_EQ(document["operation"], "open");
    EXPECT_NE(document["error"]["code"], 0);
}

TEST(command_line, says_that_its_help_is_lost) {
    auto const finished =
        test_support::run({"/bin/sh", "-c", "exec \"$0\" --help >/dev/full", IOHOST_PATH});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "iohost: cannot write to standard output\n");
}

TEST(command_line, takes_a_backend) {
    expect_refused(host({}), "iohost: A subcommand is required");
    for (char const* const command : {"form", "verify", "browse", "read", "info", "check"}) {
        expect_refused(host({command}), "iohost: --backend is required; see iohost --help\n");
    }
    for (words const& command : {words{"--backend", "", "read"}, words{"info", ""}}) {
        expect_refused(host(command), "iohost: the name of the backend is empty; give the file of "
                                      "a module, or a word such as linux\n");
    }
    expect_refused(host({"--backend", "nonesuch", "read"}),
                   "iohost: there is no backend 'nonesuch': no nonesuch_backend.so in ");
    expect_refused(host({"--backend", "nowhere/no_module.so", "read"}), "iohost: cannot load '");
}

TEST(command_line, takes_options_of_the_program_behind_the_command) {
    auto const finished =
        host({"read", "tank.count", "--backend", TEST_BACKEND_PATH, "--set", "mode=busy"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "iohost: warning: busy\\x1b today\n");
}

TEST(command_line, prints_all_records_of_the_log_where_it_is_asked_to) {
    auto const finished = host_with_backend({"read", "--verbose", "tank.count"});
    EXPECT_EQ(finished.err, "iohost: information: opened\n"
                            "iohost: information: released with 0 subscriptions\n");
}

TEST(command_line, explains_itself) {
    auto const help = host({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    for (char const* const word : {"--backend MODULE", "--config FILE", "--set KEY=VALUE", "--json",
                                   "--verbose", "WORD_backend.so", "../WORD_backend",
                                   "../lib/iokern/backends", "Exit status: 0", "Examples:"}) {
        EXPECT_NE(help.out.find(word), std::string::npos) << word;
    }
    for (char const* const command :
         {"form", "verify", "browse", "read", "write", "watch", "info", "check"}) {
        EXPECT_NE(help.out.find(std::string("\n  ") + command + ' '), std::string::npos);
        auto const of_command = host({command, "--help"});
        EXPECT_EQ(of_command.status, 0) << command;
        EXPECT_NE(of_command.out.find("Example"), std::string::npos) << command;
        EXPECT_NE(of_command.out.find("\n  iohost "), std::string::npos) << command;
        for (char const* const option :
             {"--backend MODULE", "--config FILE", "--set KEY=VALUE", "--json", "--verbose"}) {
            EXPECT_NE(of_command.out.find(option), std::string::npos) << command << option;
        }
    }
}

TEST(command_line, says_which_versions_it_has) {
    auto const finished = host({"--version"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "iohost " IOHOST_VERSION
                            "\nlibiokern revision 0.5\nmodules with example_backend_module_3\n");
    EXPECT_EQ(finished.err, "");
}

TEST(command_line, says_where_its_output_cannot_be_written) {
    auto const finished =
        test_support::run({"sh", "-c", "exec \"$0\" --backend \"$1\" form >/dev/full", IOHOST_PATH,
                           TEST_BACKEND_PATH});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "iohost: cannot write to standard output\n");
}

using test_support::temporary_file;

TEST(config_file, gives_values_that_set_overrides) {
    temporary_file const config("# of the tests\n"
                                "\n"
                                "variables = 2   # two more\n"
                                "  mode=busy\r\n"
                                "station = \"a # \\\"b\\\"\" # quoted\n");
    auto const finished = host_with_backend({"--config", config.path(), "read", "v1"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.err, "iohost: warning: busy\\x1b today\n");
    auto const overridden = host_with_backend(
        {"--config", config.path(), "--set", "mode=busy", "--set", "mode=calm", "read", "v1"});
    EXPECT_EQ(overridden.status, 0);
    EXPECT_EQ(overridden.err, "");
}

TEST(config_file, that_is_malformed_is_refused_with_its_line) {
    struct {
        std::string text;
        char const* why;
    } const expected[] = {
        {"mode = calm\n\nbusy\n", "line 3: it has no '=' behind a key\n"},
        {" = calm\n", "line 1: it has no key in front of its '='\n"},
        {"mode = calm\nmode = busy\n", "line 2: the key 'mode' stands above, too\n"},
        {"mode = \"calm\n", "line 1: the quote of the value is not closed\n"},
        {"mode = \"calm\" busy\n", "line 1: something stands behind the quoted value\n"},
        {"mode = \"\\q\"\n", "line 1: the quoted value is no text of JSON\n"},
        {{"mode = calm\nx = a\0b\n", 20}, "line 2: it has a zero byte, as no text has\n"},
        {{"# a\0b\n", 6}, "line 1: it has a zero byte, as no text has\n"},
    };
    for (auto const& [text, why] : expected) {
        temporary_file const config(text);
        expect_refused(host_with_backend({"--config", config.path(), "read"}),
                       "iohost: " + config.path() + ": " + why);
    }
}

TEST(config_file, has_values_of_the_types_of_the_form) {
    temporary_file const config("variables = many\n");
    expect_refused(host_with_backend({"--config", config.path(), "read"}),
                   "iohost: option 'variables': the value 'many' is no u32\n");
}

TEST(config_file, may_begin_with_a_byte_order_mark) {
    temporary_file const config("\xEF\xBB\xBFvariables = 2\n");
    auto const finished = host_with_backend({"--config", config.path(), "read", "v1"});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST(config_file, leaves_unknown_keys_to_the_backend) {
    temporary_file const config("colour = red\n");
    auto const finished = host_with_backend({"--config", config.path(), "verify"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "severity  options  message\n"
                            "error     colour   there is no option 'colour'\n");
}

} // namespace
