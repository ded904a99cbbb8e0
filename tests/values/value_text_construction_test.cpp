#include "sample_payloads.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace values_test {
namespace {

using namespace std::string_view_literals;

std::string text_of(io_value const& value) {
    utility::string const* const text = value.get_if<utility::string>();
    return text != nullptr ? text->str() : "no text";
}

TEST(ValueOfAText, ComesFromEveryKindOfText) {
    char writable[] = "level";
    std::string const standard = "level";
    io_value const values[] = {
        io_value("level"),
        io_value(static_cast<char const*>(writable)),
        io_value(static_cast<char*>(writable)),
        io_value(writable),
        io_value(standard),
        io_value(std::string("level")),
        io_value("level"sv),
        io_value(utility::string_view("level")),
        io_value(utility::string("level")),
        io_value("levels", 5),
    };
    for (io_value const& value : values) {
        EXPECT_EQ(value.index(), 15);
        EXPECT_EQ(value.data_type(), io_data_type::scalar(types::string));
        EXPECT_EQ(text_of(value), "level");
    }
}

TEST(ValueOfAText, ComesImplicitly) {
    io_value value = "level";
    EXPECT_EQ(text_of(value), "level");
    value = std::string("flow");
    EXPECT_EQ(text_of(value), "flow");
    value = "rate"sv;
    EXPECT_EQ(text_of(value), "rate");
    value = "pump";
    EXPECT_EQ(text_of(value), "pump");
}

TEST(ValueOfAText, KeepsZeroBytesWhereTheLengthIsStated) {
    std::string const expected("a\0b\0", 4);
    EXPECT_EQ(text_of(io_value("a\0b\0", 4U)), expected);
    EXPECT_EQ(text_of(io_value(expected)), expected);
    EXPECT_EQ(text_of(io_value("a\0b\0"sv)), expected);
    EXPECT_EQ(text_of(io_value(utility::string_view("a\0b\0", 4))), expected);
}

TEST(ValueOfAText, EndsAtTheFirstZeroByteWhereNoLengthIsStated) {
    EXPECT_EQ(text_of(io_value("a\0b")), "a");
}

TEST(ValueOfAText, TakesOneBlockOfOneByteMore) {
    test_support::allocation_counter const counter;
    io_value const value("level", 5);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 6U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 16U);
}

TEST(ValueOfAText, IsTerminated) {
    io_value const value("levels", 5);
    EXPECT_EQ(value.get_if<utility::string>()->data()[5], '\0');
}

TEST(ValueOfAText, OwnsABlockOfOneByteWhereItIsEmpty) {
    for (bool const by_length : {false, true}) {
        test_support::allocation_counter const counter;
        io_value const value = by_length ? io_value("level", 0) : io_value("");
        EXPECT_EQ(counter.allocations(), 1U);
        EXPECT_EQ(test_support::last_aligned_allocation().size, 1U);
        EXPECT_EQ(value.index(), 15);
        EXPECT_NE(value.get_if<utility::string>()->data(), &utility::string::S_empty);
        EXPECT_EQ(text_of(value), "");
    }
}

TEST(ValueOfAText, HasALargerAlignmentFrom4096BytesOn) {
    std::string const text(4096, 'x');
    io_value const below(text.data(), 4094);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 4095U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 16U);
    io_value const above(text.data(), 4095);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 4096U);
    EXPECT_EQ(test_support::last_aligned_allocation().alignment, 32U);
}

TEST(ValueOfAText, LeaksNothingWhereMemoryIsExhausted) {
    EXPECT_EQ(test_support::count_survived_failures([] { io_value const value("level"); }), 1);
    EXPECT_EQ(test_support::count_survived_failures([] { io_value const value("level", 3); }), 1);
    EXPECT_EQ(test_support::count_survived_failures([] { io_value const value("level"sv); }), 1);
}

} // namespace
} // namespace values_test
