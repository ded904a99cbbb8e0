#pragma once

#include "api.hpp"
#include "detail/deep_ptr.hpp"
#include "io_data_type.hpp"
#include "io_structure_type.hpp"

namespace tavi::ioapi::v2 {

class io_object_impl;

/// A structured value: named members, each an `io_value`, described by an `io_structure_type` of
/// its own. With a structure id other than 0 only the members that the structure declares may be
/// touched; with the id 0 every key is free.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API io_object {
public:
    /// Free keys, an empty structure: type `object` with the id 0. \throws std::bad_alloc, as all
    /// constructors and copies
    io_object();
    /// An instance of the structure that is registered under `structure_id`.
    io_object(unsigned long long structure_id, io_structure_type structure);
    /// An object of a type as given, unchecked.
    io_object(io_data_type type, io_structure_type structure);

    /// Copies are deep. Assignment is in place: when memory is exhausted the target may hold a part
    /// of each.
    io_object(io_object const&);
    io_object(io_object&&) noexcept;
    io_object& operator=(io_object const&);
    io_object& operator=(io_object&&) noexcept;
    ~io_object();

    /// The object's own type, whose `structure_id` says which keys it takes.
    [[nodiscard]] io_data_type type() const noexcept;

private:
    detail::deep_ptr<io_object_impl> impl_;
};

static_assert(sizeof(io_object) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2
