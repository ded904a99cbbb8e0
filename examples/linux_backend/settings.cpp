#include "settings.hpp"

#include <tavi/ioapi/v2/config/category.hpp>
#include <tavi/ioapi/v2/config/option.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <backend_support/form_check.hpp>

#include <filesystem>
#include <system_error>
#include <utility>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using severity_type = config::verification_result::severity_type;

constexpr unsigned int longest_interval_ms = 60'000;
constexpr unsigned int busy_interval_ms = 100;

bool is_faulty(config::verification_result const& verdict, char const* key) {
    return verdict.severity_for_option(key) >= severity_type::error;
}

void verify_folder(std::string const& path, char const* key, config::verification_result& verdict) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) return;
    backend_support::add_issue(verdict, severity_type::error, key,
                               "'" + std::string(key) + "' names no folder: '" + path + "'");
}

void verify_interval(unsigned int interval_ms, config::verification_result& verdict) {
    char const* const key = "poll_interval_ms";
    if (interval_ms < 1 || interval_ms > longest_interval_ms) {
        backend_support::add_issue(verdict, severity_type::error, key,
                                   "'poll_interval_ms' takes a number from 1 to 60000");
    } else if (interval_ms < busy_interval_ms) {
        backend_support::add_issue(verdict, severity_type::warning, key,
                                   "with a 'poll_interval_ms' below 100 the reading itself is a "
                                   "load that the variables show");
    }
}

} // namespace

config::config_template settings_form() {
    settings const defaults;
    config::category source("source", "Where the data comes from", false, false);
    source.add_option(
        {"proc", "Kernel folder", "Folder with the texts of processes and kernel", defaults.proc});
    source.add_option({"sys", "Device folder", "Folder with the texts of devices", defaults.sys});
    config::category timing("timing", "How often the data is read", false, true);
    timing.add_option({"poll_interval_ms", "Poll interval",
                       "Time between two looks at subscribed variables, 1 to 60000 ms",
                       defaults.poll_interval_ms});
    config::config_template form;
    form.add_category(std::move(source));
    form.add_category(std::move(timing));
    return form;
}

config::verification_result verify_settings(config::store const& values) {
    settings const defaults;
    config::verification_result verdict;
    backend_support::check_values(settings_form(), values, verdict);
    if (!is_faulty(verdict, "proc")) {
        verify_folder(values.get("proc", defaults.proc).as<std::string>(), "proc", verdict);
    }
    if (!is_faulty(verdict, "sys")) {
        verify_folder(values.get("sys", defaults.sys).as<std::string>(), "sys", verdict);
    }
    if (!is_faulty(verdict, "poll_interval_ms")) {
        auto const interval = values.get("poll_interval_ms", defaults.poll_interval_ms);
        verify_interval(interval.as<unsigned int>(), verdict);
    }
    return verdict;
}

settings read_settings(config::store const& values) {
    settings const defaults;
    return {values.get("proc", defaults.proc).as<std::string>(),
            values.get("sys", defaults.sys).as<std::string>(),
            values.get("poll_interval_ms", defaults.poll_interval_ms).as<unsigned int>()};
}

} // namespace linux_backend
