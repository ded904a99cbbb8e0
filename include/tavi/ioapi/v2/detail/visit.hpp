#pragma once

#include "alternatives.hpp"

#include <type_traits>

namespace tavi::ioapi::v2::detail {

/// Raised by every operation that meets a value without a legal alternative, its destruction
/// included: such a value is what a copy assignment leaves behind when memory is exhausted.
/// \throws char const*  that points to an empty text
[[noreturn]] inline void raise_corrupt_index() {
    // Intended: no class but a pointer, which callers in other modules catch.
    throw static_cast<char const*>(""); // NOLINT(misc-throw-by-value-catch-by-reference)
}

template <int Index>
using index_constant = std::integral_constant<int, Index>;

/// The only place that maps an index to an alternative.
/// \param function  called with an `index_constant` of the index; all calls give one type
/// \throws char const*  for an index outside the list
template <int First = 0, class Function>
[[gnu::always_inline]] inline auto visit_index(int index, Function&& function)
    -> decltype(function(index_constant<0>{})) {
    if constexpr (First == alternatives::size) {
        raise_corrupt_index();
    } else {
        // Compilers turn this chain into one jump table.
        if (index == First) return function(index_constant<First>{});
        return visit_index<First + 1>(index, function);
    }
}

} // namespace tavi::ioapi::v2::detail
