#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_error.hpp>

#include "function_code.hpp"
#include "variable.hpp"

namespace modbus_backend {

/// Keys of diagnostics beside those of `diagnostics_key`.
namespace own_diagnostics_key {
inline constexpr char const* function = "function"; ///< number of the function of the protocol
inline constexpr char const* variable = "variable"; ///< as the map calls it
} // namespace own_diagnostics_key

/// \return the error, with diagnostics: which operation has failed for which variable, by its name
/// and its address, and the number of the exception where the controller has answered with one.
[[nodiscard]] tavi::ioapi::v2::io_error failed_exchange(tavi::ioapi::v2::io_error error,
                                                        function_code function,
                                                        variable const& concerned);

/// The same for what was refused before anything was asked of the controller.
[[nodiscard]] tavi::ioapi::v2::io_error refused(tavi::ioapi::v2::io_error error,
                                                char const* operation,
                                                variable const& concerned);

/// The same for a write, with the number of the function by which it would have been done; of a
/// variable that can only be read, of the one that reads it.
[[nodiscard]] tavi::ioapi::v2::io_error refused_write(tavi::ioapi::v2::io_error error,
                                                      variable const& concerned);

/// The same for a value, with the type that it has and the one that it must have.
[[nodiscard]] tavi::ioapi::v2::io_error refused_value(tavi::ioapi::v2::io_error error,
                                                      tavi::ioapi::v2::io_data_type const& given,
                                                      variable const& concerned);

} // namespace modbus_backend
