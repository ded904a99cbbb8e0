#include <tavi/ioapi/v2/detail/get_as.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "conversion_rules.hpp"

namespace tavi::ioapi::v2::detail {

namespace {

/// Convert whatever `value` holds. \return success, and then `target` is written, or a code
/// \throws std::bad_alloc, and `char const*` for a value without a legal alternative
template <class T>
io_errc convert_payload(io_value const& value, T& target) {
    return value.visit([&](auto const& payload) { return convert(payload, target); });
}

} // namespace

template <class T>
T get_as(io_value const& value, io_error& error) {
    error.reset();
    T target{};
    io_errc outcome = io_errc::unhandled_exception;
    try {
        outcome = convert_payload(value, target);
    } catch (...) { // NOLINT(bugprone-empty-catch): the outcome says it
    }
    if (outcome != io_errc::success) error = outcome;
    return target;
}

#define TAVI_IOAPI_INSTANTIATE(T)                                                                  \
    static_assert(is_scalar_target<T>);                                                            \
    template TAVI_IOAPI_API T get_as<T>(io_value const&, io_error&)

TAVI_IOAPI_INSTANTIATE(bool);
TAVI_IOAPI_INSTANTIATE(char);
TAVI_IOAPI_INSTANTIATE(signed char);
TAVI_IOAPI_INSTANTIATE(unsigned char);
TAVI_IOAPI_INSTANTIATE(short);
TAVI_IOAPI_INSTANTIATE(unsigned short);
TAVI_IOAPI_INSTANTIATE(int);
TAVI_IOAPI_INSTANTIATE(unsigned int);
TAVI_IOAPI_INSTANTIATE(long);
TAVI_IOAPI_INSTANTIATE(unsigned long);
TAVI_IOAPI_INSTANTIATE(long long);
TAVI_IOAPI_INSTANTIATE(unsigned long long);
TAVI_IOAPI_INSTANTIATE(float);
TAVI_IOAPI_INSTANTIATE(double);
TAVI_IOAPI_INSTANTIATE(long double);
TAVI_IOAPI_INSTANTIATE(utility::string);

#undef TAVI_IOAPI_INSTANTIATE

} // namespace tavi::ioapi::v2::detail
