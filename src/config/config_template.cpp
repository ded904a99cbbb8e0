#include "category_impl.hpp"
#include "config_template_impl.hpp"
#include "foundation/handle.hpp"
#include "unique_list.hpp"

#include <utility>

namespace tavi::ioapi::v2::config {

namespace {

/// The first hit of the categories in order, for const and non-const ones.
template <class Categories>
auto first_option(Categories& categories, std::string_view key) {
    decltype(categories.begin()->get_option(key)) found = nullptr;
    for (auto at = categories.begin(); found == nullptr && at != categories.end(); ++at) {
        found = at->get_option(key);
    }
    return found;
}

} // namespace

// --- the categories

config_template::impl::impl(std::vector<category> categories)
    : categories_(std::move(categories)) {}

utility::data_view<category const> config_template::impl::categories() const {
    return detail::view_of(categories_);
}

utility::data_view<category> config_template::impl::categories() {
    return detail::view_of(categories_);
}

bool config_template::impl::add_category(category category) {
    return detail::add_unique(categories_, std::move(category));
}

bool config_template::impl::has_category(std::string_view name) const {
    return get_category(name) != nullptr;
}

category* config_template::impl::get_category(std::string_view name) {
    return detail::get_unique(categories_, name);
}

category const* config_template::impl::get_category(std::string_view name) const {
    return detail::get_unique(categories_, name);
}

bool config_template::impl::remove_category(std::string_view name) {
    return detail::remove_unique(categories_, name);
}

option* config_template::impl::get_option(std::string_view key) {
    return first_option(categories_, key);
}

option const* config_template::impl::get_option(std::string_view key) const {
    return first_option(categories_, key);
}

bool config_template::impl::has_option(std::string_view key) const {
    return get_option(key) != nullptr;
}

config_template::impl::category_list::iterator config_template::impl::get_category_iterator(
    std::string_view name) {
    return detail::find_unique(categories_, name);
}

config_template::impl::category_list::const_iterator config_template::impl::get_category_iterator(
    std::string_view name) const {
    return detail::find_unique(categories_, name);
}

// --- the handle

config_template::config_template() : impl_(std::in_place) {}

config_template::config_template(utility::data_view<category const> categories)
    : impl_(std::in_place, detail::list_of(categories)) {}

TAVI_IOAPI_DEFINE_HANDLE(config_template, config_template);

utility::data_view<category const> config_template::categories() const {
    return impl_->categories();
}

utility::data_view<category> config_template::categories() {
    return impl_->categories();
}

bool config_template::add_category(category category) {
    return impl_->add_category(std::move(category));
}

bool config_template::has_category(utility::string_view name) const {
    return impl_->has_category(name);
}

category* config_template::get_category(utility::string_view name) {
    return impl_->get_category(name);
}

category const* config_template::get_category(utility::string_view name) const {
    return impl_->get_category(name);
}

bool config_template::remove_category(utility::string_view name) {
    return impl_->remove_category(name);
}

option* config_template::get_option(utility::string_view key) {
    return impl_->get_option(key);
}

option const* config_template::get_option(utility::string_view key) const {
    return impl_->get_option(key);
}

bool config_template::has_option(utility::string_view category_name) const {
    return impl_->has_category(category_name); // of a category, and meant to be
}

} // namespace tavi::ioapi::v2::config
