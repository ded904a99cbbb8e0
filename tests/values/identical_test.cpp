#include "equality_held_value.hpp"
#include "equality_samples.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

/// By alternative.
template <class T>
class Identical : public ::testing::Test {
protected:
    io_value const& value() const { return *value_; }

private:
    held_value value_ = sample_value<T>();
};
TYPED_TEST_SUITE(Identical, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(Identical, HoldsBetweenAValueAndItsCopy) {
    io_value const copy(this->value());
    EXPECT_TRUE(identical(this->value(), copy));
    EXPECT_TRUE(identical(copy, this->value()));
    EXPECT_TRUE(identical(this->value(), this->value()));
}

TYPED_TEST(Identical, SeesEachFieldOfTheType) {
    io_data_type const type = this->value().data_type();
    auto const check = [&](io_data_type const& other) {
        EXPECT_FALSE(identical(this->value(), with_type(other, this->value())));
        EXPECT_FALSE(identical(with_type(other, this->value()), this->value()));
    };
    check({types{77}, type.structure_id, type.array_kind, type.array_extent});
    check({type.basic_type, type.structure_id + 1, type.array_kind, type.array_extent});
    check({type.basic_type, type.structure_id, type.array_kind + 1, type.array_extent});
    check({type.basic_type, type.structure_id, type.array_kind, type.array_extent + 1});
    EXPECT_TRUE(identical(this->value(), with_type(type, this->value())));
}

TYPED_TEST(Identical, SeesAnotherPayload) {
    if constexpr (!std::is_same_v<TypeParam, std::nullptr_t>) {
        io_value const plain(this->value().data_type(), TypeParam());
        EXPECT_FALSE(identical(this->value(), plain));
        EXPECT_FALSE(identical(plain, this->value()));
    }
}

TYPED_TEST(Identical, SeesAnotherAlternativeUnderTheSameType) {
    io_data_type const type = this->value().data_type();
    for (io_value const& other : {io_value(type, nullptr), io_value(type, 0), io_value(type, 0L),
                                  io_value(type, array<int>()), io_value(type, array<long>())}) {
        if (other.index() == this->value().index()) continue;
        EXPECT_FALSE(identical(this->value(), other));
        EXPECT_FALSE(identical(other, this->value()));
    }
}

TEST(IdenticalValues, HoldNoConversion) {
    EXPECT_FALSE(identical(5, 5.0));
    EXPECT_FALSE(identical(5, "5"));
    EXPECT_FALSE(identical(5, 5L));
    EXPECT_FALSE(identical(true, 1));
    EXPECT_FALSE(identical(array<int>(), array<double>()));
    EXPECT_FALSE(identical(array<io_value>::of(5), array<io_value>::of(5L)));
}

TEST(IdenticalValues, MayBeNaNsAndHaveSignedZeros) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(identical(nan, nan));
    EXPECT_TRUE(identical(array<double>{nan, 1.0}, array<double>{nan, 1.0}));
    EXPECT_TRUE(
        identical(array<float>{static_cast<float>(nan)}, array<float>{static_cast<float>(nan)}));
    EXPECT_FALSE(identical(0.0, -0.0));
    EXPECT_FALSE(identical(array<float>{0.0F}, array<float>{-0.0F}));
}

TEST(IdenticalValues, MayHaveNoBlockForAnEmptyText) {
    EXPECT_TRUE(identical("", utility::string()));
}

TEST(IdenticalValues, LookIntoObjects) {
    auto const i32 = io_data_type::scalar(types::i32);
    io_object object(7, io_structure_type({{"a", i32}, {"b", i32}}));
    object.set("a", 1);
    io_value const value(object);
    io_object copy(object);
    EXPECT_TRUE(identical(value, copy));
    copy.set("a", 2);
    EXPECT_FALSE(identical(value, copy));
    copy.set("a", 1);
    EXPECT_TRUE(identical(value, copy));
    copy.set("b", 1);
    EXPECT_FALSE(identical(value, copy));
    EXPECT_FALSE(identical(copy, value));
}

TEST(IdenticalValues, SeeAnotherKeyWithTheSameValue) {
    io_object left;
    left.set("a", 1);
    io_object right;
    right.set("b", 1);
    EXPECT_FALSE(identical(left, right));
}

TEST(IdenticalValues, SeeTheTypeOfEachObjectInAnArray) {
    io_structure_type const structure({{"a", io_data_type::scalar(types::i32)}});
    io_value const value(array<io_object>{io_object(7, structure)});
    EXPECT_TRUE(identical(value, array<io_object>{io_object(7, structure)}));
    EXPECT_FALSE(identical(value, array<io_object>{io_object(8, structure)}));
    EXPECT_FALSE(identical(value, array<io_object>{io_object()}));
}

TEST(IdenticalValues, LookIntoArraysOfObjectsAndOfValues) {
    io_object object;
    object.set("a", array<io_value>::of(1, sample_object()));
    io_value const value(array<io_object>{object, io_object()});
    EXPECT_TRUE(identical(value, io_value(value)));
    EXPECT_FALSE(identical(value, array<io_object>{io_object(), object}));
    EXPECT_FALSE(identical(value, array<io_object>{object}));
    io_value const list(array<io_value>::of(value, io_value()));
    EXPECT_TRUE(identical(list, io_value(list)));
    EXPECT_FALSE(identical(list, array<io_value>::of(io_value(), value)));
}

TEST(IdenticalValues, AreAllSamplesToThemselvesAndNoOtherButOfTheirKind) {
    std::vector<io_value> const samples = natural_samples();
    for (io_value const& each : samples) {
        EXPECT_TRUE(identical(each, io_value(each))) << each;
        for (io_value const& other : samples) {
            ASSERT_EQ(identical(each, other), identical(other, each)) << each << " and " << other;
            if (each.index() != other.index()) {
                ASSERT_FALSE(identical(each, other)) << each << " and " << other;
            }
        }
    }
}

} // namespace
} // namespace whole_values
