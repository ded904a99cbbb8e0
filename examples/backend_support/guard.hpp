#pragma once

#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_exception.hpp>

namespace backend_support {

/// The rim of a module: no exception passes it. That of the library gives its error, each other
/// becomes `unhandled_exception`. The error is cleared first; `work` may set it.
template <class Work>
void guarded(tavi::ioapi::v2::io_error& error, Work work) noexcept {
    error.reset();
    try {
        work();
    } catch (tavi::ioapi::v2::io_exception const& failure) {
        error = failure.error();
    } catch (...) {
        error = tavi::ioapi::v2::io_errc::unhandled_exception;
    }
}

} // namespace backend_support
