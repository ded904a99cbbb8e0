#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>
#include <tavi/ioapi/v2/utility/text_comparison.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

/// \file
/// What the results that answer identifier by identifier have in common: an array of entries, each
/// of which is made from an identifier and is `result_type` of its class.

namespace tavi::ioapi::v2::detail {

/// \return one entry for each identifier, without a result yet.
template <class Entry>
utility::array<Entry> entries_for(utility::data_view<plc_identifier const> identifiers) {
    return utility::array<Entry>::copies_of(identifiers.begin(), identifiers.size());
}

/// Start anew with these identifiers; the block stays where the size does.
template <class Entry>
void assign_entries(utility::array<Entry>& entries,
                    utility::data_view<plc_identifier const> identifiers) {
    if (entries.size() != identifiers.size()) {
        entries = entries_for<Entry>(identifiers); // built first: one may be held by an entry
        return;
    }
    Entry* place = entries.begin();
    for (plc_identifier const& identifier : identifiers) *place++ = Entry(identifier);
}

/// Move the entries that stay into a new block, unless the size is what it was.
template <class Entry>
void resize_entries(utility::array<Entry>& entries, unsigned int size) {
    if (size == entries.size()) return;
    utility::array<Entry> resized(size);
    std::move(entries.begin(), entries.begin() + std::min(size, entries.size()), resized.begin());
    entries = std::move(resized);
}

/// \return the first entry for `identifier`, or null. For const and non-const entries.
template <class Entry>
Entry* find_entry(Entry* first, Entry* last, plc_identifier const& identifier) noexcept {
    std::string_view const text = identifier.primary().text();
    bool const is_long = text.size() >= word_size;
    unsigned long long const end = is_long ? last_word(text) : 0;
    for (; first != last; ++first) {
        // Nearly all are refused here, by what stays in registers.
        std::string_view const other = first->identifier().primary().text();
        if (other.size() != text.size() || (is_long && last_word(other) != end)) continue;
        if (first->identifier() == identifier) return first;
    }
    return nullptr;
}

} // namespace tavi::ioapi::v2::detail
