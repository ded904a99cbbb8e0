#pragma once

#include "../io_value.hpp"
#include "../utility/array.hpp"
#include "alternatives.hpp"
#include "conversion_target.hpp"

#include <type_traits>
#include <utility>

/// \file
/// Whether a conversion has clamped or cut a number: only one from floating point to an integer
/// can.

namespace tavi::ioapi::v2::detail {

template <class T>
inline constexpr bool is_whole_number = std::is_integral_v<T> && !std::is_same_v<T, bool>;

template <class T, class Source>
[[nodiscard]] bool is_exact(T converted, Source source) noexcept {
    // A char is a number from 0 to 255 on every platform.
    using wide = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;
    return static_cast<long double>(static_cast<wide>(converted)) == source;
}

template <class T, class Source>
[[nodiscard]] bool is_exact(utility::array<T> const& converted,
                            utility::array<Source> const& source) noexcept {
    for (unsigned int i = 0; i < converted.size(); ++i) {
        if (!is_exact(converted[i], source[i])) return false;
    }
    return true;
}

/// Whether `converted`, which `value` has given without an error, is the number that it holds.
template <class T>
[[nodiscard]] bool is_exact_conversion(io_value const& value, T const& converted) noexcept {
    using element = array_element_t<T>;
    if constexpr (is_whole_number<T>) {
        if (auto const* const source = value.get_if<float>()) return is_exact(converted, *source);
        if (auto const* const source = value.get_if<double>()) return is_exact(converted, *source);
    } else if constexpr (is_whole_number<element>) {
        using reals = utility::array<float>;
        using wide_reals = utility::array<double>;
        if (auto const* const source = value.get_if<reals>()) return is_exact(converted, *source);
        if (auto const* const source = value.get_if<wide_reals>()) {
            return is_exact(converted, *source);
        }
        if (auto const* const source = value.get_if<utility::array<io_value>>()) {
            for (unsigned int i = 0; i < converted.size(); ++i) {
                if (!is_exact_conversion((*source)[i], converted[i])) return false;
            }
        }
    }
    return true;
}

} // namespace tavi::ioapi::v2::detail

namespace tavi::ioapi::v2 {

template <class T>
T io_value::get_exact(io_error& error) const {
    using target = detail::conversion_target<T>;
    static_assert(target::exists, "no conversion gives a T");
    // The diagnostics that go may hold this very value.
    io_error_diagnostics const kept = error.diagnostics();
    auto converted = detail::get_as<typename target::instance>(*this, error);
    if (error.ok() && !detail::is_exact_conversion(*this, converted)) {
        error = io_errc::value_too_large;
        converted = {};
    }
    return target::finish(std::move(converted));
}

} // namespace tavi::ioapi::v2
