#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>
#include <tavi/ioapi/v2/utility/string_view.hpp>

#include "largest_block.hpp"
#include "measure.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdio>
#include <string>
#include <utility>

namespace load_test {
namespace {

/// Zero bytes that take next to no memory as long as they are only read; none where there are not
/// enough addresses.
class zero_bytes {
public:
    explicit zero_bytes(unsigned int size)
        : size_(size),
          first_(::mmap(
              nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
    zero_bytes(zero_bytes const&) = delete;
    zero_bytes& operator=(zero_bytes const&) = delete;
    ~zero_bytes() {
        if (is_there()) ::munmap(first_, size_);
    }

    [[nodiscard]] bool is_there() const { return first_ != MAP_FAILED; }
    [[nodiscard]] char const* data() const { return static_cast<char const*>(first_); }

private:
    unsigned int size_;
    void* first_;
};

/// The length of the longest text that can be had beside the bytes that it is copied from.
unsigned int longest_text() {
    return largest_that([](unsigned int size) {
        if (size == 0) return true;
        if (size == 0xFFFFFFFF) return false; // no size states the block
        zero_bytes const source(size);
        return source.is_there() && gateway_gives(size + 1);
    });
}

TEST(TextLoad, IsAsLongAs32BitsAllowUnlessAddressesEndBefore) {
    unsigned int const longest = longest_text();
    std::printf("load: longest text beside its source: %u bytes\n", longest);
    if (has_wide_addresses) {
        EXPECT_EQ(longest, 0xFFFFFFFEU);
    } else {
        EXPECT_GE(longest, 0x20000000U);
    }
}

TEST(TextLoad, HoldsTheLongestText) {
    unsigned int const size = share_of(longest_text());
    zero_bytes const source(size);
    ASSERT_TRUE(source.is_there());
    measured const figures("text of " + std::to_string(size) + " bytes, copied and compared");
    v2::utility::string const text(source.data(), size);
    EXPECT_EQ(text.size(), size);
    EXPECT_EQ(text.data()[size], '\0');
    EXPECT_EQ(text.compare(v2::utility::string_view(source.data(), size)), 0);
    EXPECT_EQ(text.compare(v2::utility::string_view(source.data(), size - 1)), 1);
}

TEST(TextLoad, PassesThroughAValueWithoutACopy) {
    unsigned int const size = share_of(longest_text());
    zero_bytes const source(size);
    ASSERT_TRUE(source.is_there());
    v2::utility::string text(source.data(), size);
    char const* const block = text.data();
    measured const figures("text of " + std::to_string(size) + " bytes, moved into a value");
    v2::io_value const value(std::move(text));
    auto const* const held = value.get_if<v2::utility::string>();
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->data(), block);
    EXPECT_EQ(held->size(), size);
}

// A few bytes stand for so many: they are read only where the block could be had.
TEST(TextLoad, RaisesBadAllocBeyondTheLargestBlock) {
    char const* volatile opaque = "few bytes"; // no compiler is to foresee the read
    char const* const few = opaque;
    for_some_from_to(largest_block(), 0xFFFFFFFF, [few](unsigned int size) {
        EXPECT_EQ(outcome_of([=] { v2::utility::string const text(few, size); }),
                  outcome::no_memory)
            << size;
    });
}

} // namespace
} // namespace load_test
