#pragma once

#include "../api.hpp"

namespace tavi::ioapi::v2::utility {

/// Two values side by side, first then second, each with its natural alignment.
template <class A, class B>
struct pair {
    A first;  ///< in front
    B second; ///< behind it
};

/// The types are those of the values.
template <class A, class B>
pair(A, B) -> pair<A, B>;

} // namespace tavi::ioapi::v2::utility
