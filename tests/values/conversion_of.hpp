#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include "scalar_oracle.hpp"

#include <gtest/gtest.h>

namespace values_test {

/// Value and code of one conversion, with a text as a standard one.
template <class T>
struct converted {
    T value;
    int code;
};

template <class T>
converted<T> conversion_of(tavi::ioapi::v2::io_value const& value) {
    tavi::ioapi::v2::io_error error;
    T result = value.as<T>(error);
    return {std::move(result), error.code()};
}

template <class T>
::testing::AssertionResult gives(tavi::ioapi::v2::io_value const& value, T const& expected) {
    converted<T> const result = conversion_of<T>(value);
    if (result.code == 0 && same_result(result.value, expected)) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << ::testing::PrintToString(result.value) << " with code " << result.code;
}

/// Whether the conversion to `T` fails with this code and gives the default.
template <class T>
::testing::AssertionResult refuses(tavi::ioapi::v2::io_value const& value, io_errc code) {
    converted<T> const result = conversion_of<T>(value);
    if (result.code == static_cast<int>(code) && same_result(result.value, T())) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << ::testing::PrintToString(result.value) << " with code " << result.code;
}

} // namespace values_test
