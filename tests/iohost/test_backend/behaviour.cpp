#include "behaviour.hpp"

#include <cstdlib>
#include <vector>

namespace test_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using severity = config::verification_result::severity_type;

constexpr unsigned int longest_interval = 10'000;

void add(config::verification_result& verdict,
         severity how_bad,
         std::string const& message,
         std::string const& key) {
    config::verification_result::issue_type issue;
    issue.severity = how_bad;
    issue.message = message;
    issue.options = v2::utility::array<v2::utility::string>{key};
    verdict.add_issue(issue);
}

config::category settings() {
    std::vector<config::option::value_option> const modes{
        {"Calm", "says nothing", form_has("default_outside_choices") ? "asleep" : "calm"},
        {"Busy", "warns when it is opened", "busy"}};
    std::vector<config::option::value_option> numbers;
    if (form_has("choice_of_another_type")) {
        numbers = {{"None", "no more", 0U}, {"Many", "a lot", "many"}};
    }
    std::vector<config::option> options{
        {"fault", "Fault", "What it does wrong", v2::io_value("none")},
        {"mode", "Mode", "How much it says", v2::io_value("calm"), modes},
        {"variables", "Variables", "How many more there are", v2::io_value(0U), numbers},
        {"poll_interval", "Interval", "Milliseconds between polls", v2::io_value(20U)},
        {"cycle", "", "A folder that contains itself", v2::io_value(false)}};
    if (form_has("key_twice")) options.push_back(options.front());
    return {"Behaviour", "What is tested", false, false, options};
}

config::category place() {
    constexpr auto text = v2::io_data_type::basic_types::string;
    std::vector<config::option> options;
    if (form_has("required")) {
        options.emplace_back("station", "Station", "Where it stands", text);
    } else {
        options.emplace_back("station", "Station", "Where it stands", v2::io_value("north"));
    }
    if (form_has("key_in_two_categories")) options.push_back(settings().options()[0]);
    return {"Place", "", true, true, options};
}

bool fits(config::option const& option, v2::io_value const& value) {
    return value.converts_to(v2::io_data_type::scalar(option.value_type()));
}

void judge_key(config::verification_result& verdict,
               config::store const& values,
               std::string const& key,
               behaviour const& how) {
    auto const options = form();
    auto const* const option = options.get_option(key);
    if (option == nullptr) {
        if (!how.has("accepts_unknown_keys")) {
            add(verdict, severity::error, "there is no option '" + key + "'",
                how.has("names_strange_keys") ? "strange" : key);
        }
    } else if (!fits(*option, values.get(key)) && !how.has("accepts_wrong_types")) {
        add(verdict, severity::error, "the value of '" + key + "' has a wrong type", key);
    }
}

} // namespace

behaviour behaviour_of(config::store const& values) {
    behaviour how;
    how.fault = values.get("fault").value_or<std::string>("none");
    how.mode = values.get("mode", "calm").value_or<std::string>("calm");
    how.variables = values.get("variables").value_or<unsigned int>(0);
    how.poll_interval = values.get("poll_interval", 20U).value_or<unsigned int>(20);
    how.cycle = values.get("cycle").value_or<bool>(false);
    return how;
}

bool form_has(char const* what) {
    char const* const word = std::getenv("TEST_BACKEND_FORM");
    return word != nullptr && std::string(word) == what;
}

config::config_template form() {
    std::vector<config::category> const categories{settings(), place()};
    return config::config_template(categories);
}

config::verification_result verdict_on(config::store const& values) {
    auto const how = behaviour_of(values);
    config::verification_result verdict;
    for (auto const key : values.keys()) judge_key(verdict, values, key.str(), how);
    if (form_has("required") && !values.has("station") && !how.has("accepts_missing_values")) {
        add(verdict, severity::error, "a station is required", "station");
    }
    if (form_has("defaults_refused") && !values.has("mode")) {
        add(verdict, severity::error, "a mode is missed after all", "mode");
    }
    if (how.poll_interval > longest_interval) {
        add(verdict, severity::warning, "polls will be rare", "poll_interval");
    }
    return verdict;
}

} // namespace test_backend
