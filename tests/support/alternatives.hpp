#pragma once

#include <tavi/ioapi/v2/detail/alternatives.hpp>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

/// \file
/// The library's list of alternatives as parameters of typed tests, so that none escapes a test
/// that runs over all of them.

namespace test_support {

template <class... Alternatives>
auto as_test_types(tavi::ioapi::v2::detail::alternative_list<Alternatives...>)
    -> ::testing::Types<typename Alternatives::type...>;

/// All 34 alternatives; the empty one is `std::nullptr_t`.
using every_alternative = decltype(as_test_types(tavi::ioapi::v2::detail::alternatives{}));

/// Names a typed test by the index of its alternative.
struct alternative_names {
    template <class T>
    static std::string GetName(int) {
        return "alternative" + std::to_string(tavi::ioapi::v2::detail::index_of<T>);
    }
};

} // namespace test_support
