#include "foundation/growing_list.hpp"
#include "foundation/handle.hpp"
#include "option_impl.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tavi::ioapi::v2::config {

void assign(std::vector<option::value_option>& target,
            std::vector<option::value_option> const& source) {
    if (source.size() > target.capacity()) {
        std::vector<option::value_option> copy(source);
        target.swap(copy);
        return;
    }
    std::size_t const shared = std::min(target.size(), source.size());
    for (std::size_t i = 0; i < shared; ++i) target[i] = option::value_option(source[i]);
    target.resize(shared);
    for (std::size_t i = shared; i < source.size(); ++i) target.push_back(source[i]);
}

// --- what it holds

option::impl::impl(std::string key,
                   std::string display_name,
                   std::string description,
                   io_data_type::basic_types value_type,
                   std::vector<value_option> options)
    : key_(std::move(key)),
      display_name_(std::move(display_name)),
      description_(std::move(description)),
      value_type_(value_type),
      optional_(false),
      options_(std::move(options)) {}

option::impl::impl(std::string key,
                   std::string display_name,
                   std::string description,
                   io_value default_value,
                   std::vector<value_option> options)
    : key_(std::move(key)),
      display_name_(std::move(display_name)),
      description_(std::move(description)),
      value_type_(default_value.data_type().basic_type),
      default_value_(std::move(default_value)),
      optional_(true),
      options_(std::move(options)) {}

std::string const& option::impl::key() const noexcept {
    return key_;
}

std::string const& option::impl::display_name() const noexcept {
    return display_name_;
}

std::string const& option::impl::description() const noexcept {
    return description_;
}

io_data_type::basic_types option::impl::value_type() const noexcept {
    return value_type_;
}

bool option::impl::has_default_value() const noexcept {
    return default_value_.data_type() != io_data_type{};
}

io_value const& option::impl::default_value() const noexcept {
    return default_value_;
}

bool option::impl::optional() const noexcept {
    return optional_;
}

utility::data_view<option::value_option const> option::impl::options() const {
    return detail::view_of(options_);
}

void option::impl::options(std::vector<value_option> options) {
    options_.swap(options);
}

// --- the handle

option::option(utility::string_view key,
               utility::string_view display_name,
               utility::string_view description,
               io_data_type::basic_types value_type,
               utility::data_view<value_option const> options)
    : impl_(std::in_place,
            key.str(),
            display_name.str(),
            description.str(),
            value_type,
            detail::list_of(options)) {}

option::option(utility::string_view key,
               utility::string_view display_name,
               utility::string_view description,
               io_value default_value,
               utility::data_view<value_option const> options)
    : impl_(std::in_place,
            key.str(),
            display_name.str(),
            description.str(),
            std::move(default_value),
            detail::list_of(options)) {}

TAVI_IOAPI_DEFINE_HANDLE(option, option);

utility::string_view option::key() const {
    return impl_->key();
}

utility::string_view option::display_name() const {
    return impl_->display_name();
}

utility::string_view option::description() const {
    return impl_->description();
}

io_data_type::basic_types option::value_type() const noexcept {
    return impl_->value_type();
}

bool option::has_default_value() const noexcept {
    return impl_->has_default_value();
}

io_value const& option::default_value() const noexcept {
    return impl_->default_value();
}

bool option::optional() const noexcept {
    return impl_->optional();
}

utility::data_view<option::value_option const> option::options() const {
    return impl_->options();
}

void option::options(utility::data_view<value_option const> options) {
    impl_->options(detail::list_of(options));
}

} // namespace tavi::ioapi::v2::config
