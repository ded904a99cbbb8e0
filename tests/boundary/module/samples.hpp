#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <type_traits>

/// \file
/// The payload that the module stores for each alternative.

namespace boundary {

namespace v2 = tavi::ioapi::v2;

template <class T>
T scalar_sample() {
    if constexpr (std::is_same_v<T, bool>) {
        return true;
    } else if constexpr (std::is_same_v<T, v2::utility::string>) {
        return "level of the tank";
    } else if constexpr (std::is_same_v<T, v2::io_object>) {
        return v2::io_object(
            7, {{"level", v2::io_data_type::scalar(v2::io_data_type::basic_types::dbl)}});
    } else if constexpr (std::is_same_v<T, v2::io_value>) {
        return v2::utility::array<v2::io_value>::of(1, "inner");
    } else {
        return static_cast<T>(100);
    }
}

template <class T>
T sample() {
    using element = v2::detail::array_element_t<T>;
    if constexpr (std::is_void_v<element>) {
        return scalar_sample<T>();
    } else {
        return T::of(element(), scalar_sample<element>());
    }
}

} // namespace boundary
