#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/allocations.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

using tavi::ioapi::v2::utility::string;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::block_of;

// A compiler must not see that both sides are one object.
template <class T>
T& same(T& object) {
    return object;
}

TEST(StringAssignment, OfTheSameLengthKeepsTheBlock) {
    string target("old!!");
    string const source("level");
    char const* const block = block_of(target);
    allocation_counter const counter;
    target = source;
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 0U);
    EXPECT_EQ(block_of(target), block);
    EXPECT_STREQ(target.c_str(), "level");
}

TEST(StringAssignment, OfTheSameLengthLeavesTheTerminatorAsItIs) {
    string target("ab");
    string const source("cd");
    char* const terminator = &target[0] + 2;
    *terminator = '!';
    target = source;
    EXPECT_EQ(std::string_view(block_of(target), 3), "cd!");
    *terminator = '\0';
}

TEST(StringAssignment, OfTheSameLengthNeedsNoMemory) {
    string target("old!!");
    string const source("level");
    allocation_failure const failure(1);
    target = source;
    EXPECT_FALSE(failure.hit());
    EXPECT_STREQ(target.c_str(), "level");
}

TEST(StringAssignment, OfAnotherLengthTakesANewBlock) {
    for (char const* const text : {"longer than before", "s"}) {
        string target("level");
        string const source(text);
        allocation_counter const counter;
        target = source;
        EXPECT_EQ(counter.allocations(), 1U);
        EXPECT_EQ(counter.releases(), 1U);
        EXPECT_EQ(test_support::last_aligned_allocation().size, source.size() + 1U);
        EXPECT_STREQ(target.c_str(), text);
        EXPECT_NE(block_of(target), block_of(source));
    }
}

TEST(StringAssignment, ToATextWithoutABlockTakesANewBlock) {
    string target;
    string const source("level");
    target = source;
    EXPECT_STREQ(target.c_str(), "level");
    EXPECT_EQ(target.size(), 5U);
}

TEST(StringAssignment, ThatFailsLeavesTheTargetUnchanged) {
    string target("level");
    string const source("another length");
    char const* const block = block_of(target);
    {
        allocation_failure const failure(1);
        EXPECT_THROW(target = source, std::bad_alloc);
    }
    EXPECT_EQ(block_of(target), block);
    EXPECT_EQ(target.size(), 5U);
    EXPECT_STREQ(target.c_str(), "level");
}

TEST(StringAssignment, OfAnEmptyTextReleasesTheBlock) {
    string const with_block("");
    string const without_block;
    for (string const* const source : {&with_block, &without_block}) {
        string target("level");
        allocation_counter const counter;
        target = *source;
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(counter.releases(), 1U);
        EXPECT_EQ(block_of(target), nullptr);
        EXPECT_EQ(target.size(), 0U);
    }
}

TEST(StringAssignment, OfAnEmptyTextToAnEmptyTextReleasesItsBlockToo) {
    string target("");
    ASSERT_NE(block_of(target), nullptr);
    string const source;
    allocation_counter const counter;
    target = source;
    EXPECT_EQ(block_of(target), nullptr);
    EXPECT_EQ(counter.releases(), 1U);
}

TEST(StringAssignment, ToItselfKeepsText) {
    string text("level");
    char const* const block = block_of(text);
    allocation_counter const counter;
    text = same(text);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(text), block);
    EXPECT_STREQ(text.c_str(), "level");
}

TEST(StringAssignment, OfAnEmptyTextToItselfDropsTheBlock) {
    string text("");
    text = same(text);
    EXPECT_EQ(block_of(text), nullptr);
    EXPECT_EQ(text.size(), 0U);
    text = same(text);
    EXPECT_EQ(block_of(text), nullptr);
}

TEST(StringAssignment, OfAPartOfItselfIsSafe) {
    string text("level of the tank");
    text = text.c_str() + 9;
    EXPECT_STREQ(text.c_str(), "the tank");
    text = std::string_view(text).substr(0, 3);
    EXPECT_STREQ(text.c_str(), "the");
    text = std::string_view(text);
    EXPECT_STREQ(text.c_str(), "the");
}

TEST(StringAssignment, AcceptsEveryText) {
    string text;
    text = "literal";
    EXPECT_STREQ(text.c_str(), "literal");
    text = std::string("standard");
    EXPECT_STREQ(text.c_str(), "standard");
    text = std::string_view("view");
    EXPECT_STREQ(text.c_str(), "view");
    text = tavi::ioapi::v2::utility::string_view("own view");
    EXPECT_STREQ(text.c_str(), "own view");
}

TEST(StringMoveAssignment, TakesTheBlockAndReleasesItsOwn) {
    string target("old");
    string source("level");
    char const* const block = block_of(source);
    allocation_counter const counter;
    target = std::move(source);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(counter.releases(), 1U);
    EXPECT_EQ(block_of(target), block);
    EXPECT_EQ(target.size(), 5U);
    EXPECT_EQ(block_of(source), nullptr);
    EXPECT_EQ(source.size(), 0U);
}

TEST(StringMoveAssignment, OfTheSameLengthTakesTheBlockToo) {
    string target("old!!");
    string source("level");
    char const* const block = block_of(source);
    target = std::move(source);
    EXPECT_EQ(block_of(target), block);
}

TEST(StringMoveAssignment, ToItselfChangesNothing) {
    for (char const* const content : {"level", ""}) {
        string text(content);
        char const* const block = block_of(text);
        text = std::move(same(text));
        EXPECT_EQ(block_of(text), block);
        EXPECT_STREQ(text.c_str(), content);
    }
}

TEST(StringMoveAssignment, FromATextWithoutABlockEmptiesTheTarget) {
    string target("level");
    target = string();
    EXPECT_EQ(block_of(target), nullptr);
    EXPECT_EQ(target.size(), 0U);
}

TEST(StringMoveAssignment, MakesAMovedFromTextUsableAgain) {
    string text("level");
    string const taken(std::move(text));
    text = string("again");
    EXPECT_STREQ(text.c_str(), "again");
    EXPECT_STREQ(taken.c_str(), "level");
}

} // namespace
