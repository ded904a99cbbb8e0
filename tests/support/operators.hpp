#pragma once

#include <type_traits>
#include <utility>

/// \file
/// Whether an expression with an operator compiles, for tests of what a class does not offer.

namespace test_support {

#define TEST_SUPPORT_DETECT_OPERATOR(name, op)                                                     \
    template <class Left, class Right, class = void>                                               \
    struct name##_detector : std::false_type {};                                                   \
    template <class Left, class Right>                                                             \
    struct name##_detector<                                                                        \
        Left, Right,                                                                               \
        std::void_t<decltype(std::declval<Left const&>() op std::declval<Right const&>())>>        \
        : std::true_type {};                                                                       \
    template <class Left, class Right = Left>                                                      \
    inline constexpr bool name = name##_detector<Left, Right>::value

TEST_SUPPORT_DETECT_OPERATOR(has_equal, ==);
TEST_SUPPORT_DETECT_OPERATOR(has_not_equal, !=);
TEST_SUPPORT_DETECT_OPERATOR(has_less, <);
TEST_SUPPORT_DETECT_OPERATOR(has_less_equal, <=);
TEST_SUPPORT_DETECT_OPERATOR(has_greater, >);
TEST_SUPPORT_DETECT_OPERATOR(has_greater_equal, >=);
TEST_SUPPORT_DETECT_OPERATOR(has_three_way, <=>);

#undef TEST_SUPPORT_DETECT_OPERATOR

} // namespace test_support
