#include "array_conversion_oracle.hpp"
#include "array_conversion_sources.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

template <class T>
class ArrayConversionTo : public ::testing::Test {};
TYPED_TEST_SUITE(ArrayConversionTo, scalar_targets, target_names);

TYPED_TEST(ArrayConversionTo, TreatsEachBoundAloneAsTheScalar) {
    for (element_kind const& kind : element_kinds()) {
        for (conversion_source const& bound : kind.bounds()) {
            expect_element_wise<TypeParam>(array_of(kind, {&bound}));
        }
    }
}

TYPED_TEST(ArrayConversionTo, TreatsEachValueInAnArrayByItsOwnAlternative) {
    for (conversion_sources const& bounds : bounds_by_alternative()) {
        for (conversion_source const& bound : bounds) {
            expect_element_wise<TypeParam>(array_of(kind_of_values, {&bound}));
        }
    }
}

template <class T>
picked_sources pick_fitting(conversion_sources const& bounds) {
    picked_sources fitting;
    for (conversion_source const& bound : bounds) {
        if (scalar_oracle<T>()(bound.what).code == io_errc::success) fitting.push_back(&bound);
    }
    return fitting;
}

TYPED_TEST(ArrayConversionTo, GivesAllElementsThatFitInOrder) {
    for (element_kind const& kind : element_kinds()) {
        picked_sources const fitting = pick_fitting<TypeParam>(kind.bounds());
        expect_element_wise<TypeParam>(array_of(kind, fitting));
        expect_element_wise<TypeParam>(array_of(kind_of_values, fitting));
    }
}

TYPED_TEST(ArrayConversionTo, GivesAllBoundsOfAnAlternativeOrNone) {
    for (element_kind const& kind : element_kinds()) {
        expect_element_wise<TypeParam>(array_of(kind, pick_all(kind.bounds())));
    }
}

TYPED_TEST(ArrayConversionTo, MixesAlternativesInAnArrayOfValues) {
    picked_sources mixed;
    for (conversion_sources const& bounds : bounds_by_alternative()) {
        for (conversion_source const* const each : pick_fitting<TypeParam>(bounds)) {
            mixed.push_back(each);
        }
    }
    ASSERT_FALSE(mixed.empty());
    expect_element_wise<TypeParam>(array_of(kind_of_values, mixed));
}

TYPED_TEST(ArrayConversionTo, LeavesTheSourceAsItWas) {
    for (element_kind const& kind : element_kinds()) {
        picked_sources const all = pick_all(kind.bounds());
        io_value const value = kind.make(all);
        io_error error;
        (void)detail::get_as<array<TypeParam>>(value, error);
        EXPECT_TRUE(identical(value, kind.make(all)));
    }
}

} // namespace
} // namespace whole_values
