#pragma once

#include <tavi/ioapi/v2/detail/alternatives.hpp>
#include <tavi/ioapi/v2/detail/get_as.hpp>
#include <tavi/ioapi/v2/detail/visit.hpp>

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

/// \file
/// The data types that values convert to at run time: for each element kind from `boolean` to
/// `string`, as a scalar and as an array, the first alternative that is paired with it.

namespace tavi::ioapi::v2::detail {

inline constexpr int no_target = -1;

/// Whether conversion gives a `T` at run time: neither nothing nor an object, and not a second
/// alternative of a data type.
template <class T>
constexpr bool is_declared_target() noexcept {
    using element = std::conditional_t<is_array<T>, array_element_t<T>, T>;
    if constexpr (!is_scalar_target<element>) {
        return false;
    } else {
        return []<int... Index>(std::integer_sequence<int, Index...>) {
            return ((declared_type<alternative_at<Index>>() != declared_type<T>()) && ...);
        }
        (std::make_integer_sequence<int, index_of<T>>{});
    }
}

/// \return the index of the alternative that a data type of this code is met by, or `no_target`.
[[nodiscard]] inline int target_index(unsigned int type_code) noexcept {
    constexpr unsigned int kinds = static_cast<unsigned int>(types::object);
    using table = std::array<std::array<int, kinds>, 2>;
    static constexpr table indices = [] {
        table result{};
        for (auto& row : result) row.fill(no_target);
        [&]<int... Index>(std::integer_sequence<int, Index...>) {
            auto const enter = [&](bool is_target, io_data_type type, int index) {
                if (is_target)
                    result[type.is_array()][static_cast<std::size_t>(type.basic_type)] = index;
            };
            (enter(is_declared_target<alternative_at<Index>>(),
                   declared_type<alternative_at<Index>>(), Index),
             ...);
        }
        (std::make_integer_sequence<int, alternatives::size>{});
        return result;
    }();
    bool const is_array = (type_code & io_data_type::array_flag) != 0;
    unsigned int const kind = type_code & ~io_data_type::array_flag;
    return kind < kinds ? indices[is_array][kind] : no_target;
}

/// Call `function` with `std::type_identity` of the alternative at `index`, which `target_index`
/// has given.
template <class Function>
auto visit_target(int index, Function&& function)
    -> decltype(function(std::type_identity<bool>{})) {
    return visit_index(index, [&](auto constant) -> decltype(function(std::type_identity<bool>{})) {
        using T = alternative_at<decltype(constant)::value>;
        if constexpr (is_declared_target<T>()) {
            return function(std::type_identity<T>{});
        } else {
            raise_corrupt_index();
        }
    });
}

} // namespace tavi::ioapi::v2::detail
