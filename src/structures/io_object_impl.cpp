#include "io_object_impl.hpp"

#include "foundation/outcome.hpp"

#include <new>
#include <utility>

namespace tavi::ioapi::v2 {

io_object_impl::io_object_impl(io_data_type type, io_structure_type structure)
    : type_(type), structure_(std::move(structure)) {}

io_data_type io_object_impl::type() const noexcept {
    return type_;
}

bool io_object_impl::only_known_keys() const noexcept {
    return type_.structure_id != 0;
}

bool io_object_impl::is_valid_key(std::string_view key) const noexcept {
    return !only_known_keys() || structure_.has_member(key);
}

bool io_object_impl::has(std::string_view key) const noexcept {
    return values_.find(key) != values_.end();
}

io_value io_object_impl::get(std::string_view key, io_error& error) const {
    // The diagnostics that go may hold this very object, or the key.
    io_error_diagnostics const kept = error.diagnostics();
    if (!is_valid_key(key)) {
        detail::report(error, io_errc::invalid_property);
        return io_value();
    }
    auto const place = values_.find(key);
    if (place != values_.end()) {
        detail::report(error, io_errc::success);
        return place->second;
    }
    // A declared member that is not set reads as empty; a free key that is not there is an error.
    detail::report(error, only_known_keys() ? io_errc::success : io_errc::not_found);
    return io_value();
}

io_data_type io_object_impl::get_type(std::string_view key) const noexcept {
    if (only_known_keys()) return structure_.get_member(key);
    auto const place = values_.find(key);
    return place != values_.end() ? place->second.data_type() : io_data_type{};
}

void io_object_impl::set(std::string key, io_value value, io_error& error) {
    if (!is_valid_key(key)) {
        detail::report(error, io_errc::invalid_property);
        return;
    }
    // What the structure declares is converted with free keys as well.
    if (structure_.has_member(key)) {
        io_data_type const declared = structure_.get_member(key);
        if (declared != value.data_type()) {
            if (!value.converts_to(declared)) {
                detail::report(error, io_errc::incompatible_type);
                return;
            }
            io_error failure;
            value = value.to_variant(declared, failure);
            if (failure) throw std::bad_alloc(); // it converts, so that nothing else can fail
        }
    }
    values_.insert_or_assign(std::move(key), std::move(value));
    detail::report(error, io_errc::success);
}

void io_object_impl::remove(std::string_view key, io_error& error) {
    if (!is_valid_key(key)) {
        detail::report(error, io_errc::invalid_property);
        return;
    }
    auto const place = values_.find(key);
    bool const is_missing = place == values_.end() && !only_known_keys();
    if (place != values_.end()) values_.erase(place);
    detail::report(error, is_missing ? io_errc::not_found : io_errc::success);
}

io_object_impl::members::const_iterator io_object_impl::begin() const {
    return values_.begin();
}

io_object_impl::members::const_iterator io_object_impl::end() const {
    return values_.end();
}

} // namespace tavi::ioapi::v2
