#pragma once

#include "../utility/array.hpp"
#include "../utility/string.hpp"
#include "alternatives.hpp"
#include "get_as.hpp"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// What `io_value::as` adds to `get_as`: standard texts and vectors, made of the types that the
/// library converts to.

namespace tavi::ioapi::v2::detail {

/// How a `T` is had: `instance` is the type that the library gives, `finish` makes a `T` of it.
template <class T>
struct conversion_target {
    static constexpr bool exists = is_scalar_target<T> || is_scalar_target<array_element_t<T>> ||
                                   std::is_same_v<array_element_t<T>, io_value>;
    using instance = T;
    static T finish(T&& converted) { return std::move(converted); }
};

template <>
struct conversion_target<std::string> {
    static constexpr bool exists = true;
    using instance = utility::string;
    static std::string finish(utility::string&& converted) { return converted.str(); }
};

/// A value is what conversion starts from and no target, an array of them is one.
template <>
struct conversion_target<io_value> {
    static constexpr bool exists = false;
    using instance = io_value;
    static io_value&& finish(io_value&& converted) { return std::move(converted); }
};

template <class T>
struct conversion_target<std::vector<T>> {
    using element = conversion_target<T>;
    static constexpr bool exists =
        (element::exists && !is_array<typename element::instance>) || std::is_same_v<T, io_value>;
    using instance = utility::array<typename element::instance>;
    static std::vector<T> finish(instance&& converted) {
        std::vector<T> result;
        result.reserve(converted.size());
        for (auto& each : converted) result.push_back(element::finish(std::move(each)));
        return result;
    }
};

template <>
struct conversion_target<std::vector<bool>> {
    static constexpr bool exists = true;
    using instance = utility::array<bool>;
    static std::vector<bool> finish(instance&& converted) { return converted.to_vector(); }
};

} // namespace tavi::ioapi::v2::detail
