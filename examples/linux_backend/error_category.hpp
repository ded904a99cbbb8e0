#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>

namespace linux_backend {

/// The codes of the category "linux".
enum class linux_errc : int {
    file_absent = 1,     ///< there is no such file
    file_unreadable = 2, ///< it is there, and the system does not let it be read
    file_malformed = 3,  ///< it does not say what it should, or a number is beyond 64 bits
    value_absent = 4,    ///< it has no line for this value, as with another kernel
    read_only = 5,       ///< every variable is
    bad_option = 6,      ///< `verify` says which, and why
};

/// \return a record of the category "linux".
[[nodiscard]] tavi::ioapi::v2::io_error make_linux_error(linux_errc code) noexcept;

/// \return the one instance of the category.
[[nodiscard]] tavi::ioapi::v2::io_error_category const& linux_error_category() noexcept;

} // namespace linux_backend
