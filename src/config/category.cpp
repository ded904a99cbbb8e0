#include "category_impl.hpp"
#include "foundation/handle.hpp"
#include "option_impl.hpp"
#include "unique_list.hpp"

#include <utility>

namespace tavi::ioapi::v2::config {

// --- what it holds

category::impl::impl(std::string name,
                     std::string description,
                     bool wants_connection,
                     bool collapsed,
                     std::vector<option> options)
    : name_(std::move(name)),
      description_(std::move(description)),
      wants_connection_(wants_connection),
      collapsed_(collapsed),
      options_(std::move(options)) {}

std::string const& category::impl::name() const noexcept {
    return name_;
}

std::string const& category::impl::description() const noexcept {
    return description_;
}

bool category::impl::wants_connection() const noexcept {
    return wants_connection_;
}

bool category::impl::collapsed() const noexcept {
    return collapsed_;
}

utility::data_view<option const> category::impl::options() const {
    return detail::view_of(options_);
}

utility::data_view<option> category::impl::options() {
    return detail::view_of(options_);
}

bool category::impl::add_option(option option) {
    return detail::add_unique(options_, std::move(option));
}

bool category::impl::has_option(std::string_view key) const {
    return get_option(key) != nullptr;
}

option* category::impl::get_option(std::string_view key) {
    return detail::get_unique(options_, key);
}

option const* category::impl::get_option(std::string_view key) const {
    return detail::get_unique(options_, key);
}

bool category::impl::remove_option(std::string_view key) {
    return detail::remove_unique(options_, key);
}

category::impl::option_list::iterator category::impl::get_option_iterator(std::string_view key) {
    return detail::find_unique(options_, key);
}

category::impl::option_list::const_iterator category::impl::get_option_iterator(
    std::string_view key) const {
    return detail::find_unique(options_, key);
}

// --- the handle

category::category(utility::string_view name,
                   utility::string_view description,
                   bool wants_connection,
                   bool collapsed,
                   utility::data_view<option const> options)
    : impl_(std::in_place,
            name.str(),
            description.str(),
            wants_connection,
            collapsed,
            detail::list_of(options)) {}

TAVI_IOAPI_DEFINE_HANDLE(category, category);

utility::string_view category::name() const {
    return impl_->name();
}

utility::string_view category::description() const {
    return impl_->description();
}

bool category::wants_connection() const noexcept {
    return impl_->wants_connection();
}

bool category::collapsed() const noexcept {
    return impl_->collapsed();
}

utility::data_view<option const> category::options() const {
    return impl_->options();
}

utility::data_view<option> category::options() {
    return impl_->options();
}

bool category::add_option(option const& option) {
    return impl_->add_option(option);
}

bool category::add_option(option&& option) {
    return impl_->add_option(std::move(option));
}

bool category::has_option(std::string_view key) const {
    return impl_->has_option(key);
}

option* category::get_option(std::string_view key) {
    return impl_->get_option(key);
}

option const* category::get_option(std::string_view key) const {
    return impl_->get_option(key);
}

bool category::remove_option(std::string_view key) {
    return impl_->remove_option(key);
}

} // namespace tavi::ioapi::v2::config
