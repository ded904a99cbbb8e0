#include "array_conversion_oracle.hpp"
#include "array_conversion_sources.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <set>

namespace whole_values {
namespace {

// Long enough that work in blocks of a power of two meets whole, broken and single blocks.
constexpr unsigned int counts[] = {0, 1, 2, 7, 64, 1023, 1024, 1025, 5000};

/// The first bound with this outcome as a `T`, or null.
template <class T>
conversion_source const* bound_with(conversion_sources const& bounds, bool success) {
    for (conversion_source const& bound : bounds) {
        if ((scalar_oracle<T>()(bound.what).code == io_errc::success) == success) return &bound;
    }
    return nullptr;
}

std::set<unsigned int> places_in(unsigned int count) {
    if (count == 0) return {};
    return {0, count / 2, count - 1};
}

template <class T>
class LongArrayTo : public ::testing::Test {};
TYPED_TEST_SUITE(LongArrayTo, scalar_targets, target_names);

TYPED_TEST(LongArrayTo, ConvertsWholeWhereAllElementsFit) {
    for (element_kind const& kind : element_kinds()) {
        conversion_source const* const fit = bound_with<TypeParam>(kind.bounds(), true);
        if (fit == nullptr) continue;
        for (unsigned int const count : counts) {
            array_outcome<TypeParam> expected;
            expected.values.assign(count, scalar_oracle<TypeParam>()(fit->what).value);
            expect_array_conversion(kind.make(picked_sources(count, fit)), expected, fit->name);
        }
    }
}

TYPED_TEST(LongArrayTo, FindsTheOnlyMisfitWhereverItStands) {
    for (element_kind const& kind : element_kinds()) {
        conversion_source const* const fit = bound_with<TypeParam>(kind.bounds(), true);
        conversion_source const* const misfit = bound_with<TypeParam>(kind.bounds(), false);
        if (fit == nullptr || misfit == nullptr) continue;
        array_outcome<TypeParam> const expected{{}, scalar_oracle<TypeParam>()(misfit->what).code};
        for (unsigned int const count : counts) {
            for (unsigned int const place : places_in(count)) {
                picked_sources picked(count, fit);
                picked[place] = misfit;
                expect_array_conversion(kind.make(picked), expected,
                                        misfit->name + " at " + std::to_string(place) + " of " +
                                            std::to_string(count));
            }
        }
    }
}

TYPED_TEST(LongArrayTo, LetsTheFirstMisfitOfManyDecideTheCode) {
    // A truth value is too large for a number, an array is incompatible; a text takes the first and
    // a truth value takes both.
    io_value const too_large = true;
    io_value const incompatible = array<int>{1};
    auto const code_of = [](any_source const& what) {
        return scalar_oracle<TypeParam>()(what).code;
    };
    io_errc const code_of_truth = code_of(source::truth{true});
    io_errc const code_of_array = code_of(source::elements{1});
    for (unsigned int const count : {2U, 1024U, 1025U, 5000U}) {
        utility::array<io_value> elements(count);
        for (io_value& each : elements) each = 1;
        for (unsigned int const place : {0U, count / 2 - 1}) {
            utility::array<io_value> spoilt(elements);
            spoilt[place] = too_large;
            spoilt[count - 1] = incompatible;
            io_errc const first = code_of_truth != io_errc::success ? code_of_truth : code_of_array;
            io_error error;
            (void)detail::get_as<array<TypeParam>>(io_value(spoilt), error);
            EXPECT_EQ(error.code(), static_cast<int>(first)) << place << " of " << count;

            spoilt[place] = incompatible;
            spoilt[count - 1] = too_large;
            (void)detail::get_as<array<TypeParam>>(io_value(spoilt), error);
            io_errc const other = code_of_array != io_errc::success ? code_of_array : code_of_truth;
            EXPECT_EQ(error.code(), static_cast<int>(other)) << place << " of " << count;
        }
    }
}

} // namespace
} // namespace whole_values
