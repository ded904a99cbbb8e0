#include "equality_oracle.hpp"
#include "equality_samples.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

/// The natural samples, some of them again under types of other ones, each under one that no other
/// kind of payload has.
std::vector<io_value> symmetric_samples() {
    std::vector<io_value> samples = natural_samples();
    std::size_t const count = samples.size();
    for (std::size_t i = 0; i < count; i += 3) {
        auto const kind = static_cast<unsigned int>(samples[i].index()) + 100;
        samples.push_back(with_type({types{kind}, 0, 0, 0}, samples[i]));
    }
    return samples;
}

TEST(EqualitySymmetry, HoldsBetweenAllSamples) {
    std::vector<io_value> const samples = symmetric_samples();
    for (io_value const& left : samples) {
        for (io_value const& right : samples) {
            ASSERT_EQ(left == right, right == left) << left << " (" << left.index() << ") and "
                                                    << right << " (" << right.index() << ")";
        }
    }
}

TEST(EqualitySymmetry, UnequalIsTheNegationOfEqual) {
    std::vector<io_value> const samples = symmetric_samples();
    for (io_value const& left : samples) {
        for (io_value const& right : samples) {
            ASSERT_NE(left == right, left != right) << left << " and " << right;
        }
    }
}

// --- an empty value ---

TEST(EqualityOfTheEmptyValue, FailsAgainstWhateverIsNot) {
    for (io_value const& other : natural_samples()) {
        if (other.index() == 0) continue;
        EXPECT_FALSE(io_value() == other) << other;
        EXPECT_FALSE(other == io_value()) << other;
        EXPECT_FALSE(io_value().equals(other)) << other;
        EXPECT_FALSE(other.equals(io_value())) << other;
    }
}

TEST(EqualityOfTheEmptyValue, FailsFromEveryKindEvenUnderAnotherType) {
    io_value const hollow(io_data_type::scalar(types::i64), nullptr);
    for (io_value const& other : natural_samples()) {
        if (other.data_type() == hollow.data_type() || other.index() == 0) continue;
        EXPECT_FALSE(other.equals(hollow)) << other;
    }
}

TEST(EqualityOfTheEmptyValue, LooksAtTheTypeOfTheOtherAlone) {
    io_data_type const stated = io_data_type::scalar(types::i32);
    EXPECT_TRUE(io_value().equals(io_value(io_data_type(), 5)));
    EXPECT_TRUE(io_value().equals(io_value(io_data_type(), sample_object())));
    EXPECT_FALSE(io_value().equals(io_value(stated, nullptr)));
    EXPECT_TRUE(io_value(stated, nullptr).equals(io_value()));
    EXPECT_TRUE(io_value() == io_value(stated, nullptr));
    EXPECT_TRUE(io_value(stated, nullptr) == io_value());
}

// The one corner without symmetry: identical types, and the left alternative decides.
TEST(EqualityOfTheEmptyValue, DependsOnTheSideWhereTheOtherHasItsType) {
    io_value const five(io_data_type(), 5);
    EXPECT_TRUE(io_value() == five);
    EXPECT_FALSE(five == io_value());
    EXPECT_FALSE(io_value() != five);
    EXPECT_TRUE(five != io_value());
    EXPECT_FALSE(five.equals(io_value()));
    io_value const zero(io_data_type(), 0);
    EXPECT_TRUE(zero == io_value());
}

} // namespace
} // namespace whole_values
