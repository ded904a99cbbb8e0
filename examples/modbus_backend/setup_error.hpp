#pragma once

#include "error_category.hpp"

#include <stdexcept>
#include <string>

namespace modbus_backend {

/// Why a backend cannot be opened; its text is for people. It never leaves the module.
class setup_error : public std::runtime_error {
public:
    setup_error(modbus_errc code, std::string const& problem)
        : std::runtime_error(problem), code_(code) {}

    [[nodiscard]] modbus_errc code() const noexcept { return code_; }

private:
    modbus_errc code_;
};

} // namespace modbus_backend
