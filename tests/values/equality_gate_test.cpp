#include "array_conversion_sources.hpp"
#include "equality_oracle.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

/// \file
/// Every alternative at its bound values against the value of each kind that it converts to, or
/// would if the gate let it.

namespace whole_values {
namespace {

/// Whether a value can hold a `T`, as all targets of conversion but one.
template <class T>
inline constexpr bool is_stored = detail::is_alternative<T>;

template <class T>
class EqualityGateOf : public ::testing::Test {
protected:
    /// The number that the other becomes, and where it becomes none, the default.
    static T counterpart(conversion_source const& other) {
        return scalar_oracle<T>()(other.what).value;
    }

    static void expect_by_rules(io_value const& left,
                                io_value const& right,
                                std::string const& name) {
        ASSERT_EQ(left.equals(right), equals_by_rules(left, right)) << left << " and " << name;
    }
};
TYPED_TEST_SUITE(EqualityGateOf, scalar_targets, target_names);

TYPED_TEST(EqualityGateOf, PassesTheBoundsThatConvertAndAreTheSame) {
    if constexpr (is_stored<TypeParam>) {
        for (conversion_sources const& bounds : bounds_by_alternative()) {
            for (conversion_source const& bound : bounds) {
                auto const left = this->counterpart(bound);
                ASSERT_NO_FATAL_FAILURE(this->expect_by_rules(left, bound.value, bound.name));
            }
        }
    }
}

TYPED_TEST(EqualityGateOf, PassesThemAsElementsOfAnArrayOfValues) {
    if constexpr (is_stored<TypeParam>) {
        for (conversion_sources const& bounds : bounds_by_alternative()) {
            for (conversion_source const& bound : bounds) {
                array<TypeParam> const left{this->counterpart(bound)};
                ASSERT_NO_FATAL_FAILURE(this->expect_by_rules(
                    left, io_value(array<io_value>::of(bound.value)), bound.name));
            }
        }
    }
}

TYPED_TEST(EqualityGateOf, PassesThemAsElementsOfAnArray) {
    if constexpr (is_stored<TypeParam>) {
        for (element_kind const& kind : element_kinds()) {
            for (conversion_source const& bound : kind.bounds()) {
                array<TypeParam> const left{this->counterpart(bound)};
                array_source const right = array_of(kind, {&bound});
                ASSERT_NO_FATAL_FAILURE(this->expect_by_rules(left, right.value, right.name));
            }
        }
    }
}

TYPED_TEST(EqualityGateOf, PassesNoneThatIsAnotherNumber) {
    if constexpr (is_stored<TypeParam>) {
        io_value const left(TypeParam{});
        for (conversion_sources const& bounds : bounds_by_alternative()) {
            for (conversion_source const& bound : bounds) {
                ASSERT_NO_FATAL_FAILURE(this->expect_by_rules(left, bound.value, bound.name));
            }
        }
    }
}

} // namespace
} // namespace whole_values
