#pragma once

#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

namespace tavi::ioapi::v2::detail {

/// `a == b` and `b == a`, which differ only between two alternatives of one data type: the left one
/// decides, and an empty one that meets another is equal to it.
struct both_ways {
    bool forth;
    bool back;
};

/// Compare two values. Each pair of nested elements is visited once: a comparison in each direction
/// by itself would double with every level.
[[nodiscard]] both_ways compare(io_value const& a, io_value const& b);

/// Compare as many elements on both sides, in order.
[[nodiscard]] both_ways compare_elements(utility::array<io_value> const& a,
                                         utility::array<io_value> const& b);

} // namespace tavi::ioapi::v2::detail
