#pragma once

#include <tavi/ioapi/v2/detail/narrow.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

/// \file
/// How the lists behind the handles grow, and what they say when they cannot. The texts are part
/// of the interface, so that they stand here and not in whatever standard library is at hand.

namespace tavi::ioapi::v2::detail {

/// \return the most elements that a list may have: what memory can be asked for, and what the
/// 32-bit sizes of the interface can state
template <class T>
std::size_t most_elements(std::vector<T> const& list) noexcept {
    return std::min(list.max_size(), largest_size);
}

/// \return the capacity that a list of `size` elements takes on for one more: twice the size, but
/// at least 1 and at most `limit`. \throws std::length_error  at the limit
constexpr std::size_t grown_capacity(std::size_t size, std::size_t limit) {
    if (size >= limit) throw std::length_error("vector::_M_realloc_insert");
    return size + std::min(std::max<std::size_t>(size, 1), limit - size);
}

/// Make room for one more element. \throws std::length_error, std::bad_alloc; then the list is as
/// it was, if its elements move without failure or are copied
template <class T>
void make_room(std::vector<T>& list) {
    if (list.size() == list.capacity()) {
        list.reserve(grown_capacity(list.size(), most_elements(list)));
    }
}

/// Move an element to the end. \throws as `make_room`
template <class T>
void append(std::vector<T>& list, T element) {
    make_room(list);
    list.push_back(std::move(element));
}

/// Have room for `capacity` elements. \throws std::length_error, std::bad_alloc
template <class T>
void reserve(std::vector<T>& list, std::size_t capacity) {
    if (capacity > most_elements(list)) throw std::length_error("vector::reserve");
    list.reserve(capacity);
}

/// Append default elements, or destroy those at the end. \throws std::length_error, std::bad_alloc
template <class T>
void resize(std::vector<T>& list, std::size_t size) {
    if (size > most_elements(list)) throw std::length_error("vector::_M_default_append");
    list.resize(size);
}

/// \return `count`, if a list of `T` can have that many elements. \throws std::length_error
template <class T>
std::size_t checked_count(std::size_t count) {
    if (count > most_elements(std::vector<T>())) {
        throw std::length_error("cannot create std::vector larger than max_size()");
    }
    return count;
}

/// \return copies of the elements of a view. \throws std::length_error, std::bad_alloc
template <class T>
std::vector<T> list_of(utility::data_view<T const> view) {
    // By the count: the distance of two pointers is too narrow for it on 32-bit platforms.
    std::vector<T> list;
    list.reserve(checked_count<T>(view.size()));
    list.insert(list.end(), view.begin(), view.end());
    return list;
}

/// \return all elements. \throws std::length_error beyond what a view can state
template <class T>
utility::data_view<T const> view_of(std::vector<T> const& list) {
    return list;
}
template <class T>
utility::data_view<T> view_of(std::vector<T>& list) {
    return list;
}

} // namespace tavi::ioapi::v2::detail
