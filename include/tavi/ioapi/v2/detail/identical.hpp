#pragma once

#include "../io_object.hpp"
#include "../io_value.hpp"
#include "../utility/array.hpp"
#include "alternatives.hpp"

#include <cstring>
#include <type_traits>

namespace tavi::ioapi::v2 {

[[nodiscard]] inline bool identical(io_value const& left, io_value const& right);

namespace detail {

/// Numbers and truth values by their bytes, so that a NaN is identical to its copy.
template <class T>
[[nodiscard]] bool identical_payloads(T const& left, T const& right) {
    if constexpr (std::is_arithmetic_v<T>) {
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison,cert-exp42-c,cert-flp37-c): as wanted
        return std::memcmp(&left, &right, sizeof(T)) == 0;
    } else {
        return left == right;
    }
}

[[nodiscard]] inline bool identical_payloads(io_value const& left, io_value const& right) {
    return identical(left, right);
}

[[nodiscard]] inline bool identical_payloads(io_object const& left, io_object const& right) {
    if (left.type() != right.type()) return false;
    auto other = right.begin();
    for (auto const& [key, value] : left) {
        if (other == right.end()) return false;
        auto const [other_key, other_value] = *other;
        if (key != other_key || !identical(value, other_value)) return false;
        ++other;
    }
    return other == right.end();
}

template <class T>
[[nodiscard]] bool identical_payloads(utility::array<T> const& left,
                                      utility::array<T> const& right) {
    if (left.size() != right.size()) return false;
    for (unsigned int i = 0; i < left.size(); ++i) {
        if (!identical_payloads(left[i], right[i])) return false;
    }
    return true;
}

} // namespace detail

/// Whether two values are copies of one: equal in data type, alternative and content, without any
/// conversion. Unlike `==` it holds between a value and its copy whatever it is, and it looks into
/// objects, at their type and the members that are set. Linear in what they hold, save that each
/// level of objects copies out what is below it.
/// \throws std::bad_alloc  where there are objects, whose members are copied out
[[nodiscard]] inline bool identical(io_value const& left, io_value const& right) {
    if (left.data_type() != right.data_type() || left.index() != right.index()) return false;
    return detail::visit_index(left.index(), [&](auto index) -> bool {
        using T = detail::alternative_at<decltype(index)::value>;
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            return true;
        } else {
            return detail::identical_payloads(*left.get_if<T>(), *right.get_if<T>());
        }
    });
}

} // namespace tavi::ioapi::v2
