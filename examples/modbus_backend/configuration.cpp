#include "configuration.hpp"

#include "form.hpp"
#include "setup_error.hpp"

#include <backend_support/form_check.hpp>

#include <string>
#include <utility>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using severity = config::verification_result::severity_type;

/// Goes through the options one by one. One that has an error is not looked at further.
class inspection {
public:
    explicit inspection(config::store const& given) : given_(given), form_(make_form()) {}

    configuration finish() {
        backend_support::check_values(form_, given_, result_.verdict);
        auto& values = result_.values;
        take_text(option_key::map, values.map);
        take_text(option_key::host, values.controller.host);
        values.controller.port = static_cast<int>(number(option_key::port, 65'535));
        values.controller.unit = static_cast<int>(unit());
        values.orders = {order(option_key::byte_order), order(option_key::word_order)};
        auto const timeout = number(option_key::timeout_ms, 600'000);
        values.controller.timeout = std::chrono::milliseconds(timeout);
        values.poll_interval_ms = number(option_key::poll_interval_ms, 3'600'000);
        take_map();
        remark();
        return std::move(result_);
    }

private:
    [[nodiscard]] bool usable(char const* key) const {
        return result_.verdict.severity_for_option(key) < severity::error;
    }

    void say(severity level, char const* key, std::string const& message) {
        backend_support::add_issue(result_.verdict, level, key, message);
    }

    [[nodiscard]] v2::io_value value_of(char const* key) const {
        return config::get_or_default(given_, *form_.get_option(key));
    }

    void take_text(char const* key, std::string& text) {
        if (!usable(key)) return;
        text = value_of(key).as<std::string>();
        if (text.empty()) say(severity::error, key, "'" + std::string(key) + "' is empty");
    }

    /// \return a number from 1 on, or 0 where it is an error.
    unsigned int number(char const* key, unsigned int most) {
        if (!usable(key)) return 0;
        auto const stated = value_of(key).as<unsigned int>();
        if (stated >= 1 && stated <= most) return stated;
        say(severity::error, key,
            "'" + std::string(key) + "' is no number from 1 to " + std::to_string(most));
        return 0;
    }

    unsigned int unit() {
        if (!usable(option_key::unit)) return 0;
        auto const stated = value_of(option_key::unit).as<unsigned int>();
        if (stated > 247 && stated != 255) {
            say(severity::error, option_key::unit, "'unit' is no number from 0 to 247, nor 255");
        }
        return stated;
    }

    [[nodiscard]] part_order order(char const* key) const {
        bool const is_little = usable(key) && value_of(key).as<std::string>() == "little";
        return is_little ? part_order::little : part_order::big;
    }

    void take_map() {
        if (!usable(option_key::map)) return;
        try {
            result_.map = load_map(result_.values.map, result_.values.orders);
        } catch (setup_error const& error) {
            say(severity::error, option_key::map, error.what());
        }
    }

    void remark() {
        auto const& controller = result_.values.controller;
        if (result_.map && result_.map->variables().empty()) {
            say(severity::warning, option_key::map, "the map has no variables");
        }
        if (usable(option_key::port) && controller.port != 502) {
            say(severity::information, option_key::port, "the port is not the usual one, 502");
        }
        if (usable(option_key::unit) && controller.unit == 0) {
            say(severity::information, option_key::unit,
                "unit 0 means all devices behind a gateway, and none of them answers");
        }
        remark_timing();
    }

    // The defaults alone are no reason to warn of.
    void remark_timing() {
        if (!usable(option_key::timeout_ms) || !usable(option_key::poll_interval_ms)) return;
        bool const is_given =
            given_.has(option_key::timeout_ms) || given_.has(option_key::poll_interval_ms);
        auto const interval = std::chrono::milliseconds(result_.values.poll_interval_ms);
        if (!is_given || interval >= result_.values.controller.timeout) return;
        result_.verdict.add_issue(
            {severity::warning,
             "a controller that does not answer holds up the polling for longer than its interval",
             {option_key::poll_interval_ms, option_key::timeout_ms}});
    }

    config::store const& given_;
    config::config_template form_;
    configuration result_;
};

} // namespace

configuration check(config::store const& given) {
    return inspection(given).finish();
}

// A map that was not even looked for is a missing or mistyped option.
void require_usable(configuration const& checked) {
    auto const* const issue = backend_support::first_error(checked.verdict);
    if (issue == nullptr) return;
    bool const is_of_map = issue->options.size() == 1 && issue->options[0] == option_key::map;
    bool const was_looked_for = !checked.values.map.empty();
    throw setup_error(is_of_map && was_looked_for ? modbus_errc::bad_map : modbus_errc::bad_setting,
                      issue->message.str());
}

} // namespace modbus_backend
