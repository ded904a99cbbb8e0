#include "../foundation/handle.hpp"
#include "io_object_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

io_object_impl::io_object_impl(io_data_type type, io_structure_type structure)
    : type_(type), structure_(std::move(structure)) {}

io_data_type io_object_impl::type() const noexcept {
    return type_;
}

io_object::io_object() : io_object(0, io_structure_type()) {}

io_object::io_object(unsigned long long structure_id, io_structure_type structure)
    : io_object(io_data_type::object(structure_id), std::move(structure)) {}

io_object::io_object(io_data_type type, io_structure_type structure)
    : impl_(std::in_place, type, std::move(structure)) {}

TAVI_IOAPI_DEFINE_HANDLE(io_object);

io_data_type io_object::type() const noexcept {
    return impl_->type();
}

} // namespace tavi::ioapi::v2
