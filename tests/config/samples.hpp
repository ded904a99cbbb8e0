#pragma once

#include <tavi/ioapi/v2/config/category.hpp>
#include <tavi/ioapi/v2/config/option.hpp>

#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <new>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Short ways to make and to read what the tests of the configuration are about.

namespace config_test {

namespace v2 = tavi::ioapi::v2;
using v2::config::category;
using v2::config::option;

/// Texts that do not fit into the buffer of a standard text.
inline std::string const long_key = "a key that is longer than small buffers are";
inline std::string const other_long_key = "another key that is longer than small buffers are";
inline std::string const long_text = "a text that is longer than small buffers are";

/// A required option.
[[nodiscard]] inline option option_of(std::string_view key, std::string_view description = {}) {
    return option(key, {}, description, v2::io_data_type::basic_types::i32);
}

/// A category of required options.
[[nodiscard]] inline category category_of(std::string_view name,
                                          std::initializer_list<char const*> keys = {},
                                          std::string_view description = {}) {
    std::vector<option> options;
    for (char const* const key : keys) options.push_back(option_of(key, description));
    return category(name, description, false, false, options);
}

using texts = std::vector<std::string>;

[[nodiscard]] inline texts keys_of(v2::utility::data_view<option const> options) {
    texts result;
    for (option const& element : options) result.push_back(element.key().str());
    return result;
}

[[nodiscard]] inline texts names_of(v2::utility::data_view<category const> categories) {
    texts result;
    for (category const& element : categories) result.push_back(element.name().str());
    return result;
}

/// Whether the value is the empty one, all fields of its type 0.
[[nodiscard]] inline ::testing::AssertionResult is_blank(v2::io_value const& value) {
    if (!value.empty()) return ::testing::AssertionFailure() << value;
    if (value.data_type() != v2::io_data_type()) {
        return ::testing::AssertionFailure() << "of type " << value.data_type();
    }
    return ::testing::AssertionSuccess();
}

/// Run `action` with its n-th allocation failing. \return whether it came to that allocation
template <class Action>
[[nodiscard]] bool fails_at(std::size_t n, Action action) {
    bool raised = false;
    bool hit = false;
    {
        test_support::allocation_failure const failure(n);
        try {
            action();
        } catch (std::bad_alloc const&) {
            raised = true;
        }
        hit = failure.hit();
    }
    EXPECT_EQ(raised, hit) << "at allocation " << n;
    return hit;
}

/// The sizes, from 0 to `count - 1`, at which `add(size)` asks for memory.
template <class Add>
[[nodiscard]] std::vector<int> sizes_that_allocate(int count, Add add) {
    std::vector<int> result;
    for (int size = 0; size < count; ++size) {
        if (add(size) != 0) result.push_back(size);
    }
    return result;
}

} // namespace config_test
