#pragma once

#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error.hpp>

namespace modbus_backend {

/// The rim of the module: no exception passes it, and each becomes an error.
template <class Work>
void guarded(tavi::ioapi::v2::io_error& error, Work work) noexcept {
    error.reset();
    try {
        work();
    } catch (...) {
        error = tavi::ioapi::v2::io_errc::unhandled_exception;
    }
}

} // namespace modbus_backend
