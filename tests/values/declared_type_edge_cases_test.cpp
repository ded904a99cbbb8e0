#include "declared_type_targets.hpp"
#include "raw_value.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

constexpr io_data_type scalar(types element) {
    return io_data_type::scalar(element);
}
constexpr io_data_type array_type(types element) {
    return io_data_type::array_of(element);
}

/// Whether a value fits a type and gives exactly this value of it.
::testing::AssertionResult fits_as(io_value const& value,
                                   io_data_type const& type,
                                   io_value const& expected) {
    if (!value.converts_to(type)) return ::testing::AssertionFailure() << "does not fit";
    io_error error(io_errc::not_found);
    io_value const result = value.to_variant(type, error);
    if (error.ok() && identical(result, expected)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << result << " with code " << error.code();
}

/// Whether a value does not fit a type and gives this value with a code.
::testing::AssertionResult misfits_as(io_value const& value,
                                      io_data_type const& type,
                                      io_value const& expected,
                                      int code) {
    if (value.converts_to(type)) return ::testing::AssertionFailure() << "fits";
    io_error error;
    io_value const result = value.to_variant(type, error);
    if (error.code() == code && identical(result, expected)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << result << " with code " << error.code();
}

using u8 = unsigned char;

TEST(DeclaredTypeEdgeCase, EmptyValueFitsItsOwnTypeAlone) {
    EXPECT_TRUE(fits_as(io_value(), {}, io_value()));
    EXPECT_FALSE(io_value().converts_to(scalar(types::i32)));
    EXPECT_TRUE(misfits_as(io_value(), scalar(types::i32), 0, 0));
}

TEST(DeclaredTypeEdgeCase, IntBeyondAByteFitsAShort) {
    EXPECT_TRUE(misfits_as(300, scalar(types::u8), u8{0}, 4));
    EXPECT_TRUE(fits_as(300, scalar(types::i16), short{300}));
}

TEST(DeclaredTypeEdgeCase, TextOfANumberFitsNumbers) {
    EXPECT_TRUE(fits_as("12", scalar(types::u8), u8{12}));
    EXPECT_TRUE(fits_as("12", scalar(types::i32), 12));
    EXPECT_TRUE(fits_as("12", scalar(types::flt), 12.0F));
    EXPECT_TRUE(fits_as("", scalar(types::i64), 0LL));
    EXPECT_TRUE(fits_as("", scalar(types::dbl), 0.0));
}

TEST(DeclaredTypeEdgeCase, AnyTextFitsATruthValue) {
    EXPECT_TRUE(fits_as("abc", scalar(types::boolean), true));
    EXPECT_TRUE(fits_as("false", scalar(types::boolean), true));
    EXPECT_TRUE(fits_as("0", scalar(types::boolean), false));
}

TEST(DeclaredTypeEdgeCase, BrokenNumberFitsNoInteger) {
    EXPECT_TRUE(misfits_as(1.5, scalar(types::i32), 0, 4));
    EXPECT_TRUE(fits_as(1.5, scalar(types::flt), 1.5F));
}

TEST(DeclaredTypeEdgeCase, GateIsThatOfTheSource) {
    EXPECT_TRUE(fits_as(300.0F, scalar(types::u8), u8{44}));
    EXPECT_TRUE(fits_as(-3.0F, scalar(types::u32), 0U));
    EXPECT_TRUE(misfits_as(16777216.0F, scalar(types::i32), 0, 4));
    EXPECT_TRUE(fits_as(3e9, scalar(types::i32), 2147483647));
}

TEST(DeclaredTypeEdgeCase, TruthValueFitsATextAndNoNumber) {
    EXPECT_TRUE(fits_as(true, scalar(types::string), "true"));
    EXPECT_TRUE(misfits_as(true, scalar(types::u8), u8{0}, 4));
}

TEST(DeclaredTypeEdgeCase, ObjectFitsATruthValueAndItsOwnType) {
    io_value const object = sample_object();
    EXPECT_TRUE(fits_as(object, scalar(types::boolean), true));
    EXPECT_TRUE(misfits_as(object, scalar(types::string), utility::string(), 3));
    EXPECT_TRUE(fits_as(object, io_data_type::object(77), object));
    EXPECT_TRUE(misfits_as(object, io_data_type::object(78), io_value(), 3));
    EXPECT_TRUE(misfits_as(object, {types::object, 77, 2, 0}, io_value(), 3));
}

TEST(DeclaredTypeEdgeCase, ArrayFitsWhereAllElementsDo) {
    io_value const result = io_value(array<int>{1, 2}).to_variant(array_type(types::u8));
    EXPECT_EQ(result.data_type().array_kind, 2U);
    EXPECT_EQ(result.index(), 23);
    EXPECT_TRUE(fits_as(array<int>{1, 2}, array_type(types::u8), array<u8>{1, 2}));
    EXPECT_TRUE(misfits_as(array<int>{1, 300}, array_type(types::u8), array<u8>(), 4));
}

TEST(DeclaredTypeEdgeCase, TruthValuesFitTextsAndNoNumbers) {
    EXPECT_TRUE(misfits_as(array<bool>{true}, array_type(types::i32), array<int>(), 4));
    EXPECT_TRUE(
        fits_as(array<bool>{true}, array_type(types::string), array<utility::string>{"true"}));
    EXPECT_TRUE(fits_as(array<bool>(), array_type(types::i32), array<int>()));
}

TEST(DeclaredTypeEdgeCase, ArrayOfObjectsFitsOtherArraysOnlyWithoutElements) {
    EXPECT_TRUE(fits_as(array<io_object>(), array_type(types::i32), array<int>()));
    EXPECT_TRUE(fits_as(array<io_object>(), array_type(types::string), array<utility::string>()));
    EXPECT_TRUE(misfits_as(array<io_object>(1), array_type(types::i32), array<int>(), 3));
    EXPECT_TRUE(fits_as(array<io_object>(2), array_type(types::boolean), array<bool>{true, true}));
}

TEST(DeclaredTypeEdgeCase, TextIsNoArray) {
    EXPECT_TRUE(misfits_as("x", array_type(types::string), array<utility::string>(), 3));
    EXPECT_TRUE(misfits_as(5, array_type(types::i32), array<int>(), 3));
}

TEST(DeclaredTypeEdgeCase, FailureWithoutAnErrorIsSilent) {
    EXPECT_TRUE(identical(io_value("abc").to_variant(scalar(types::i32)), io_value(0)));
}

TEST(DeclaredTypeEdgeCase, AnyArrayKindSelectsTheArrayThatIsWrittenAsTwo) {
    io_data_type const target{types::u8, 0, 1, 0};
    io_value const result = io_value(array<int>{1}).to_variant(target);
    EXPECT_TRUE(identical(result, io_value(array<u8>{1})));
    EXPECT_NE(result.data_type(), target);
    EXPECT_TRUE(io_value(array<u8>{1}).converts_to(target));
    EXPECT_FALSE(io_value(u8{1}).converts_to(target));
}

TEST(DeclaredTypeEdgeCase, ExtentAloneMakesNoArrayButAnotherType) {
    io_data_type const target{types::i32, 0, 0, 5};
    EXPECT_TRUE(fits_as(7, target, 7));
    EXPECT_TRUE(fits_as(7L, target, 7));
}

TEST(DeclaredTypeEdgeCase, ElementsConvertByTheirAlternativeAndNotByTheirType) {
    io_value const untyped(io_data_type(), 7);
    io_value const hollow(scalar(types::i32), nullptr);
    EXPECT_TRUE(io_value(array<io_value>::of(untyped)).converts_to(array_type(types::i32)));
    EXPECT_FALSE(io_value(array<io_value>::of(hollow)).converts_to(array_type(types::i32)));
    EXPECT_TRUE(untyped.converts_to(scalar(types::u8)));
    EXPECT_FALSE(hollow.converts_to(scalar(types::u8)));
}

TEST(DeclaredTypeEdgeCase, NestedArrayWithAnEmptyElementIsATruthValueLikeAnyOther) {
    io_value const nested(array<io_value>::of(array<io_value>::of(io_value())));
    EXPECT_TRUE(fits_as(nested, array_type(types::boolean), array<bool>{true}));
    EXPECT_FALSE(nested.converts_to(array_type(types::i32)));
}

// --- values without a legal alternative ---

class CorruptDeclaredSource : public ::testing::TestWithParam<int> {
protected:
    CorruptDeclaredSource() : value_(5) { corrupt_index(*value_, GetParam()); }
    ~CorruptDeclaredSource() override {
        corrupt_index(*value_, 4);
        value_.destroy();
    }
    io_value const& value() { return *value_; }

private:
    raw_value value_;
};
INSTANTIATE_TEST_SUITE_P(Indices,
                         CorruptDeclaredSource,
                         ::testing::Values(-1, 34),
                         [](auto const& row) {
                             return row.param < 0 ? std::string("MinusOne") : std::string("34");
                         });

TEST_P(CorruptDeclaredSource, RaisesWhenAskedForAConvertibleType) {
    for (unsigned int code = first_target; code <= last_target; ++code) {
        if (types{code} == types::i32) continue;
        EXPECT_TRUE(raises_empty_text([&] { (void)value().converts_to(scalar(types{code})); }));
    }
    for (unsigned int code = first_target; code <= last_target; ++code) {
        EXPECT_TRUE(raises_empty_text([&] { (void)value().converts_to(array_type(types{code})); }));
    }
}

TEST_P(CorruptDeclaredSource, FitsItsOwnTypeUnlookedAt) {
    EXPECT_TRUE(value().converts_to(scalar(types::i32)));
}

TEST_P(CorruptDeclaredSource, FitsNoTypeThatNothingConvertsTo) {
    EXPECT_FALSE(value().converts_to({}));
    EXPECT_FALSE(value().converts_to(io_data_type::object(1)));
    EXPECT_FALSE(value().converts_to({types{99}, 0, 2, 0}));
}

TEST_P(CorruptDeclaredSource, ConvertsToADefaultWithAnUnhandledException) {
    EXPECT_EQ(value().index(), GetParam());
    io_error error;
    EXPECT_TRUE(identical(value().to_variant(scalar(types::u8), error), io_value(u8{0})));
    EXPECT_EQ(error.code(), 8);
    EXPECT_TRUE(
        identical(value().to_variant(array_type(types::i32), error), io_value(array<int>())));
    EXPECT_EQ(error.code(), 8);
    EXPECT_TRUE(identical(value().to_variant({}, error), io_value()));
    EXPECT_EQ(error.code(), 0);
}

TEST_P(CorruptDeclaredSource, CannotBeCopiedToItsOwnType) {
    io_error error;
    EXPECT_TRUE(raises_empty_text([&] { (void)value().to_variant(scalar(types::i32), error); }));
}

} // namespace
} // namespace whole_values
