#pragma once

#include "error_category.hpp"

#include <stdexcept>
#include <string>
#include <utility>

namespace modbus_backend {

/// Why a backend cannot be opened; its text is for people. It never leaves the module.
class setup_error : public std::runtime_error {
public:
    setup_error(tavi::ioapi::v2::io_error error, std::string const& problem)
        : std::runtime_error(problem), error_(std::move(error)) {}
    setup_error(modbus_errc code, std::string const& problem)
        : setup_error(make_modbus_error(code), problem) {}

    [[nodiscard]] tavi::ioapi::v2::io_error const& error() const noexcept { return error_; }

private:
    tavi::ioapi::v2::io_error error_;
};

} // namespace modbus_backend
