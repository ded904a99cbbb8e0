#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>

#include <string>

namespace linux_backend {

/// What this backend is told when it is opened, under these very names.
struct settings {
    std::string proc = "/proc";           ///< folder of processes and kernel
    std::string sys = "/sys";             ///< folder of devices
    unsigned int poll_interval_ms = 1000; ///< 1 to 60000
};

/// The options, with the defaults of `settings`.
[[nodiscard]] tavi::ioapi::v2::config::config_template settings_form();

/// \return all there is to say to a configuration; without an error among it, `read_settings` takes
/// the configuration.
[[nodiscard]] tavi::ioapi::v2::config::verification_result verify_settings(
    tavi::ioapi::v2::config::store const& values);

/// Values that `verify_settings` has found nothing wrong with. \throws io_exception  otherwise
[[nodiscard]] settings read_settings(tavi::ioapi::v2::config::store const& values);

} // namespace linux_backend
