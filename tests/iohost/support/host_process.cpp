#include "host_process.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace iohost_support {

words with_backend(words const& settings, words const& command) {
    words all{"--backend", TEST_BACKEND_PATH};
    for (auto const& setting : settings) {
        all.emplace_back("--set");
        all.push_back(setting);
    }
    all.insert(all.end(), command.begin(), command.end());
    return all;
}

finished_process host(words const& arguments) {
    words command{IOHOST_PATH};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return test_support::run(command);
}

finished_process host_with_backend(words const& command) {
    return host(with_backend({}, command));
}

finished_process host_with_backend(words const& settings, words const& command) {
    return host(with_backend(settings, command));
}

nlohmann::json document_of(finished_process const& finished) {
    auto document = nlohmann::json::parse(finished.out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << finished.out << finished.err;
    return document;
}

std::string line_of(std::string const& text, std::string const& head) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(head)) return line;
    }
    return {};
}

void expect_refused(finished_process const& finished, std::string const& line) {
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(std::count(finished.err.begin(), finished.err.end(), '\n'), 1) << finished.err;
    EXPECT_EQ(finished.err.substr(0, line.size()), line);
    EXPECT_TRUE(finished.err.ends_with('\n')) << finished.err;
}

environment_variable::environment_variable(std::string name, std::string const& value)
    : name_(std::move(name)) {
    ::setenv(name_.c_str(), value.c_str(), 1);
}

environment_variable::~environment_variable() {
    ::unsetenv(name_.c_str());
}

} // namespace iohost_support
