#include <tavi/ioapi/v2/read_result.hpp>

#include "largest_block.hpp"
#include "measure.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace load_test {
namespace {

std::string name_of_variable(unsigned int index) {
    return "line 4/station 12/variable " + std::to_string(index);
}

v2::io_data_value read_from(unsigned int index) {
    return {"the text that was read from " + std::to_string(index), v2::io_timestamp(index),
            v2::io_data_value::value_quality::good};
}

class ReadResultLoad : public ::testing::Test {
protected:
    ReadResultLoad() {
        identifiers_.reserve(count_);
        for (unsigned int i = 0; i < count_; ++i) identifiers_.emplace_back(name_of_variable(i));
    }

    /// One entry for each variable, each with a text.
    [[nodiscard]] v2::read_result answered() const {
        v2::read_result result(identifiers_);
        for (unsigned int i = 0; i < count_; ++i) result.set(i, read_from(i));
        return result;
    }

    /// Indices from the first entry to the last.
    [[nodiscard]] std::vector<unsigned int> some() const {
        std::vector<unsigned int> indices;
        for (unsigned int i = 0; i < 20; ++i) {
            indices.push_back(static_cast<unsigned int>((count_ - 1ULL) * i / 19));
        }
        return indices;
    }

    [[nodiscard]] std::string name(char const* step) const {
        return "read_result of " + std::to_string(count_) + " entries, " + step;
    }

    unsigned int const count_ = share_of(1000000);
    std::vector<v2::plc_identifier> identifiers_;
};

TEST_F(ReadResultLoad, HasOneEntryForEachIdentifier) {
    measured const figures(name("built"));
    v2::read_result const result(identifiers_);
    ASSERT_EQ(result.size(), count_);
    for (unsigned int i = 0; i < count_; ++i) {
        ASSERT_EQ(result[i].identifier(), identifiers_[i]);
        ASSERT_EQ(result[i].error(), v2::io_error(v2::io_errc::no_result));
    }
}

TEST_F(ReadResultLoad, KeepsAValueForEach) {
    measured const figures(name("built and answered by index"));
    v2::read_result const result = answered();
    for (unsigned int i = 0; i < count_; ++i) {
        ASSERT_TRUE(result[i].ok());
        ASSERT_EQ(result[i].value().timestamp(), v2::io_timestamp(i));
    }
    for (unsigned int const i : some()) EXPECT_EQ(result[i].value().value(), read_from(i).value());
}

TEST_F(ReadResultLoad, FindsSomeFromTheFirstToTheLast) {
    v2::read_result const result(identifiers_);
    measured const figures(name("20 of them found"));
    for (unsigned int const i : some()) EXPECT_EQ(result.find(identifiers_[i]), &result[i]);
    EXPECT_EQ(result.find(v2::plc_identifier(name_of_variable(count_))), nullptr);
}

TEST_F(ReadResultLoad, IsCopiedDeep) {
    auto const original = std::make_unique<v2::read_result>(answered());
    v2::read_result const& result = *original;
    measured const figures(name("copied"));
    v2::read_result const copy(*original);
    ASSERT_EQ(copy.size(), count_);
    for (unsigned int const i : some()) {
        auto const* const text = result[i].value().value().get_if<v2::utility::string>();
        auto const* const copied = copy[i].value().value().get_if<v2::utility::string>();
        ASSERT_NE(copied, nullptr);
        EXPECT_EQ(*copied, *text);
        EXPECT_NE(copied->data(), text->data());
        EXPECT_EQ(copy[i].identifier(), identifiers_[i]);
    }
}

TEST_F(ReadResultLoad, LeavesNothingWhenItIsDestroyed) {
    std::size_t const before = heap();
    auto result = std::make_unique<v2::read_result>(answered());
    EXPECT_GT(heap(), before + std::size_t{count_} * sizeof(v2::read_result::result_type));
    {
        measured const figures(name("destroyed"));
        result.reset();
    }
    // The allocator keeps some free blocks at hand, which it counts as used.
    EXPECT_LT(heap(), before + 64 * std::size_t{1024});
}

// --- the most entries

/// As many as fit the largest block.
unsigned int most_entries() {
    return largest_block() / static_cast<unsigned int>(sizeof(v2::read_result::result_type));
}
constexpr auto entry_limit =
    static_cast<unsigned int>(0xFFFFFFFFU / sizeof(v2::read_result::result_type));

TEST(ReadResultLimitLoad, HoldsAsManyEntriesAsFitTheLargestBlock) {
    unsigned int const count = share_of(most_entries());
    measured const figures("read_result of " + std::to_string(count) + " blank entries");
    v2::read_result result;
    result.resize(count);
    EXPECT_EQ(result.size(), count);
    EXPECT_TRUE(result[count - 1].ok());
}

TEST(ReadResultLimitLoad, RaisesBadAllocFromThereToTheLimit) {
    unsigned int const most = most_entries();
    if (has_wide_addresses) {
        ASSERT_EQ(most, entry_limit); // nothing lies between
        return;
    }
    ASSERT_LT(most, entry_limit);
    for_some_from_to(most + 1, entry_limit, [](unsigned int count) {
        v2::read_result result;
        EXPECT_EQ(outcome_of([&] { result.resize(count); }), outcome::no_memory) << count;
        EXPECT_TRUE(result.empty());
    });
}

TEST(ReadResultLimitLoad, RefusesCountsWhoseBytesCannotBeStated) {
    for_some_from_to(entry_limit + 1, 0xFFFFFFFF, [](unsigned int count) {
        v2::read_result result;
        EXPECT_EQ(outcome_of([&] { result.resize(count); }), outcome::no_such_count) << count;
        EXPECT_TRUE(result.empty());
    });
}

} // namespace
} // namespace load_test
