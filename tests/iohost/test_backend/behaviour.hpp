#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>

#include <string>

namespace test_backend {

/// What its configuration makes of the backend. It keeps all rules unless it is given a fault.
struct behaviour {
    std::string fault = "none";
    std::string mode = "calm";       ///< `busy`: it warns when it is opened
    unsigned int variables = 0;      ///< besides those that are always there
    unsigned int poll_interval = 20; ///< in milliseconds
    bool cycle = false;              ///< a folder that contains itself

    [[nodiscard]] bool has(char const* what) const { return fault == what; }
};

/// Values of a wrong type give defaults.
[[nodiscard]] behaviour behaviour_of(tavi::ioapi::v2::config::store const& values);

/// What is wrong with the module itself, which no configuration can say: the word in the variable
/// TEST_BACKEND_FORM of the environment.
[[nodiscard]] bool form_has(char const* what);

[[nodiscard]] tavi::ioapi::v2::config::config_template form();
[[nodiscard]] tavi::ioapi::v2::config::verification_result verdict_on(
    tavi::ioapi::v2::config::store const& values);

} // namespace test_backend
