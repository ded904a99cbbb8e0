#pragma once

#include "api.hpp"
#include "io_error.hpp"

#include <stdexcept>

namespace tavi::ioapi::v2 {

/// An `io_error` on its way as an exception. `what()` is the message of the code, fixed when the
/// exception was made. May be thrown in one module and caught in another.
class TAVI_IOAPI_API io_exception : public std::runtime_error {
public:
    /// Takes the diagnostics of `error`, whose count does not change. \throws std::bad_alloc
    explicit io_exception(io_error error);

    io_exception(io_exception const&) = default;
    io_exception& operator=(io_exception const&) = default;
    ~io_exception() noexcept override;

    /// The error on its way.
    [[nodiscard]] io_error const& error() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return error_; }
    /// The same as `error().code()`.
    [[nodiscard]] int code() const noexcept { return error_.code(); }

private:
    io_error error_;
};

static_assert(sizeof(io_exception) == sizeof(std::runtime_error) + sizeof(io_error));

} // namespace tavi::ioapi::v2
