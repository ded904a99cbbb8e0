#include <tavi/ioapi/v2/ioapi.hpp>

#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

using namespace tavi::ioapi::v2;
using test_support::by_word;
using test_support::field_at;

TEST(Layout, OfTextsKeepsAWordForTheAllocator) {
    utility::string const text("level");
    EXPECT_EQ(field_at<unsigned int>(text, sizeof(void*)), 5U);
    EXPECT_EQ(field_at<char const*>(text, by_word(8, 16)), text.data());
    static_assert(sizeof(utility::string) == by_word(12, 24));
}

TEST(Layout, OfDataTypesIsTheSameEverywhere) {
    static_assert(sizeof(io_data_type) == 24 && alignof(io_data_type) == 8);
    static_assert(offsetof(io_data_type, basic_type) == 0);
    static_assert(offsetof(io_data_type, structure_id) == 8);
    static_assert(offsetof(io_data_type, array_kind) == 16);
    static_assert(offsetof(io_data_type, array_extent) == 20);
}

TEST(Layout, OfValuesIsTypePayloadIndex) {
    io_value const value(0x01020304);
    EXPECT_EQ(field_at<io_data_type>(value, 0), value.data_type());
    EXPECT_EQ(field_at<int>(value, 24), 0x01020304);
    EXPECT_EQ(field_at<int>(value, by_word(40, 48)), 4);
    static_assert(sizeof(io_value) == by_word(48, 56) && alignof(io_value) == 8);
}

TEST(Layout, OfNodesFollowsTheirFields) {
    using browsing::node;
    static_assert(sizeof(node) == by_word(144, 184));
    static_assert(offsetof(node, node_class) == 0);
    static_assert(offsetof(node, identifier) == 8);
    static_assert(offsetof(node, browse_name) == by_word(56, 72));
    static_assert(offsetof(node, description) == by_word(104, 136));
    static_assert(offsetof(node, data_type) == by_word(120, 160));
}

TEST(Layout, OfEntriesAndRecords) {
    static_assert(sizeof(plc_identifier_part) == by_word(24, 32));
    static_assert(sizeof(plc_identifier) == by_word(48, 64));
    static_assert(sizeof(io_data_value) == by_word(64, 72));
    static_assert(sizeof(io_error) == by_word(12, 24));
    static_assert(sizeof(read_result::result_type) == by_word(128, 160));
    static_assert(sizeof(write_result::result_type) == by_word(64, 88));
    static_assert(sizeof(read_result) == by_word(8, 16));
    static_assert(sizeof(write_result) == by_word(8, 16));
    static_assert(sizeof(io_object) == sizeof(void*));
    static_assert(sizeof(io_structure_type) == sizeof(void*));
}

} // namespace
