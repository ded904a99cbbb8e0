#include "equality_samples.hpp"
#include "raw_value.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

namespace whole_values {
namespace {

using test_support::allocation_failure;
using test_support::live_blocks;

TEST(EqualityWithoutMemory, EndsWithAnAnswerAndNoLeak) {
    std::vector<io_value> const samples = natural_samples();
    for (std::size_t i = 0; i < samples.size(); i += 5) {
        for (std::size_t k = 0; k < samples.size(); k += 3) {
            long long const before = live_blocks();
            bool raised = false;
            {
                allocation_failure const failure(1);
                try {
                    (void)samples[i].equals(samples[k]);
                } catch (...) {
                    raised = true;
                }
            }
            ASSERT_FALSE(raised) << samples[i] << " and " << samples[k];
            ASSERT_EQ(live_blocks(), before) << samples[i] << " and " << samples[k];
        }
    }
}

TEST(EqualityOfScalars, AllocatesNothingWhereNoTextIsMade) {
    std::vector<io_value> const samples{5, 5.0, 5.5F, true, 'A', 5ULL, io_value(), "5", "x"};
    for (io_value const& left : samples) {
        if (left.index() == 15) continue;
        for (io_value const& right : samples) {
            test_support::allocation_counter const counter;
            (void)left.equals(right);
            EXPECT_EQ(counter.allocations(), 0U) << left << " and " << right;
        }
    }
}

TEST(EqualityOfCorruptValues, RaisesTheEmptyText) {
    for (int const index : {-1, 34}) {
        raw_value corrupt(5);
        corrupt_index(*corrupt, index);
        EXPECT_TRUE(raises_empty_text([&] { (void)(*corrupt == io_value(5)); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)(*corrupt != io_value(5)); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)corrupt->equals(io_value("5")); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)corrupt->equals_same_type(io_value(5)); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)io_value("5").equals(*corrupt); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)io_value(true).equals(*corrupt); }));
        EXPECT_TRUE(raises_empty_text([&] { (void)io_value(array<int>{5}).equals(*corrupt); }));
        corrupt_index(*corrupt, 4);
        corrupt.destroy();
    }
}

TEST(EqualityOfCorruptValues, RaisesTheEmptyTextAgainstAnotherDataType) {
    for (int const index : {-1, 34}) {
        raw_value corrupt(5);
        corrupt_index(*corrupt, index);
        for (io_value const& other : {io_value(5.0), io_value("x"), io_value(5ULL), io_value(true),
                                      io_value(array<int>{5})}) {
            EXPECT_TRUE(raises_empty_text([&] { (void)(*corrupt == other); })) << other;
            EXPECT_TRUE(raises_empty_text([&] { (void)(*corrupt != other); })) << other;
            EXPECT_TRUE(raises_empty_text([&] { (void)(other == *corrupt); })) << other;
        }
        corrupt_index(*corrupt, 4);
        corrupt.destroy();
    }
}

TEST(EqualityOfCorruptValues, IsNotLookedAtByNothingUnderAnotherType) {
    raw_value corrupt(io_value{});
    corrupt_index(*corrupt, -1);
    io_value const nothing(io_data_type::scalar(io_data_type::basic_types::i32), nullptr);
    EXPECT_TRUE(nothing.equals(*corrupt));
    EXPECT_TRUE(nothing == *corrupt);
    corrupt_index(*corrupt, 0);
    corrupt.destroy();
}

} // namespace
} // namespace whole_values
