#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/allocations.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace {

using tavi::ioapi::v2::utility::string;
using tavi::ioapi::v2::utility::string_view;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::block_of;

std::string bytes_of(string const& text) {
    return std::string(text.data(), text.size());
}

TEST(String, IsEmptyWithoutABlockByDefault) {
    allocation_counter const counter;
    string const text;
    EXPECT_EQ(text.size(), 0U);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(block_of(text), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(String, WithoutABlockReadsAsTheSharedEmptyText) {
    string const text;
    EXPECT_EQ(text.data(), &string::S_empty);
    EXPECT_EQ(text.c_str(), &string::S_empty);
    EXPECT_EQ(text.begin(), text.end());
    EXPECT_EQ(*text.c_str(), '\0');
    EXPECT_EQ(std::string_view(text), "");
    EXPECT_EQ(text.str(), "");
}

TEST(String, CopiesTheBytesOfPointerAndSizeAndClosesThem) {
    allocation_counter const counter;
    string const text("level and more", 5);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 6U);
    EXPECT_EQ(text.size(), 5U);
    EXPECT_FALSE(text.empty());
    EXPECT_STREQ(text.data(), "level");
}

TEST(String, OwnsItsBytes) {
    char source[] = "level";
    string const text(source, 5);
    EXPECT_NE(static_cast<void const*>(text.data()), static_cast<void const*>(source));
    source[0] = 'L';
    EXPECT_STREQ(text.data(), "level");
}

TEST(String, OfSizeZeroOwnsABlockOfOneByte) {
    allocation_counter const counter;
    string const text("abc", 0);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 1U);
    ASSERT_NE(block_of(text), nullptr);
    EXPECT_EQ(*block_of(text), '\0');
    EXPECT_EQ(text.size(), 0U);
    EXPECT_EQ(text.data(), block_of(text));
}

TEST(String, TakesNullWhereTheSizeIsZero) {
    string const text(static_cast<char const*>(nullptr), 0U);
    ASSERT_NE(block_of(text), nullptr);
    EXPECT_STREQ(text.c_str(), "");
}

TEST(String, OfALiteralEndsAtItsZeroByte) {
    string const text("ab\0cd");
    EXPECT_EQ(text.size(), 2U);
    EXPECT_STREQ(text.c_str(), "ab");
}

TEST(String, OfAnEmptyLiteralOwnsABlockOfOneByte) {
    string const text("");
    ASSERT_NE(block_of(text), nullptr);
    EXPECT_EQ(test_support::last_aligned_allocation().size, 1U);
}

TEST(String, KeepsZeroBytes) {
    string const text("a\0b\0", 4);
    EXPECT_EQ(text.size(), 4U);
    EXPECT_EQ(std::memcmp(text.data(), "a\0b\0", 5), 0);
    EXPECT_EQ(text.str().size(), 4U);
}

TEST(String, IsMadeFromEveryText) {
    std::string const standard("a\0b", 3);
    EXPECT_EQ(bytes_of(string(standard)), standard);
    EXPECT_EQ(bytes_of(string(std::string_view(standard))), standard);
    EXPECT_EQ(bytes_of(string(string_view(standard))), standard);
}

TEST(String, IsMadeFromEveryEmptyText) {
    EXPECT_NE(block_of(string(std::string())), nullptr);
    EXPECT_NE(block_of(string(std::string_view())), nullptr);
    EXPECT_NE(block_of(string(string_view())), nullptr);
}

TEST(String, GivesAccessToItsBytes) {
    string text("abc");
    EXPECT_EQ(text[0], 'a');
    text[2] = 'x';
    EXPECT_STREQ(text.c_str(), "abx");
    string const& same = text;
    EXPECT_EQ(same[2], 'x');
    EXPECT_EQ(std::string(same.begin(), same.end()), "abx");
    EXPECT_EQ(same.data(), block_of(text));
}

TEST(String, ConvertsToStandardTexts) {
    string const text("level");
    std::string_view const view = text;
    EXPECT_EQ(view, "level");
    EXPECT_EQ(view.data(), text.data());
    EXPECT_EQ(text.str(), "level");
}

TEST(StringCopy, IsDeep) {
    string const text("level");
    allocation_counter const counter;
    string const copy(text);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_STREQ(copy.c_str(), "level");
    EXPECT_NE(block_of(copy), block_of(text));
}

TEST(StringCopy, OfAnEmptyTextHasNoBlock) {
    string const with_block("");
    string const without_block;
    allocation_counter const counter;
    string const first(with_block);
    string const second(without_block);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(first), nullptr);
    EXPECT_EQ(block_of(second), nullptr);
}

TEST(StringMove, TakesTheBlock) {
    string source("level");
    char const* const block = block_of(source);
    allocation_counter const counter;
    string const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(target), block);
    EXPECT_EQ(target.size(), 5U);
    EXPECT_EQ(block_of(source), nullptr);
    EXPECT_EQ(source.size(), 0U);
    EXPECT_EQ(source.data(), &string::S_empty);
}

TEST(StringMove, TakesTheBlockOfAnEmptyText) {
    string source("");
    char const* const block = block_of(source);
    string const target(std::move(source));
    EXPECT_EQ(block_of(target), block);
    EXPECT_EQ(block_of(source), nullptr);
}

struct release_case {
    char const* name;
    unsigned int size;
    unsigned int alignment;
};

class StringBlock : public ::testing::TestWithParam<release_case> {};

TEST_P(StringBlock, IsAlignedBySizeAndTerminator) {
    auto const& expected = GetParam();
    std::string const content(expected.size, 'x');
    {
        string const text(content);
        auto const allocation = test_support::last_aligned_allocation();
        EXPECT_EQ(allocation.block, block_of(text));
        EXPECT_EQ(allocation.size, expected.size + 1U);
        EXPECT_EQ(allocation.alignment, expected.alignment);
    }
    auto const release = test_support::last_aligned_release();
    EXPECT_EQ(release.size, expected.size + 1U);
    EXPECT_EQ(release.alignment, expected.alignment);
}

INSTANTIATE_TEST_SUITE_P(AtTheBound,
                         StringBlock,
                         ::testing::Values(release_case{"Empty", 0, 16}, //
                                           release_case{"One", 1, 16},
                                           release_case{"BlockOf4095", 4094, 16},
                                           release_case{"BlockOf4096", 4095, 32},
                                           release_case{"BlockOf4097", 4096, 32}),
                         [](auto const& test) { return std::string(test.param.name); });

TEST(StringDestruction, WithoutABlockReleasesNull) {
    allocation_counter const counter;
    { string const text; }
    EXPECT_EQ(counter.null_releases(), 1U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(test_support::last_aligned_release().block, nullptr);
    EXPECT_EQ(test_support::last_aligned_release().size, 1U);
    EXPECT_EQ(test_support::last_aligned_release().alignment, 16U);
}

TEST(StringDestruction, ReleasesTheBlockOfAnEmptyText) {
    allocation_counter const counter;
    { string const text(""); }
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_EQ(counter.releases(), 1U);
}

TEST(StringConstruction, LeavesNothingBehindWhenMemoryIsExhausted) {
    EXPECT_EQ(test_support::count_survived_failures([] { string const text("level"); }), 1);
    EXPECT_EQ(test_support::count_survived_failures([] { string const text(""); }), 1);
    string const source("level");
    EXPECT_EQ(test_support::count_survived_failures([&] { string const copy(source); }), 1);
}

} // namespace
