#include <tavi/ioapi/v2/detail/narrow.hpp>

#include "growing_list.hpp"
#include "io_error_diagnostics_generic_impl.hpp"

#include <algorithm>

namespace tavi::ioapi::v2 {

using generic_impl = io_error_diagnostics_generic::impl;

namespace {

/// Where `key` stands or would stand, for a const and a non-const list.
template <class Entries>
auto place_for(Entries& entries, std::string_view key) {
    return std::lower_bound(
        entries.begin(), entries.end(), key,
        [](generic_impl::diagnostic_entry const& entry, std::string_view wanted) {
            return wanted.compare(entry.first) > 0;
        });
}

template <class Entries>
auto find_in(Entries& entries, std::string_view key) {
    auto const place = place_for(entries, key);
    return place != entries.end() && place->first == key ? place : entries.end();
}

} // namespace

// --- the list

generic_impl::entries::iterator generic_impl::find(std::string_view key) {
    return find_in(entries_, key);
}

generic_impl::entries::const_iterator generic_impl::find(std::string_view key) const {
    return find_in(entries_, key);
}

unsigned int generic_impl::size() const {
    return detail::narrow_count(entries_.size());
}

bool generic_impl::has(utility::string_view key) const {
    return find(key) == entries_.end(); // inverted, and meant to be
}

io_value generic_impl::get(utility::string_view key) const {
    auto const place = find(key);
    return place != entries_.end() ? place->second : io_value();
}

interfaces::io_error_diagnostics_impl::iterator_impl* generic_impl::make_iterator() const {
    return new iterator_impl(entries_.begin(), entries_.end());
}

void generic_impl::set(std::string_view key, io_value value) {
    auto place = place_for(entries_, key);
    if (place != entries_.end() && place->first == key) {
        place->second = std::move(value);
        return;
    }
    // The copy comes first: the key may be a view of one that is about to move.
    diagnostic_entry entry(key, std::move(value));
    auto const index = place - entries_.begin();
    detail::make_room(entries_);
    entries_.insert(entries_.begin() + index, std::move(entry));
}

void generic_impl::remove(std::string_view key) {
    auto const place = find(key);
    if (place != entries_.end()) entries_.erase(place);
}

// --- positions in it

bool generic_impl::iterator_impl::advance() {
    return current_ != end_ && ++current_ != end_;
}

bool generic_impl::iterator_impl::equal_to(
    interfaces::io_error_diagnostics_impl::iterator_impl const& other) const {
    auto const* const same = dynamic_cast<iterator_impl const*>(&other);
    return same != nullptr && current_ == same->current_;
}

generic_impl::iterator_impl::entry generic_impl::iterator_impl::get() const {
    return {current_->first, &current_->second};
}

interfaces::io_error_diagnostics_impl::iterator_impl* generic_impl::iterator_impl::clone() const {
    return new iterator_impl(current_, end_);
}

void generic_impl::iterator_impl::release() {
    delete this;
}

// --- the handle

io_error_diagnostics_generic::io_error_diagnostics_generic()
    : io_error_diagnostics(adopted{}, new impl) {}

io_error_diagnostics_generic::~io_error_diagnostics_generic() = default;

generic_impl& io_error_diagnostics_generic::own_list() const noexcept {
    return static_cast<impl&>(*list());
}

void io_error_diagnostics_generic::set(utility::string_view key, io_value value) {
    own_list().set(key, std::move(value));
}

void io_error_diagnostics_generic::remove(utility::string_view key) {
    own_list().remove(key);
}

} // namespace tavi::ioapi::v2
