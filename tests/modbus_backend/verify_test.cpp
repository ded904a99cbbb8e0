#include "support/module_test.hpp"

#include <examples/support/temporary_file.hpp>
#include <fcntl.h>
#include <modbus_backend/configuration.hpp>
#include <sys/stat.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using severity = config::verification_result::severity_type;
using test_support::temporary_file;

/// Changes of a configuration that is good: an empty value takes an option away.
using changes = std::vector<std::pair<std::string, v2::io_value>>;

/// Options that are good, but for what a test changes: `host` is one that no name server knows, so
/// that a test which tries to connect fails.
class verify : public test_support::module_test {
protected:
    [[nodiscard]] config::store good_values(changes const& changed = {}) const {
        config::store values;
        values.set("map", map_.path());
        values.set("host", "no-such-host.invalid");
        for (auto const& [key, value] : changed) {
            if (value.empty()) {
                values.remove(key);
            } else {
                values.set(key, value);
            }
        }
        return values;
    }

    /// Every issue as `severity option[,option]: message`.
    [[nodiscard]] texts issues(config::store const& values) const {
        config::verification_result verdict;
        verdict.add_issue({severity::error, "of yesterday", {}}); // must be replaced
        v2::io_error error(v2::io_errc::todo);                    // must be cleared
        module->verify(values, verdict, error);
        EXPECT_EQ(error, v2::io_error());
        texts lines;
        for (auto const& issue : verdict) {
            static constexpr char const* names[] = {"none", "information", "warning", "error"};
            std::string line = names[static_cast<int>(issue.severity)];
            char const* before = " ";
            for (auto const& key : issue.options) {
                line += before + key.str();
                before = ",";
            }
            lines.push_back(line + ": " + issue.message.str());
        }
        return lines;
    }

    /// Why it is not opened: `code problem`.
    [[nodiscard]] std::string why_refused(config::store const& values) const {
        test_support::recording_host host;
        v2::utility::string problem;
        v2::io_error error;
        auto* const opened = module->open(values, v2::backend_query(host), problem, error);
        EXPECT_EQ(opened, nullptr);
        EXPECT_TRUE(host.log().empty());
        EXPECT_TRUE(host.types().empty());
        return std::to_string(error.code()) + " " + problem.str();
    }

    temporary_file const map_{"a holding 0 u16\n"};
};

TEST_F(verify, a_good_configuration_of_defaults_is_beyond_reproach) {
    EXPECT_EQ(issues(good_values()), texts());
}

struct wrong_option {
    std::string key;
    v2::io_value value;
    std::string problem;

    ~wrong_option() noexcept = default; // as that of GoogleTest, which holds it
};

class verify_errors : public verify, public ::testing::WithParamInterface<wrong_option> {};

// What is an error keeps the backend from being opened, with the same words.
TEST_P(verify_errors, name_the_option_and_prevent_opening) {
    auto const values = good_values({{GetParam().key, GetParam().value}});
    EXPECT_EQ(issues(values), texts({"error " + GetParam().key + ": " + GetParam().problem}));
    EXPECT_EQ(why_refused(values), "260 " + GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    all,
    verify_errors,
    ::testing::Values(
        wrong_option{"map", {}, "'map' is required"},
        wrong_option{"map", "", "'map' is empty"},
        wrong_option{"host", {}, "'host' is required"},
        wrong_option{"host", "", "'host' is empty"},
        wrong_option{"host", v2::utility::array<int>{1}, "'host' takes a text"},
        wrong_option{"port", 0, "'port' is no number from 1 to 65535"},
        wrong_option{"port", 65536, "'port' is no number from 1 to 65535"},
        wrong_option{"port", "first",
                     "'port' takes a whole number from 0 to 4294967295, not "
                     "'first'"},
        wrong_option{"unit", 248, "'unit' is no number from 0 to 247, nor 255"},
        wrong_option{"unit", 254, "'unit' is no number from 0 to 247, nor 255"},
        wrong_option{"unit", 256, "'unit' is no number from 0 to 247, nor 255"},
        wrong_option{"byte_order", "middle", "'byte_order' takes one of: big, little"},
        wrong_option{"word_order", "BIG", "'word_order' takes one of: big, little"},
        wrong_option{"timeout_ms", 0, "'timeout_ms' is no number from 1 to 600000"},
        wrong_option{"timeout_ms", 600001, "'timeout_ms' is no number from 1 to 600000"},
        wrong_option{"poll_interval_ms", 0, "'poll_interval_ms' is no number from 1 to 3600000"},
        wrong_option{"poll_interval_ms", 3600001,
                     "'poll_interval_ms' is no number from 1 to 3600000"},
        wrong_option{"color", 1, "'color' is no option of this backend"}));

TEST_F(verify, the_ends_of_all_ranges_are_good) {
    for (auto const& changed : {changes{{"port", 1}, {"unit", 0}, {"timeout_ms", 1}},
                                changes{{"port", 65535}, {"unit", 247}, {"timeout_ms", 600000}},
                                changes{{"unit", 255}, {"poll_interval_ms", 1}},
                                changes{{"poll_interval_ms", 3600000}}}) {
        for (auto const& line : issues(good_values(changed))) {
            EXPECT_NE(line.rfind("error", 0), 0U) << line;
        }
    }
}

TEST_F(verify, says_all_that_is_wrong_at_once) {
    EXPECT_EQ(
        issues(good_values({{"host", ""}, {"port", 0}, {"map", "/no/map"}, {"size", 1}})),
        texts({"error size: 'size' is no option of this backend", "error host: 'host' is empty",
               "error port: 'port' is no number from 1 to 65535",
               "error map: cannot read the map '/no/map': No such file or directory"}));
}

struct wrong_map {
    std::string text;
    std::string reason;
};

class verify_maps : public verify, public ::testing::WithParamInterface<wrong_map> {};

TEST_P(verify_maps, are_named_by_file_and_line) {
    temporary_file const file(GetParam().text);
    auto const values = good_values({{"map", file.path()}});
    std::string const problem = file.path() + ": " + GetParam().reason;
    EXPECT_EQ(issues(values), texts({"error map: " + problem}));
    EXPECT_EQ(why_refused(values), "261 " + problem);
}

INSTANTIATE_TEST_SUITE_P(
    wrong,
    verify_maps,
    ::testing::Values(wrong_map{"a holding 0 u16\nb coils 1 boolean\n",
                                "line 2: unknown kind 'coils', not coil, discrete, holding or "
                                "input"},
                      wrong_map{"structure s\nx 0 u16\n", "line 1: structure 's' has no end"}));

TEST_F(verify, a_map_that_cannot_be_read_is_an_error) {
    std::string const directory = ::testing::TempDir();
    auto const problem = "cannot read the map '" + directory + "': Is a directory";
    EXPECT_EQ(issues(good_values({{"map", directory}})), texts({"error map: " + problem}));
    EXPECT_EQ(why_refused(good_values({{"map", directory}})), "261 " + problem);
    EXPECT_EQ(why_refused(good_values({{"map", "/no/map"}})),
              "261 cannot read the map '/no/map': No such file or directory");
}

TEST_F(verify, nobody_waits_for_a_map_that_never_ends) {
    std::string const pipe = map_.path() + "_pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (auto const& path : {pipe, std::string("/dev/zero")}) {
        EXPECT_EQ(issues(good_values({{"map", path}})),
                  texts({"error map: cannot read the map '" + path + "': it is no file"}));
    }
    std::remove(pipe.c_str());
}

TEST_F(verify, warns_of_a_poll_that_comes_before_the_timeout_of_the_last) {
    std::string const warning =
        "warning poll_interval_ms,timeout_ms: a controller that does not answer holds up the "
        "polling for longer than its interval";
    EXPECT_EQ(issues(good_values({{"poll_interval_ms", 1999}})), texts({warning}));
    EXPECT_EQ(issues(good_values({{"timeout_ms", 501}})), texts({warning}));
    EXPECT_EQ(issues(good_values({{"timeout_ms", 500}})), texts());
    EXPECT_EQ(issues(good_values({{"poll_interval_ms", 2000}})), texts());
}

TEST_F(verify, warns_of_a_map_without_variables) {
    temporary_file const file("# nothing\n");
    EXPECT_EQ(issues(good_values({{"map", file.path()}})),
              texts({"warning map: the map has no variables"}));
}

TEST_F(verify, mentions_what_is_unusual) {
    EXPECT_EQ(issues(good_values({{"port", "1502"}})),
              texts({"information port: the port is not the usual one, 502"}));
    EXPECT_EQ(issues(good_values({{"unit", 0}})),
              texts({"information unit: unit 0 means all devices behind a gateway, and none of "
                     "them answers"}));
}

// Nothing of the above is an error, so that only the world outside prevents it: here, a name.
TEST_F(verify, without_an_error_it_is_opened_if_the_controller_can_be_reached) {
    auto const values = good_values({{"port", 1502}, {"unit", 0}, {"poll_interval_ms", 1}});
    auto const refused = why_refused(values);
    EXPECT_EQ(refused.rfind("256 cannot find the host 'no-such-host.invalid': ", 0), 0U) << refused;
}

TEST_F(verify, values_that_convert_are_taken) {
    auto const checked = modbus_backend::check(good_values({{"port", "1502"},
                                                            {"unit", 7.0},
                                                            {"byte_order", "little"},
                                                            {"timeout_ms", 250LL},
                                                            {"poll_interval_ms", 300}}));
    EXPECT_EQ(checked.values.controller.host, "no-such-host.invalid");
    EXPECT_EQ(checked.values.controller.port, 1502);
    EXPECT_EQ(checked.values.controller.unit, 7);
    EXPECT_EQ(checked.values.orders.bytes, modbus_backend::part_order::little);
    EXPECT_EQ(checked.values.orders.words, modbus_backend::part_order::big);
    EXPECT_EQ(checked.values.controller.timeout, std::chrono::milliseconds(250));
    EXPECT_EQ(checked.values.poll_interval_ms, 300U);
    ASSERT_TRUE(checked.map.has_value());
    EXPECT_EQ(checked.map->variables().size(), 1U);
}

TEST_F(verify, defaults_stand_where_nothing_is_given) {
    auto const checked = modbus_backend::check(good_values());
    EXPECT_EQ(checked.values.controller.port, 502);
    EXPECT_EQ(checked.values.controller.unit, 255);
    EXPECT_EQ(checked.values.controller.timeout, std::chrono::milliseconds(2000));
    EXPECT_EQ(checked.values.poll_interval_ms, 500U);
}

} // namespace
