#include <tavi/ioapi/v2/io_data_value.hpp>

#include "equality_samples.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

using quality = io_data_value::value_quality;

constexpr io_timestamp early{1000};
constexpr io_timestamp late{1000 + (1LL << 32)};

io_data_value at(io_timestamp time, io_value value, quality how = quality::good) {
    return {std::move(value), time, how};
}

/// Both operators, from both sides.
template <class Left, class Right>
::testing::AssertionResult are_equal(Left const& left, Right const& right) {
    bool const equal = left == right;
    if (equal == (left != right)) return ::testing::AssertionFailure() << "no negation";
    if (equal != (right == left)) return ::testing::AssertionFailure() << "not symmetric";
    if ((right == left) == (right != left)) return ::testing::AssertionFailure() << "no negation";
    return equal ? ::testing::AssertionSuccess() : ::testing::AssertionFailure();
}

TEST(DataValueComparison, HoldsWhereValuesAndTimestampsAreEqual) {
    EXPECT_TRUE(are_equal(at(early, 5), at(early, 5)));
    EXPECT_TRUE(are_equal(at(early, 5), at(early, "5")));
    EXPECT_TRUE(are_equal(io_data_value(), io_data_value()));
}

TEST(DataValueComparison, TakesNoNoticeOfTheQuality) {
    for (quality const one : {quality::bad, quality::uncertain, quality::good, quality{-77}}) {
        EXPECT_TRUE(are_equal(at(early, 5, one), at(early, 5, quality::good)));
    }
}

TEST(DataValueComparison, SeesAnotherValue) {
    EXPECT_FALSE(are_equal(at(early, 5), at(early, 6)));
    EXPECT_FALSE(are_equal(at(early, 5), at(early, io_value())));
}

TEST(DataValueComparison, SeesAnotherTimestamp) {
    EXPECT_FALSE(are_equal(at(early, 5), at(io_timestamp(1001), 5)));
    EXPECT_FALSE(are_equal(at(early, 5), io_data_value(5, quality::good)));
    EXPECT_FALSE(are_equal(at(io_timestamp(1), 5), at(io_timestamp(-1), 5)));
}

TEST(DataValueComparison, SeesBothWordsOfTheTimestamp) {
    EXPECT_FALSE(are_equal(at(early, 5), at(late, 5)));
    EXPECT_TRUE(are_equal(at(late, 5), at(late, 5)));
}

TEST(DataValueComparison, WithAValueTakesNoNoticeOfTheTimestamp) {
    for (io_timestamp const time : {io_timestamp(), early, late}) {
        EXPECT_TRUE(are_equal(at(time, 5), io_value(5)));
        EXPECT_TRUE(are_equal(at(time, 5, quality::bad), io_value(5.0)));
        EXPECT_FALSE(are_equal(at(time, 5), io_value(6)));
    }
}

TEST(DataValueComparison, HoldsWheneverTheValuesAreEqual) {
    std::vector<io_value> const samples = natural_samples();
    for (std::size_t i = 0; i < samples.size(); i += 3) {
        for (io_value const& right : samples) {
            bool const expected = samples[i] == right;
            ASSERT_EQ(are_equal(at(early, samples[i]), right), expected) << right;
            ASSERT_EQ(are_equal(at(early, samples[i]), at(early, right)), expected) << right;
            ASSERT_FALSE(are_equal(at(early, samples[i]), at(late, right))) << right;
        }
    }
}

TEST(DataValueComparison, FailsForObjectsAndNaNs) {
    io_data_value const object = at(early, sample_object());
    EXPECT_FALSE(object == object);
    EXPECT_TRUE(object != object);
    EXPECT_FALSE(object == object.value());
    EXPECT_TRUE(object.value() != object);
    io_data_value const nan = at(early, std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nan == nan);
    EXPECT_TRUE(nan != nan);
}

// The one corner without symmetry, as for values: the left one decides.
TEST(DataValueComparison, DependsOnTheSideForAnEmptyValueAndOneOfItsType) {
    io_value const five(io_data_type(), 5);
    EXPECT_TRUE(at(early, io_value()) == at(early, five));
    EXPECT_FALSE(at(early, five) == at(early, io_value()));
    EXPECT_TRUE(at(early, io_value()) == five);
    EXPECT_FALSE(at(early, five) == io_value());
    EXPECT_TRUE(io_value() == at(early, five));
    EXPECT_FALSE(five == at(early, io_value()));
}

TEST(DataValueComparison, RefusesAnotherTimestampBeforeItLooksAtTheValues) {
    EXPECT_FALSE(at(early, io_value()) == at(late, io_value()));
    EXPECT_TRUE(at(early, io_value()) != at(late, io_value()));
}

} // namespace
} // namespace whole_values
