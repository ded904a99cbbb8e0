#pragma once

#include <examples/support/child_process.hpp>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace iohost_support {

using test_support::finished_process;
using words = std::vector<std::string>;

/// The words of a command of the host with the test backend and these settings, `KEY=VALUE` each.
[[nodiscard]] words with_backend(words const& settings, words const& command);

/// Run the host with these words.
[[nodiscard]] finished_process host(words const& arguments);
/// Run the host with the test backend, which has no settings.
[[nodiscard]] finished_process host_with_backend(words const& command);
[[nodiscard]] finished_process host_with_backend(words const& settings, words const& command);

/// What it prints to standard output, which must be one JSON document.
[[nodiscard]] nlohmann::json document_of(finished_process const& finished);

/// The line of a text that begins so, or the empty text.
[[nodiscard]] std::string line_of(std::string const& text, std::string const& head);

/// Status 2, nothing on standard output, and one line on standard error that begins so.
void expect_refused(finished_process const& finished, std::string const& line);

/// A variable of the environment while it lives.
class environment_variable {
public:
    environment_variable(std::string name, std::string const& value);
    environment_variable(environment_variable const&) = delete;
    environment_variable& operator=(environment_variable const&) = delete;
    ~environment_variable();

private:
    std::string name_;
};

} // namespace iohost_support
