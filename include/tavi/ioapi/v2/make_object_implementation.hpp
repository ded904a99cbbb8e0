#pragma once

#include "api.hpp"
#include "interfaces/io_error_diagnostics_impl.hpp"

#include <atomic>

namespace tavi::ioapi::v2 {

/// Supplies the reference count of a class derived from `interfaces::object`: one 32-bit word
/// behind the table pointer. An object starts with the count 1, held by whoever made it.
///
/// The library holds the one instance that its interface needs; a module that counts other
/// classes writes `add_ref` and `release` itself.
template <class Interface>
class make_object_implementation : public Interface {
public:
    ~make_object_implementation() override;

    /// \return the new count
    unsigned int add_ref() override;
    /// The last reference destroys the object. \return the new count
    unsigned int release() override;

protected:
    make_object_implementation() noexcept;

private:
    std::atomic<unsigned int> count_; // sequentially consistent
};

extern template class TAVI_IOAPI_API
    make_object_implementation<interfaces::io_error_diagnostics_impl>;

static_assert(sizeof(std::atomic<unsigned int>) == 4);

} // namespace tavi::ioapi::v2
