#pragma once

#include <backend_module.hpp>
#include <examples/support/opened_module.hpp>

#include <memory>

namespace endurance {

using backend_ptr = std::unique_ptr<example::backend, test_support::release_backend>;

/// Open a backend for a host that keeps nothing of what it is told. \param host  outlives it
/// \throws std::runtime_error
[[nodiscard]] backend_ptr opened(example::backend_module const& module,
                                 example::v2::config::store const& values,
                                 example::v2::host_interface& host);

} // namespace endurance
