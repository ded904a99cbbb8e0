#include "equality_held_value.hpp"
#include "equality_samples.hpp"
#include "support/allocations.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace whole_values {
namespace {

template <class T>
inline constexpr bool is_never_equal =
    std::is_same_v<T, io_object> || std::is_same_v<T, array<io_object>>;

/// A payload without anything that is never equal.
template <class T>
T comparable() {
    if constexpr (std::is_same_v<T, array<io_value>>) {
        return array<io_value>::of(1, "two", array<int>{3});
    } else {
        return sample<T>();
    }
}

/// An element that differs from the default and is equal to itself.
template <class T>
T comparable_element() {
    if constexpr (std::is_same_v<T, io_value>) {
        return io_value("element");
    } else {
        return sample<T>();
    }
}

/// By alternative.
template <class T>
class SameTypeEquality : public ::testing::Test {
protected:
    io_data_type const stated_{types{99}, 3, 1, 4};
    io_value const& value() const { return *value_; }
    io_value const& twin() const { return *twin_; }
    io_value const& plain() const { return *plain_; }

private:
    held_value value_ = io_value(stated_, comparable<T>());
    held_value twin_ = io_value(stated_, comparable<T>());
    held_value plain_ = io_value(stated_, T());
};
TYPED_TEST_SUITE(SameTypeEquality,
                 test_support::every_alternative,
                 test_support::alternative_names);

TYPED_TEST(SameTypeEquality, HoldsBetweenTwins) {
    EXPECT_EQ(this->value().equals_same_type(this->twin()), !is_never_equal<TypeParam>);
    EXPECT_EQ(this->value() == this->twin(), !is_never_equal<TypeParam>);
    EXPECT_EQ(this->value() != this->twin(), is_never_equal<TypeParam>);
}

TYPED_TEST(SameTypeEquality, HoldsBetweenAValueAndItself) {
    EXPECT_EQ(this->value().equals_same_type(this->value()), !is_never_equal<TypeParam>);
    EXPECT_EQ(this->value() == this->value(), !is_never_equal<TypeParam>);
}

TYPED_TEST(SameTypeEquality, HoldsBetweenDefaults) {
    io_value const other(this->stated_, TypeParam());
    EXPECT_EQ(this->plain().equals_same_type(other), !is_never_equal<TypeParam>);
}

TYPED_TEST(SameTypeEquality, SeesAnotherPayload) {
    bool const is_nothing = std::is_same_v<TypeParam, std::nullptr_t>;
    EXPECT_EQ(this->value().equals_same_type(this->plain()), is_nothing);
    EXPECT_EQ(this->plain().equals_same_type(this->value()), is_nothing);
    EXPECT_EQ(this->plain() == this->value(), is_nothing);
    EXPECT_EQ(this->plain() != this->value(), !is_nothing);
}

TYPED_TEST(SameTypeEquality, AllocatesNothing) {
    test_support::allocation_counter const counter;
    (void)(this->value() == this->twin());
    (void)(this->value() != this->twin());
    (void)this->value().equals_same_type(this->plain());
    EXPECT_EQ(counter.allocations(), 0U);
}

TYPED_TEST(SameTypeEquality, SeesADifferenceInAnyElement) {
    if constexpr (detail::is_array<TypeParam> && !is_never_equal<TypeParam>) {
        using element = detail::array_element_t<TypeParam>;
        TypeParam payload =
            TypeParam::of(comparable_element<element>(), comparable_element<element>(),
                          comparable_element<element>());
        io_value const whole(payload);
        for (unsigned int i = 0; i < payload.size(); ++i) {
            TypeParam spoilt(payload);
            spoilt[i] = element();
            EXPECT_FALSE(whole == io_value(spoilt)) << i;
            EXPECT_FALSE(io_value(spoilt) == whole) << i;
        }
        EXPECT_TRUE(whole == io_value(payload));
    }
}

TYPED_TEST(SameTypeEquality, SeesAnotherCount) {
    if constexpr (detail::is_array<TypeParam>) {
        EXPECT_FALSE(io_value(TypeParam(2)) == io_value(TypeParam(3)));
        EXPECT_FALSE(io_value(TypeParam(1)) == io_value(TypeParam()));
        EXPECT_FALSE(io_value(TypeParam()) == io_value(TypeParam(1)));
    }
}

// --- single rows ---

bool same(io_value const& left, io_value const& right) {
    io_data_type const type{types{99}, 3, 1, 4};
    return with_type(type, left).equals_same_type(with_type(type, right));
}

TEST(SameTypeEqualityOf, NumbersSeesEveryByte) {
    EXPECT_FALSE(same(0x01000000, 0));
    EXPECT_FALSE(same(0x0100000000000000LL, 0LL));
    EXPECT_FALSE(same(short{0x0100}, short{0}));
    EXPECT_FALSE(same(0x8000000000000000ULL, 0ULL));
    EXPECT_FALSE(same(-1, 1));
    EXPECT_TRUE(same('\xC8', '\xC8'));
}

TEST(SameTypeEqualityOf, LongSeesAllItsBytes) {
    if constexpr (sizeof(long) == 8) {
        EXPECT_FALSE(same(static_cast<long>(0x100000005LL), 5L));
        EXPECT_FALSE(same(static_cast<unsigned long>(0x100000005ULL), 5UL));
    }
    EXPECT_TRUE(same(-5L, -5L));
}

TEST(SameTypeEqualityOf, RealsIsThatOfFloatingPoint) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(same(0.0, -0.0));
    EXPECT_TRUE(same(0.0F, -0.0F));
    EXPECT_FALSE(same(nan, nan));
    EXPECT_FALSE(same(static_cast<float>(nan), static_cast<float>(nan)));
    EXPECT_TRUE(same(array<double>{0.0, 1.0}, array<double>{-0.0, 1.0}));
    EXPECT_TRUE(same(array<float>{0.0F}, array<float>{-0.0F}));
    EXPECT_FALSE(same(array<double>{1.0, nan}, array<double>{1.0, nan}));
    EXPECT_FALSE(
        same(array<float>{static_cast<float>(nan)}, array<float>{static_cast<float>(nan)}));
}

TEST(SameTypeEqualityOf, NotANumberFailsAgainstItsOwnValue) {
    io_value const value(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(value == value);
    EXPECT_TRUE(value != value);
}

TEST(SameTypeEqualityOf, TextsCountsBytesAndLength) {
    EXPECT_TRUE(same("ab", "ab"));
    EXPECT_FALSE(same("ab", "abc"));
    EXPECT_FALSE(same("ab", "aB"));
    EXPECT_FALSE(same(std::string("a\0b", 3), std::string("a\0c", 3)));
    EXPECT_FALSE(same(std::string("a\0", 2), "a"));
}

TEST(SameTypeEqualityOf, EmptyTextsTakesNoNoticeOfTheBlock) {
    EXPECT_TRUE(same(utility::string(), ""));
    EXPECT_TRUE(same("", utility::string()));
    EXPECT_TRUE(same(array<utility::string>{""}, array<utility::string>(1)));
}

// The first word of a text is its allocator's, which nobody writes.
TEST(SameTypeEqualityOf, NumbersTakesTheUnwrittenFrontOfATextForZero) {
    io_value text("x");
    std::memset(reinterpret_cast<unsigned char*>(&text) + sizeof(io_data_type), 0xAA,
                sizeof(void*));
    auto const equals_text = [&text](io_value const& number) {
        return with_type(text.data_type(), number).equals_same_type(text);
    };
    EXPECT_TRUE(equals_text(false));
    EXPECT_TRUE(equals_text(short{0}));
    EXPECT_TRUE(equals_text(0));
    EXPECT_TRUE(equals_text(0UL));
    EXPECT_TRUE(equals_text(0.0F));
    EXPECT_TRUE(equals_text('\0'));
    EXPECT_FALSE(equals_text(3));
    EXPECT_FALSE(equals_text(0xAAAAAAAAU));
    // What lies behind that word is the length.
    EXPECT_TRUE(equals_text(sizeof(void*) == 8 ? 0LL : 1LL << 32));
    EXPECT_FALSE(equals_text(sizeof(void*) == 8 ? 1LL << 32 : 0LL));
}

TEST(SameTypeEqualityOf, TwoEmptyValuesHolds) {
    EXPECT_TRUE(io_value() == io_value());
    EXPECT_FALSE(io_value() != io_value());
    EXPECT_TRUE(io_value().equals_same_type(io_value()));
}

TEST(SameTypeEqualityOf, ArraysOfValuesLetsTheElementsDifferInType) {
    EXPECT_TRUE(same(array<io_value>::of(5, "1", true), array<io_value>::of(5.0, 1, 7)));
    EXPECT_FALSE(same(array<io_value>::of(5, "1"), array<io_value>::of(5.0, 2)));
}

} // namespace
} // namespace whole_values
