#pragma once

#include <tavi/ioapi/v2/config/store.hpp>

#include "configuration.hpp"
#include "host_services.hpp"
#include "loaded_module.hpp"
#include "options.hpp"

#include <optional>

namespace iohost {

/// A module with the services for it, the configuration that the command line gives and, from
/// `connect` on, the connection. What a backend has filled in goes before its session.
class session {
public:
    /// Load the module. Nothing is connected to. \throws setup_failure, operation_failure
    explicit session(options const& chosen);

    [[nodiscard]] loaded_module const& module() const noexcept { return module_; }
    [[nodiscard]] host_services& host() noexcept { return host_; }
    [[nodiscard]] tavi::ioapi::v2::io_structure_dictionary& structures() noexcept {
        return host_.structures();
    }

    /// What file and command line say of the configuration. \throws setup_failure
    [[nodiscard]] setting_texts texts() const;
    /// The configuration that they make. \throws setup_failure, operation_failure
    [[nodiscard]] tavi::ioapi::v2::config::store const& values();

    /// The connection, which the first call opens. \throws setup_failure, operation_failure
    [[nodiscard]] example::backend& connection();

    /// End the connection, where there is one.
    void disconnect() noexcept { backend_.reset(); }

private:
    options const& chosen_;
    loaded_module module_;
    host_services host_;
    std::optional<tavi::ioapi::v2::config::store> values_;
    backend_ptr backend_;
};

/// \throws setup_failure  where the command line gives a configuration to a command that shows the
/// same with any
void insist_on_no_configuration(options const& chosen);

} // namespace iohost
