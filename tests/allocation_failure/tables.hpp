#pragma once

#include "operation.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// \file
/// The tables of operations, by subject. Each stands in a file of its own.

namespace allocation_failure_test {

[[nodiscard]] std::vector<operation> value_operations();
[[nodiscard]] std::vector<operation> conversion_operations();
[[nodiscard]] std::vector<operation> container_operations();
[[nodiscard]] std::vector<operation> structure_operations();
[[nodiscard]] std::vector<operation> result_operations();
[[nodiscard]] std::vector<operation> subscription_operations();
[[nodiscard]] std::vector<operation> configuration_operations();
[[nodiscard]] std::vector<operation> error_operations();
[[nodiscard]] std::vector<operation> service_operations();

/// All tables, one behind the other.
[[nodiscard]] std::vector<operation> every_operation();

/// The suite over the rows of a table.
class MemoryRunsOut : public ::testing::TestWithParam<operation> {};

/// The name of a row.
struct name_of_row {
    std::string operator()(::testing::TestParamInfo<operation> const& row) const {
        return row.param.name;
    }
};

/// What a failing test calls the row.
inline void PrintTo(operation const& row, std::ostream* out) {
    *out << row.name;
}

/// Texts that take a block of their own in every class.
inline constexpr char const* long_text = "a text that is longer than small buffers are";
inline constexpr char const* other_text = "another text, and this one is longer than the first";

} // namespace allocation_failure_test
