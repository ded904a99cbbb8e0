#pragma once

#include <tavi/ioapi/v2/detail/get_as.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "array_rules.hpp"
#include "foundation/outcome.hpp"

/// \file
/// The frame of every conversion to a type that is known at compile time.

namespace tavi::ioapi::v2::detail {

/// Convert whatever `value` holds. \return success, and then `target` is written, or a code
/// \throws std::bad_alloc, std::bad_array_new_length, and `char const*` for a value without a
/// legal alternative
template <class T>
[[gnu::always_inline]] inline io_errc convert_payload(io_value const& value, T& target) {
    return value.visit([&](auto const& payload) { return convert(payload, target); });
}

template <class T>
T get_as(io_value const& value, io_error& error) {
    T target{};
    io_errc code = io_errc::unhandled_exception;
    try {
        code = convert_payload(value, target);
        // Nothing to do in the handler: until a rule gives another, the code is the one for it.
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    report(error, code);
    return target;
}

} // namespace tavi::ioapi::v2::detail

/// Every scalar type that conversion gives, for explicit instantiation.
#define TAVI_IOAPI_FOR_EACH_SCALAR_TARGET(instantiate)                                             \
    instantiate(bool);                                                                             \
    instantiate(char);                                                                             \
    instantiate(signed char);                                                                      \
    instantiate(unsigned char);                                                                    \
    instantiate(short);                                                                            \
    instantiate(unsigned short);                                                                   \
    instantiate(int);                                                                              \
    instantiate(unsigned int);                                                                     \
    instantiate(long);                                                                             \
    instantiate(unsigned long);                                                                    \
    instantiate(long long);                                                                        \
    instantiate(unsigned long long);                                                               \
    instantiate(float);                                                                            \
    instantiate(double);                                                                           \
    instantiate(long double);                                                                      \
    instantiate(utility::string)
