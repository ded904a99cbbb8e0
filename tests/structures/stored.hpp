#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace structures_test {

/// Whether two payloads are the same, arrays element by element.
template <class T>
[[nodiscard]] bool same_payload(T const& left, T const& right) {
    if constexpr (tavi::ioapi::v2::detail::is_array<T>) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end());
    } else {
        return left == right;
    }
}

/// Whether the value holds exactly a `T` that equals `expected`, under the type that goes with it.
template <class T>
[[nodiscard]] ::testing::AssertionResult holds(tavi::ioapi::v2::io_value const& value,
                                               T const& expected) {
    namespace v2 = tavi::ioapi::v2;
    T const* const payload = value.template get_if<T>();
    if (payload == nullptr) return ::testing::AssertionFailure() << "alternative " << value.index();
    if (!same_payload(*payload, expected)) return ::testing::AssertionFailure() << value;
    if (value.data_type() != v2::detail::declared_type<T>()) {
        return ::testing::AssertionFailure() << "of type " << value.data_type();
    }
    return ::testing::AssertionSuccess();
}

/// The same for a text.
[[nodiscard]] inline ::testing::AssertionResult holds_text(tavi::ioapi::v2::io_value const& value,
                                                           std::string_view expected) {
    return holds(value, tavi::ioapi::v2::utility::string(expected));
}

/// Whether the value is the empty one, all fields of its type 0.
[[nodiscard]] inline ::testing::AssertionResult is_blank(tavi::ioapi::v2::io_value const& value) {
    if (!value.empty()) return ::testing::AssertionFailure() << value;
    if (value.data_type() != tavi::ioapi::v2::io_data_type()) {
        return ::testing::AssertionFailure() << "of type " << value.data_type();
    }
    return ::testing::AssertionSuccess();
}

} // namespace structures_test
