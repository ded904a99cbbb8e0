#pragma once

#include "foundation/growing_list.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// Lists whose elements are told apart by a text, as a template keeps its categories and a category
/// its options. Searches are linear, from the start. `text_of`, found by the element's type, says
/// which text it is.

namespace tavi::ioapi::v2::detail {

/// \return the first element of that text, or the end. For const and non-const lists.
template <class List>
auto find_unique(List& list, std::string_view text) {
    return std::find_if(list.begin(), list.end(),
                        [&](auto const& element) { return text_of(element) == text; });
}

/// \return the same as a pointer, or null.
template <class List>
auto get_unique(List& list, std::string_view text) {
    auto const place = find_unique(list, text);
    return place != list.end() ? &*place : nullptr;
}

/// Move an element to the end, unless there is one of its text. \return whether there was none
template <class T>
bool add_unique(std::vector<T>& list, T element) {
    if (find_unique(list, text_of(element)) != list.end()) return false;
    append(list, std::move(element));
    return true;
}

/// Remove the first element of that text; the others keep their order. \return whether there was
/// one
template <class T>
bool remove_unique(std::vector<T>& list, std::string_view text) {
    auto const place = find_unique(list, text);
    if (place == list.end()) return false;
    list.erase(place);
    return true;
}

} // namespace tavi::ioapi::v2::detail
