#include "foundation/growing_list.hpp"
#include "foundation/handle.hpp"
#include "store_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2::config {

// --- the values

void store::impl::set(std::string_view key, io_value value) {
    auto const place = values_.lower_bound(key);
    if (place != values_.end() && place->first == key) {
        place->second = std::move(value);
    } else {
        values_.emplace_hint(place, key, std::move(value));
    }
}

bool store::impl::has(std::string_view key) const noexcept {
    return values_.find(key) != values_.end();
}

io_value store::impl::get(std::string_view key) const {
    io_value const* const value = get_ptr(key);
    return value != nullptr ? *value : io_value();
}

io_value store::impl::get(std::string_view key, io_value const& default_value) const {
    return has(key) ? get(key) : default_value;
}

io_value const* store::impl::get_ptr(std::string_view key) const noexcept {
    auto const place = values_.find(key);
    return place != values_.end() ? &place->second : nullptr;
}

bool store::impl::remove(std::string_view key) {
    auto const place = values_.find(key);
    if (place == values_.end()) return false;
    values_.erase(place);
    return true;
}

std::vector<std::string_view> store::impl::keys() const {
    std::vector<std::string_view> keys;
    detail::reserve(keys, values_.size());
    for (auto const& entry : values_) keys.emplace_back(entry.first);
    return keys;
}

// --- the handle

store::store() : impl_(std::in_place) {}

TAVI_IOAPI_DEFINE_HANDLE(store, store);

void store::set(utility::string_view key, io_value value) {
    impl_->set(key, std::move(value));
}

bool store::has(utility::string_view key) const noexcept {
    return impl_->has(key);
}

io_value store::get(utility::string_view key) const {
    return impl_->get(key);
}

io_value store::get(utility::string_view key, io_value const& default_value) const {
    return impl_->get(key, default_value);
}

bool store::remove(utility::string_view key) {
    return impl_->remove(key);
}

utility::array<utility::string_view> store::keys() const {
    auto const keys = impl_->keys();
    return {keys.begin(), keys.end()};
}

} // namespace tavi::ioapi::v2::config
