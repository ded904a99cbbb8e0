#include "held_value.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <utility>

/// \file
/// What holds for every value, or every two.

namespace properties_test {
namespace {

/// Whether a value meets nothing under its own type, which equals all of that type from one side
/// alone.
bool meet_unevenly(io_value const& left, io_value const& right) {
    return left.data_type() == right.data_type() && left.empty() != right.empty();
}

bool holds_an_empty_element(io_value const& value) {
    auto const* const elements = value.get_if<v2::utility::array<io_value>>();
    if (elements == nullptr) return false;
    for (io_value const& each : *elements) {
        if (each.empty()) return true;
    }
    return false;
}

RC_GTEST_PROP(CopyOfAnyValue, IsIdenticalAndPrintsAlike, (held_value const& held)) {
    io_value const copy(held.get());
    RC_ASSERT(identical(copy, held.get()));
    RC_ASSERT(copy.printable_string() == held.get().printable_string());
}

RC_GTEST_PROP(AssignmentOfAnyValue,
              MakesTheTargetIdentical,
              (held_value const& source, held_value const& old)) {
    io_value target(old.get());
    target = source.get();
    RC_ASSERT(identical(target, source.get()));
}

RC_GTEST_PROP(MoveOfAnyValue, HandsOverAllAndLeavesTheEmptyValue, (held_value const& held)) {
    io_value source(held.get());
    io_value const& left_behind = source;
    io_value const target(std::move(source));
    RC_ASSERT(identical(target, held.get()));
    RC_ASSERT(identical(left_behind, io_value()));
    RC_ASSERT(target.printable_string() == held.get().printable_string());
}

RC_GTEST_PROP(ElementOfAnArray,
              MayTakeThePlaceOfItsHolder,
              (held_value const& first, held_value const& second)) {
    io_value holder(v2::utility::array<io_value>::of(first.get(), second.get()));
    holder = (*holder.get_if<v2::utility::array<io_value>>())[1];
    RC_ASSERT(identical(holder, second.get()));
}

RC_GTEST_PROP(Equality, IsSymmetric, (held_value const& left, held_value const& right)) {
    RC_PRE(!meet_unevenly(left.get(), right.get()));
    RC_ASSERT((left.get() == right.get()) == (right.get() == left.get()));
}

RC_GTEST_PROP(Inequality, IsTheNegation, (held_value const& left, held_value const& right)) {
    RC_ASSERT((left.get() != right.get()) == !(left.get() == right.get()));
}

RC_GTEST_PROP(EqualityOfTwoTypes,
              IsOfOneDirection,
              (held_value const& left, held_value const& right)) {
    RC_PRE(left.get().data_type() != right.get().data_type());
    bool const either = left.get().equals(right.get()) || right.get().equals(left.get());
    RC_ASSERT((left.get() == right.get()) == either);
}

RC_GTEST_PROP(WhatFits, Converts, (held_value const& held)) {
    io_data_type const type = *any_target();
    RC_PRE(held.get().converts_to(type));
    v2::io_error error(v2::io_errc::todo);
    io_value const converted = held.get().to_variant(type, error);
    RC_ASSERT(error.ok());
    RC_ASSERT(converted.type_code() == type.type_code());
}

RC_GTEST_PROP(WhatDoesNotFit, IsRefusedUnlessSomethingIsEmpty, (held_value const& held)) {
    io_data_type const type = *any_target();
    RC_PRE(!held.get().converts_to(type));
    RC_PRE(!held.get().empty() && !holds_an_empty_element(held.get()));
    v2::io_error error;
    (void)held.get().to_variant(type, error);
    RC_ASSERT(error.failed());
}

RC_GTEST_PROP(Conversion, DoesNothingTheSecondTime, (held_value const& held)) {
    io_data_type const type = *any_target();
    io_value const once = held.get().to_variant(type);
    RC_ASSERT(identical(once.to_variant(type), once));
}

RC_GTEST_PROP(BothFormsOfConversion, GiveOneValue, (held_value const& held)) {
    io_data_type const type = *any_target();
    v2::io_error error;
    RC_ASSERT(identical(held.get().to_variant(type, error), held.get().to_variant(type)));
}

template <class T>
void check_exact(io_value const& value) {
    auto const exact = [&] {
        v2::io_error error;
        T const number = value.get_exact<T>(error);
        return std::pair(number, error.code());
    }();
    if (exact.second != 0) return;
    RC_ASSERT(value.as<T>() == exact.first);
    // Nothing was lost on the way.
    if (value.get_if<double>() != nullptr) RC_ASSERT(*value.get_if<double>() == exact.first);
    if (value.get_if<float>() != nullptr) RC_ASSERT(*value.get_if<float>() == exact.first);
}

RC_GTEST_PROP(ExactConversion, IsThatWhichLosesNothing, ()) {
    held_value const held = *any_number_value();
    check_exact<signed char>(held.get());
    check_exact<unsigned char>(held.get());
    check_exact<short>(held.get());
    check_exact<unsigned short>(held.get());
    check_exact<int>(held.get());
    check_exact<unsigned int>(held.get());
}

template <class T>
void check_text_of_number() {
    T const number = *any_number<T>();
    RC_PRE(number == number); // no NaN
    std::string const text = io_value(number).template as<std::string>();
    RC_ASSERT(io_value(text).template as<T>() == number);
}

template <class T>
class TextOfNumber : public ::testing::Test {};
using numbers = ::testing::Types<signed char,
                                 short,
                                 int,
                                 long,
                                 long long,
                                 unsigned char,
                                 unsigned short,
                                 unsigned int,
                                 unsigned long,
                                 unsigned long long,
                                 float,
                                 double,
                                 char>;
TYPED_TEST_SUITE(TextOfNumber, numbers);

TYPED_TEST(TextOfNumber, ReadsBack) {
    rc::detail::checkGTest(check_text_of_number<TypeParam>);
}

template <class T>
void check_values_of_array() {
    auto const elements = *rc::gen::container<std::vector<T>>(any_number<T>());
    v2::utility::array<T> const stored(elements);
    auto const values = io_value(stored).template as<v2::utility::array<io_value>>();
    RC_ASSERT(values.size() == stored.size());
    auto const again = io_value(values).template as<v2::utility::array<T>>();
    RC_ASSERT(identical(io_value(again), io_value(stored)));
}

template <class T>
class ArrayOfNumbers : public ::testing::Test {};
// Not of char, which gives two texts.
using numbers_of_arrays = ::testing::Types<signed char,
                                           short,
                                           int,
                                           long,
                                           long long,
                                           unsigned char,
                                           unsigned short,
                                           unsigned int,
                                           unsigned long,
                                           unsigned long long,
                                           float,
                                           double>;
TYPED_TEST_SUITE(ArrayOfNumbers, numbers_of_arrays);

TYPED_TEST(ArrayOfNumbers, ComesBackFromItsValues) {
    rc::detail::checkGTest(check_values_of_array<TypeParam>);
}

RC_GTEST_PROP(MemberOfFreeKeys, IsWhatWasSetUntilItIsRemoved, (held_value const& held)) {
    std::string const key = *any_text();
    v2::io_object object;
    v2::io_error error;
    object.set(key, held.get(), error);
    RC_ASSERT(error.ok());
    RC_ASSERT(identical(object.get(key), held.get()));
    object.remove(key, error);
    RC_ASSERT(error.ok());
    RC_ASSERT(object.empty());
}

RC_GTEST_PROP(DeclaredMember, IsOfItsTypeOrRefused, (held_value const& held)) {
    io_data_type const type = *any_target();
    v2::io_object object(7, v2::io_structure_type({{"member", type}}));
    v2::io_error error;
    object.set("member", held.get(), error);
    RC_ASSERT(error.ok() == held.get().converts_to(type));
    RC_ASSERT(object.get("member").data_type() == (error.ok() ? type : io_data_type()));
}

} // namespace
} // namespace properties_test
