#pragma once

#include "api.hpp"
#include "io_error_diagnostics.hpp"
#include "io_value.hpp"
#include "utility/string_view.hpp"

namespace tavi::ioapi::v2 {

/// The library's own list of diagnostics, with the operations that fill it: made by whoever
/// reports an error, and attached by `io_error::diagnostics`.
///
/// Copies share the list, and a move is a copy, so that there is always a list. Whoever holds it
/// sees every change: it must not change while another thread reads it.
class io_error_diagnostics_generic : public io_error_diagnostics {
public:
    class impl;

    /// A new, empty list. \throws std::bad_alloc
    TAVI_IOAPI_API io_error_diagnostics_generic();
    /// Shares the list.
    io_error_diagnostics_generic(io_error_diagnostics_generic const&) noexcept = default;
    /// Drops the own list and shares the other's.
    io_error_diagnostics_generic& operator=(io_error_diagnostics_generic const&) noexcept = default;
    /// Another's list might be none that can be changed, or none at all.
    io_error_diagnostics_generic& operator=(io_error_diagnostics const&) = delete;
    TAVI_IOAPI_API ~io_error_diagnostics_generic();

    /// Put a value under a key, in place of the one that may be there. Logarithmic to find, linear
    /// to insert; a list that grows copies all values. Ends all iterators. \throws std::bad_alloc,
    /// std::length_error; then the list is as it was
    TAVI_IOAPI_API void set(utility::string_view key, io_value value);

    /// Remove the entry under `key`; without one nothing happens. Ends all iterators.
    TAVI_IOAPI_API void remove(utility::string_view key);

private:
    [[nodiscard]] impl& own_list() const noexcept;
};

static_assert(sizeof(io_error_diagnostics_generic) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2
