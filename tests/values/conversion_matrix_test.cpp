#include "conversion_sources.hpp"
#include "counted_diagnostics.hpp"
#include "foreign_category.hpp"
#include "scalar_oracle.hpp"
#include "scalar_targets.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace values_test {
namespace {

template <class T>
std::string printed(T const& value) {
    std::ostringstream out;
    out.precision(21);
    if constexpr (std::is_integral_v<T>) {
        out << +value;
    } else {
        out << value;
    }
    return out.str();
}

/// Converts, and compares value, code and category, what became of an error from before, and the
/// bytes of the source.
template <class T>
void expect_conversion(io_value const& value, any_source const& what, std::string const& name) {
    outcome<T> const expected = scalar_oracle<T>()(what);
    foreign_category category;
    counted_diagnostics diagnostics;
    io_error error(category, 77);
    error.diagnostics(io_error_diagnostics(&diagnostics));
    value_image const before = image_of(value);

    T const result = detail::get_as<T>(value, error);

    if (!same_result(result, expected.value) || error.code() != static_cast<int>(expected.code)) {
        ADD_FAILURE() << name << " gave " << printed(result) << " with code " << error.code()
                      << " in place of " << printed(expected.value) << " with code "
                      << static_cast<int>(expected.code);
    }
    EXPECT_EQ(&error.category(), &generic_io_error_category()) << name;
    EXPECT_EQ(error.diagnostics().list(), nullptr) << name;
    EXPECT_EQ(diagnostics.released, 1) << name;
    EXPECT_EQ(image_of(value), before) << name;
}

template <class T>
class ConversionTo : public ::testing::Test {
protected:
    void expect_all(conversion_sources const& sources) {
        for (conversion_source const& from : sources) {
            expect_conversion<T>(from.value, from.what, from.name);
        }
    }
};
TYPED_TEST_SUITE(ConversionTo, scalar_targets, target_names);

TYPED_TEST(ConversionTo, FollowsTheTableFromEveryInteger) {
    this->expect_all(integer_sources());
}

TYPED_TEST(ConversionTo, FollowsTheTableFromEveryReal) {
    this->expect_all(real_sources());
}

TYPED_TEST(ConversionTo, FollowsTheTableFromEveryText) {
    this->expect_all(text_sources());
}

TYPED_TEST(ConversionTo, FollowsTheTableFromAllElse) {
    this->expect_all(other_sources());
}

TYPED_TEST(ConversionTo, TakesNoNoticeOfTheDataType) {
    io_data_type const misleading[] = {{},
                                       io_data_type::object(9),
                                       io_data_type::array_of(types::string),
                                       {types{99}, 9, 1, 5},
                                       io_data_type::scalar(types::boolean)};
    for (io_data_type const& type : misleading) {
        auto const check = [&](auto payload, any_source const& what) {
            expect_conversion<TypeParam>(io_value(type, payload), what, "stated type");
        };
        check(nullptr, source::nothing{});
        check(true, source::truth{true});
        check(-1L, source::number{row_of<long>(), exact(-1)});
        check(300U, source::number{row_of<unsigned int>(), exact(300)});
        check('A', source::number{row_of<char>(), exact(65)});
        check(-2.0F, source::single_real{-2});
        check(0.5, source::double_real{0.5});
        check(utility::string("12"), source::text{"12"});
        check(sample_object(), source::structure{});
        check(array<int>{1, 2}, source::elements{2});
        check(array<io_value>(), source::elements{0});
    }
}

} // namespace
} // namespace values_test
