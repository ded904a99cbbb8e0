#pragma once

#include "array_conversion_sources.hpp"
#include "scalar_oracle.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// \file
/// What an array must become: each element what the scalar would, or nothing at all.

namespace whole_values {

template <class T>
struct array_outcome {
    std::vector<T> values;
    io_errc code = io_errc::success;
};

template <class T>
array_outcome<T> element_wise(std::vector<any_source> const& elements) {
    array_outcome<T> result;
    for (any_source const& each : elements) {
        outcome<T> const converted = scalar_oracle<T>()(each);
        if (converted.code != io_errc::success) return {{}, converted.code};
        result.values.push_back(converted.value);
    }
    return result;
}

/// Whether an array holds exactly these elements: by bit where they are reals.
template <class T>
bool same_elements(utility::array<T> const& result, std::vector<T> const& expected) {
    if (result.size() != expected.size()) return false;
    for (unsigned int i = 0; i < result.size(); ++i) {
        if (!same_result<T>(result[i], expected[i])) return false;
    }
    return result.size() != 0 || result.data() == nullptr;
}

template <class T>
void expect_array_conversion(io_value const& value,
                             array_outcome<T> const& expected,
                             std::string const& name) {
    io_error error(io_errc::not_found);
    utility::array<T> const result = detail::get_as<utility::array<T>>(value, error);
    if (error.code() != static_cast<int>(expected.code) ||
        &error.category() != &generic_io_error_category()) {
        ADD_FAILURE() << name << " gave code " << error.code() << " in place of "
                      << static_cast<int>(expected.code);
    } else if (!same_elements(result, expected.values)) {
        ADD_FAILURE() << name << " gave " << result.size() << " elements, which are not the "
                      << expected.values.size() << " expected ones";
    }
}

template <class T>
void expect_element_wise(array_source const& from) {
    expect_array_conversion<T>(from.value, element_wise<T>(from.elements), from.name);
}

/// Whether the conversion to an array of `T` reports `code` and gives no elements and no block.
template <class T>
::testing::AssertionResult refuses_array(io_value const& value, io_errc code) {
    io_error error;
    utility::array<T> const result = detail::get_as<utility::array<T>>(value, error);
    if (error.code() == static_cast<int>(code) && result.size() == 0 && result.data() == nullptr) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << result.size() << " elements with code " << error.code();
}

/// Whether it gives exactly these elements without an error.
template <class T>
::testing::AssertionResult gives_array(io_value const& value, std::vector<T> const& expected) {
    io_error error(io_errc::not_found);
    utility::array<T> const result = detail::get_as<utility::array<T>>(value, error);
    if (error.ok() && same_elements(result, expected)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << result.size() << " elements with code " << error.code();
}

} // namespace whole_values
