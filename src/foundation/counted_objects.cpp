#include <tavi/ioapi/v2/interfaces/io_error_diagnostics_impl.hpp>
#include <tavi/ioapi/v2/interfaces/object.hpp>
#include <tavi/ioapi/v2/make_object_implementation.hpp>

// The destructors are the key functions: tables and type information live here alone.

namespace tavi::ioapi::v2 {

namespace interfaces {

object::~object() = default;
io_error_diagnostics_impl::~io_error_diagnostics_impl() = default;
io_error_diagnostics_impl::iterator_impl::~iterator_impl() = default;

} // namespace interfaces

template <class Interface>
make_object_implementation<Interface>::make_object_implementation() noexcept : count_(1) {}

template <class Interface>
make_object_implementation<Interface>::~make_object_implementation() = default;

template <class Interface>
unsigned int make_object_implementation<Interface>::add_ref() {
    return count_.fetch_add(1) + 1;
}

template <class Interface>
unsigned int make_object_implementation<Interface>::release() {
    unsigned int const left = count_.fetch_sub(1) - 1;
    if (left == 0) delete this;
    return left;
}

template class make_object_implementation<interfaces::io_error_diagnostics_impl>;

} // namespace tavi::ioapi::v2
