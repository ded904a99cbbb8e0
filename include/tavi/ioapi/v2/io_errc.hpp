#pragma once

#include "api.hpp"

namespace tavi::ioapi::v2 {

/// The generic error codes. Other numbers are legal by cast and have an empty message.
enum class io_errc : int {
    success = 0,             ///< no error
    not_found = 1,           ///< no such member, structure or entry
    invalid_property = 2,    ///< a key that the structure type does not declare
    incompatible_type = 3,   ///< a text that does not parse; an object or array for a scalar
    value_too_large = 4,     ///< a number out of range or not whole; a truth value for a number
    no_result = 5,           ///< a variable that the backend has not answered for
    not_supported = 6,       ///< for backends; the library does not raise it
    not_implemented = 7,     ///< for backends; the library does not raise it
    unhandled_exception = 8, ///< exhausted memory or corrupt data in a conversion; for backends,
                             ///< any exception without an error of its own
    invalid_backend_context = 9, ///< for hosts; the library does not raise it
    todo = 0x7fffffff,           ///< for backends under construction
};

} // namespace tavi::ioapi::v2
