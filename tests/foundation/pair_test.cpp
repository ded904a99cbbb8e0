#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/utility/pair.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace {

using tavi::ioapi::v2::io_data_type;
using tavi::ioapi::v2::utility::pair;
using tavi::ioapi::v2::utility::string;

TEST(Pair, IsAnAggregateOfFirstAndSecond) {
    static_assert(std::is_aggregate_v<pair<string, io_data_type>>);
    pair<string, io_data_type> const member{"level", io_data_type::object(7)};
    EXPECT_EQ(member.first, "level");
    EXPECT_EQ(member.second, io_data_type::object(7));
}

TEST(Pair, KeepsTheNaturalAlignmentOfItsMembers) {
    using member = pair<string, io_data_type>;
    static_assert(offsetof(member, first) == 0);
    static_assert(offsetof(member, second) == test_support::by_word(16, 24));
    static_assert(sizeof(member) == test_support::by_word(40, 48));
    using mixed = pair<char, int>;
    static_assert(offsetof(mixed, second) == alignof(int));
}

TEST(Pair, IsDeducedFromItsMembers) {
    pair const deduced{1, 2.5};
    static_assert(std::is_same_v<decltype(deduced), pair<int, double> const>);
    EXPECT_EQ(deduced.first, 1);
}

TEST(Pair, IsTakenApart) {
    auto const [first, second] = pair<int, char>{1, 'x'};
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 'x');
}

} // namespace
