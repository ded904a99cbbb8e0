#pragma once

#include <modbus/modbus.h>

#include <cerrno>
#include <memory>
#include <stdexcept>
#include <string>

namespace station {

struct free_modbus_context {
    void operator()(modbus_t* context) const noexcept { modbus_free(context); }
};
using modbus_context = std::unique_ptr<modbus_t, free_modbus_context>;

/// What went wrong, with the reason that the protocol library left behind.
[[nodiscard]] inline std::runtime_error failure(std::string const& what) {
    return std::runtime_error(what + ": " + modbus_strerror(errno));
}

} // namespace station
