#pragma once

#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>

/// \file
/// Records of the generic category for the library's own frames. Public code asks an exported
/// function for the category; here its address is known, which is most of the cost of a record.

namespace tavi::ioapi::v2::detail {

/// The one instance of the generic category. Records outlive static objects: one that is printed by
/// a late exit handler still asks its category. A member of a union is not destroyed with it, so
/// the table pointer stays that of the derived class.
union immortal_category {
    constexpr immortal_category() noexcept : category() {}
    ~immortal_category() {} // defaulted, it would be deleted
    io_error_generic_category category;
};

[[gnu::visibility("hidden")]] extern immortal_category generic_category;

/// \return the same as `io_error(code)`.
[[nodiscard]] inline io_error outcome(io_errc code) noexcept {
    return io_error(generic_category.category, static_cast<int>(code));
}

/// As `report`, where there are diagnostics to be released.
[[gnu::cold, gnu::noinline]] inline void report_anew(io_error& error, io_errc code) noexcept {
    error = outcome(code);
}

/// Give `error` the outcome of an operation, in the place of what it has. The release of
/// diagnostics stands apart: the usual way has no call in it and saves no registers for one.
inline void report(io_error& error, io_errc code) noexcept {
    if (error.has_diagnostics()) [[unlikely]] {
        report_anew(error, code);
    } else {
        error = outcome(code);
    }
}

} // namespace tavi::ioapi::v2::detail
