#include "../foundation/handle.hpp"
#include "io_structure_type_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

io_structure_type::impl::impl(std::string name) : name_(std::move(name)) {}

std::string_view io_structure_type::impl::name() const {
    return name_;
}

void io_structure_type::impl::set_member(std::string_view name, io_data_type const& type) {
    auto const place = members_.lower_bound(name);
    if (place != members_.end() && place->first == name) {
        place->second = type;
    } else {
        members_.emplace_hint(place, name, type);
    }
}

bool io_structure_type::impl::has_member(std::string_view name) const noexcept {
    return members_.find(name) != members_.end();
}

io_data_type io_structure_type::impl::get_member(std::string_view name) const noexcept {
    auto const place = members_.find(name);
    return place != members_.end() ? place->second : io_data_type{};
}

void io_structure_type::impl::clear() noexcept {
    members_.clear();
}

io_structure_type::impl::members::const_iterator io_structure_type::impl::begin() const {
    return members_.begin();
}

io_structure_type::impl::members::const_iterator io_structure_type::impl::end() const {
    return members_.end();
}

io_structure_type::io_structure_type() : impl_(std::in_place) {}

// Names come by value since other modules were built for that.
// NOLINTBEGIN(performance-unnecessary-value-param)
io_structure_type::io_structure_type(utility::string name) : impl_(std::in_place, name.str()) {}

io_structure_type::io_structure_type(std::initializer_list<member const> members)
    : io_structure_type(utility::string(), members) {}

io_structure_type::io_structure_type(utility::string name,
                                     std::initializer_list<member const> members)
    : impl_(std::in_place, name.str()) {
    for (member const& each : members) impl_->set_member(each.first, each.second);
}
// NOLINTEND(performance-unnecessary-value-param)

TAVI_IOAPI_DEFINE_HANDLE(io_structure_type, io_structure_type);

utility::string_view io_structure_type::name() const {
    return impl_->name();
}

void io_structure_type::set_member(utility::string_view name, io_data_type const& type) {
    impl_->set_member(name, type);
}

bool io_structure_type::has_member(utility::string_view name) const noexcept {
    return impl_->has_member(name);
}

io_data_type io_structure_type::get_member(utility::string_view name) const noexcept {
    return impl_->get_member(name);
}

void io_structure_type::clear() noexcept {
    impl_->clear();
}

io_structure_type::const_iterator io_structure_type::begin() const {
    return const_iterator(const_iterator::impl(impl_->begin()));
}

io_structure_type::const_iterator io_structure_type::end() const {
    return const_iterator(const_iterator::impl(impl_->end()));
}

} // namespace tavi::ioapi::v2
