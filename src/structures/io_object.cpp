#include <tavi/ioapi/v2/io_error.hpp>

#include "foundation/handle.hpp"
#include "io_object_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

io_object::io_object() : io_object(0, io_structure_type()) {}

io_object::io_object(unsigned long long structure_id, io_structure_type structure)
    : io_object(io_data_type::object(structure_id), std::move(structure)) {}

io_object::io_object(io_data_type type, io_structure_type structure)
    : impl_(std::in_place, type, std::move(structure)) {}

TAVI_IOAPI_DEFINE_HANDLE(io_object, io_object);

io_data_type io_object::type() const noexcept {
    return impl_->type();
}

bool io_object::has(utility::string_view key) const noexcept {
    // With known keys it tells what the type admits, with free keys what the object holds.
    return impl_->only_known_keys() ? impl_->is_valid_key(key) : impl_->has(key);
}

io_value io_object::get(utility::string_view key, io_error& error) const {
    return impl_->get(key, error);
}

io_data_type io_object::get_type(utility::string_view key) const noexcept {
    return impl_->get_type(key);
}

void io_object::set(utility::string_view key, io_value value, io_error& error) {
    impl_->set(key.str(), std::move(value), error);
}

void io_object::remove(utility::string_view key, io_error& error) {
    impl_->remove(key, error);
}

io_object::const_iterator io_object::begin() const {
    return const_iterator(const_iterator::impl(impl_->begin()));
}

io_object::const_iterator io_object::end() const {
    return const_iterator(const_iterator::impl(impl_->end()));
}

} // namespace tavi::ioapi::v2
