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

/// The only place that maps an index to an alternative. One switch, since compilers make one table
/// of it.
/// \param function  called with an `index_constant` of the index; all calls give one type
/// \throws char const*  for an index outside the list
template <class Function>
[[gnu::always_inline]] inline auto visit_index(int index, Function&& function)
    -> decltype(function(index_constant<0>{})) {
#define TAVI_IOAPI_CASE(i)                                                                         \
    case i:                                                                                        \
        return function(index_constant<i>{})
#define TAVI_IOAPI_FOUR_CASES(i)                                                                   \
    TAVI_IOAPI_CASE(i);                                                                            \
    TAVI_IOAPI_CASE((i) + 1);                                                                      \
    TAVI_IOAPI_CASE((i) + 2);                                                                      \
    TAVI_IOAPI_CASE((i) + 3)
    switch (index) {
        TAVI_IOAPI_FOUR_CASES(0);
        TAVI_IOAPI_FOUR_CASES(4);
        TAVI_IOAPI_FOUR_CASES(8);
        TAVI_IOAPI_FOUR_CASES(12);
        TAVI_IOAPI_FOUR_CASES(16);
        TAVI_IOAPI_FOUR_CASES(20);
        TAVI_IOAPI_FOUR_CASES(24);
        TAVI_IOAPI_FOUR_CASES(28);
        TAVI_IOAPI_CASE(32);
        TAVI_IOAPI_CASE(33);
    }
#undef TAVI_IOAPI_FOUR_CASES
#undef TAVI_IOAPI_CASE
    static_assert(alternatives::size == 34, "each alternative has its case");
    raise_corrupt_index();
}

} // namespace tavi::ioapi::v2::detail
