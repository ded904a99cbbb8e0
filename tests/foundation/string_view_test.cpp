#include <tavi/ioapi/v2/utility/string.hpp>
#include <tavi/ioapi/v2/utility/string_view.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using tavi::ioapi::v2::utility::string;
using tavi::ioapi::v2::utility::string_view;

TEST(StringView, IsEmptyAndNullByDefault) {
    constexpr string_view view;
    static_assert(view.data() == nullptr && view.size() == 0 && view.empty());
    EXPECT_EQ(view.begin(), view.end());
    EXPECT_EQ(std::string_view(view), "");
    EXPECT_EQ(view.str(), "");
}

TEST(StringView, RefersToPointerAndSize) {
    char const bytes[] = {'a', 'b', 'c'}; // not terminated
    string_view const view(bytes, 2);
    EXPECT_EQ(view.data(), bytes);
    EXPECT_EQ(view.size(), 2U);
    EXPECT_FALSE(view.empty());
    EXPECT_EQ(view[1], 'b');
    EXPECT_EQ(view.str(), "ab");
    EXPECT_EQ(std::string(view.begin(), view.end()), "ab");
}

TEST(StringView, TakesNullWithSizeZero) {
    string_view const view(static_cast<char const*>(nullptr), 0);
    EXPECT_TRUE(view.empty());
    EXPECT_EQ(view.data(), nullptr);
}

TEST(StringView, OfALiteralEndsAtItsZeroByte) {
    constexpr string_view view("ab\0cd");
    static_assert(view.size() == 2);
    EXPECT_EQ(view.str(), "ab");
}

TEST(StringView, SwapsTheFieldsOfTheStandardView) {
    std::string_view const standard("a\0b", 3);
    string_view const view = standard;
    EXPECT_EQ(view.data(), standard.data());
    EXPECT_EQ(view.size(), 3U);
    std::string_view const back = view;
    EXPECT_EQ(back.data(), standard.data());
    EXPECT_EQ(back.size(), 3U);
}

TEST(StringView, OfAStandardStringSeesItsBytes) {
    std::string const standard("a\0b", 3);
    string_view const view = standard;
    EXPECT_EQ(view.data(), standard.data());
    EXPECT_EQ(view.size(), 3U);
}

TEST(StringView, OfAnOwningTextSeesItsBytes) {
    string const text("level");
    string_view const view = text;
    EXPECT_EQ(view.data(), text.data());
    EXPECT_EQ(view.size(), 5U);
}

TEST(StringView, OfATextWithoutABlockIsTheSharedEmptyText) {
    string const text;
    string_view const view = text;
    EXPECT_EQ(view.data(), &string::S_empty);
    EXPECT_EQ(view.size(), 0U);
}

TEST(StringView, NeverAllocates) {
    std::string const standard("longer than any small buffer of a text");
    test_support::allocation_counter const counter;
    string_view const view = standard;
    std::string_view const back = view;
    EXPECT_EQ(back.size(), standard.size());
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(StringView, StandsAsPointerThenSize) {
    char const* const bytes = "level";
    string_view const view(bytes, 5);
    EXPECT_EQ(test_support::field_at<char const*>(view, 0), bytes);
    EXPECT_EQ(test_support::field_at<unsigned int>(view, sizeof(void*)), 5U);
}

} // namespace
