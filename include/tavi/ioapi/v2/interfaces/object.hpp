#pragma once

#include "../api.hpp"

namespace tavi::ioapi::v2::interfaces {

/// The root of objects that are shared by reference count across modules. Any module may derive
/// from it and counts by itself, atomically and from 1 on; only for diagnostics,
/// `io_error_diagnostics_impl`, does `make_object_implementation` supply the count.
class TAVI_IOAPI_API object {
public:
    object(object const&) = delete;
    object& operator=(object const&) = delete;

    /// Called by `release`; nobody else deletes a counted object.
    virtual ~object();

    /// Add one reference. \return the new count. Safe from all threads.
    virtual unsigned int add_ref() = 0;

    /// Drop one reference; the last one destroys the object. \return the new count. Safe from all
    /// threads.
    virtual unsigned int release() = 0;

protected:
    object() noexcept = default;
};

} // namespace tavi::ioapi::v2::interfaces
