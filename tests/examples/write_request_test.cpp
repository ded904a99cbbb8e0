#include <controller/write_request.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

bool may(std::vector<std::uint8_t> const& request) {
    return station::may_be_answered(request);
}

TEST(write_request, reading_is_free) {
    for (auto const function : std::vector<std::uint8_t>{1, 2, 3, 4}) {
        EXPECT_TRUE(may({function, 0x00, 0x10, 0x00, 0x01})) << int{function};
    }
}

TEST(write_request, the_panel_is_written_within_its_bounds) {
    EXPECT_FALSE(may({6, 0, 39, 0, 5}));
    EXPECT_TRUE(may({6, 0, 40, 0, 5}));
    EXPECT_TRUE(may({6, 0, 63, 0, 5}));
    EXPECT_FALSE(may({6, 0, 64, 0, 5}));
    EXPECT_TRUE(may({16, 0, 40, 0, 24}));
    EXPECT_FALSE(may({16, 0, 39, 0, 24}));
    EXPECT_FALSE(may({16, 0, 41, 0, 24}));
    EXPECT_FALSE(may({16, 0, 40, 0, 0}));
    EXPECT_FALSE(may({16, 0, 40, 0xFF, 0xFF}));
}

TEST(write_request, the_lamps_are_written_within_their_bounds) {
    EXPECT_FALSE(may({5, 0, 7, 0xFF, 0}));
    EXPECT_TRUE(may({5, 0, 8, 0xFF, 0}));
    EXPECT_TRUE(may({5, 0, 11, 0xFF, 0}));
    EXPECT_FALSE(may({5, 0, 12, 0xFF, 0}));
    EXPECT_TRUE(may({15, 0, 8, 0, 4}));
    EXPECT_FALSE(may({15, 0, 7, 0, 4}));
    EXPECT_FALSE(may({15, 0, 9, 0, 4}));
    EXPECT_FALSE(may({15, 0, 8, 0, 0}));
}

TEST(write_request, of_all_other_registers_that_of_the_step_alone_is_written) {
    EXPECT_TRUE(may({6, 0x00, 0x00, 0x00, 0x05}));
    EXPECT_FALSE(may({6, 0x00, 0x01, 0x00, 0x05}));
    EXPECT_FALSE(may({6, 0x01, 0x00, 0x00, 0x05}));
    EXPECT_TRUE(may({16, 0x00, 0x00, 0x00, 0x01, 2, 0x00, 0x05}));
    EXPECT_FALSE(may({16, 0x00, 0x00, 0x00, 0x02, 4, 0x00, 0x05, 0x00, 0x05}));
    EXPECT_FALSE(may({16, 0x00, 0x01, 0x00, 0x01, 2, 0x00, 0x05}));
}

TEST(write_request, every_other_way_to_write_is_closed) {
    for (auto const function : std::vector<std::uint8_t>{5, 15, 22, 23}) {
        EXPECT_FALSE(may({function, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00})) << int{function};
    }
}

TEST(write_request, a_cut_request_is_no_write_of_the_step_register) {
    EXPECT_FALSE(may({}));
    EXPECT_FALSE(may({6}));
    EXPECT_FALSE(may({6, 0x00}));
    EXPECT_FALSE(may({16, 0x00, 0x00, 0x00}));
}

} // namespace
