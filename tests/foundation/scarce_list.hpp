#pragma once

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

/// \file
/// The lists behind the handles cannot be filled up to their limits in a test. A list of an element
/// whose limit is small can.

namespace foundation_test {

constexpr std::size_t small_limit = 5;

struct scarce {
    int number = 0;
};

struct small_allocator : std::allocator<scarce> {
    template <class Other>
    struct rebind {
        using other = std::
            conditional_t<std::is_same_v<Other, scarce>, small_allocator, std::allocator<Other>>;
    };
    [[nodiscard]] std::size_t max_size() const noexcept { return small_limit; }
};

} // namespace foundation_test

// A list of scarce elements has the small limit wherever it is spelled.
template <>
class std::vector<foundation_test::scarce>
    : public std::vector<foundation_test::scarce, foundation_test::small_allocator> {
public:
    using vector<foundation_test::scarce, foundation_test::small_allocator>::vector;
};
