#include <tavi/ioapi/v2/detail/narrow.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <stdexcept>
#include <string_view>

namespace {

namespace detail = tavi::ioapi::v2::detail;
using tavi::ioapi::v2::utility::string;
using tavi::ioapi::v2::utility::string_view;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::has_wide_words;

char const* volatile opaque = "few bytes"; // a compiler must not foresee the reads refused here
char const* const few = opaque;
constexpr unsigned int too_long = 0xFFFFFFFF; // with its terminator it needs 2^32 bytes
constexpr unsigned int longest = 0xFFFFFFFE;

// Where a size that wraps is not refused, the copy runs out of the few bytes that there are.
TEST(TextLimit, RefusesPointerAndSizeWhoseBlockWouldWrap) {
    allocation_counter const counter;
    EXPECT_THROW(string(few, too_long), std::bad_alloc);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(TextLimit, RefusesAViewWhoseBlockWouldWrap) {
    string_view const view(few, too_long);
    allocation_counter const counter;
    EXPECT_THROW(string{view}, std::bad_alloc);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(TextLimit, RefusesAStandardViewWhoseBlockWouldWrap) {
    std::string_view const view(few, too_long);
    allocation_counter const counter;
    EXPECT_THROW(string{view}, std::bad_alloc);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(TextLimit, RefusesASizeBeyond32Bits) {
    if constexpr (!has_wide_words) GTEST_SKIP() << "no size of this platform is wider";
    for (unsigned long long const size : {0x100000000ULL, 0x100000001ULL, 0x1FFFFFFFFULL}) {
        std::string_view const view(few, static_cast<std::size_t>(size));
        EXPECT_THROW(string{view}, std::bad_alloc);
    }
}

TEST(TextLimit, AsksForTheLongestText) {
    unsigned int volatile const opaque_size = longest; // likewise
    unsigned int const size = opaque_size;
    for (int form = 0; form < 3; ++form) {
        allocation_counter const counter;
        allocation_failure const failure(1);
        EXPECT_THROW(
            {
                if (form == 0) string(few, size);
                if (form == 1) string{string_view(few, size)};
                if (form == 2) string{std::string_view(few, size)};
            },
            std::bad_alloc);
        // Where sizes have 32 bits, so large a block is refused before memory is asked.
        EXPECT_EQ(counter.allocations(), has_wide_words ? 1U : 0U);
        EXPECT_EQ(failure.hit(), has_wide_words);
    }
}

TEST(TextLimit, LeavesTheTargetOfAnAssignmentUnchanged) {
    string text("level");
    EXPECT_THROW(text = std::string_view(few, too_long), std::bad_alloc);
    EXPECT_STREQ(text.c_str(), "level");
}

TEST(ViewLimit, TakesWhat32BitsState) {
    EXPECT_EQ(string_view(std::string_view(few, 0xFFFFFFFF)).size(), 0xFFFFFFFFU);
}

TEST(ViewLimit, RefusesASizeBeyond32Bits) {
    if constexpr (!has_wide_words) GTEST_SKIP() << "no size of this platform is wider";
    std::string_view const view(few, static_cast<std::size_t>(0x100000000ULL));
    EXPECT_THROW(static_cast<void>(string_view(view)), std::length_error);
}

TEST(Narrowing, OfTextSizesLeavesRoomForTheTerminator) {
    EXPECT_EQ(detail::narrow_text_size(0), 0U);
    EXPECT_EQ(detail::narrow_text_size(0xFFFFFFFE), 0xFFFFFFFEU);
    EXPECT_THROW(detail::narrow_text_size(0xFFFFFFFF), std::bad_alloc);
}

TEST(Narrowing, OfCountsAndViewsTakesAll32Bits) {
    EXPECT_EQ(detail::narrow_count(0xFFFFFFFF), 0xFFFFFFFFU);
    EXPECT_EQ(detail::narrow_view_size(0xFFFFFFFF), 0xFFFFFFFFU);
}

TEST(Narrowing, RefusesWiderSizes) {
    if constexpr (!has_wide_words) GTEST_SKIP() << "no size of this platform is wider";
    auto const wide = static_cast<std::size_t>(0x100000000ULL);
    EXPECT_THROW(detail::narrow_text_size(wide), std::bad_alloc);
    EXPECT_THROW(detail::narrow_count(wide), std::bad_array_new_length);
    EXPECT_THROW(detail::narrow_view_size(wide), std::length_error);
}

} // namespace
