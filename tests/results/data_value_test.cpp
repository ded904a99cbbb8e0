#include <tavi/ioapi/v2/io_data_value.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using quality = io_data_value::value_quality;
using test_support::allocation_counter;
using test_support::allocation_failure;
using test_support::block_of;

utility::string const& text_in(io_value const& value) {
    return *value.get_if<utility::string>();
}

long long present_ticks() {
    auto const since_epoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(since_epoch).count() / 100;
}

TEST(DataValue, IsEmptyWithoutTimeAndQualityByDefault) {
    io_data_value const data;
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(data.value().index(), 0);
    EXPECT_EQ(data.timestamp(), io_timestamp());
    EXPECT_EQ(data.quality(), quality::uncertain);
}

TEST(DataValue, OfValueAndQualityHasNoTimestamp) {
    io_data_value const data(7, quality::good);
    EXPECT_EQ(*data.value().get_if<int>(), 7);
    EXPECT_EQ(data.timestamp().ticks(), 0);
    EXPECT_EQ(data.quality(), quality::good);
    EXPECT_FALSE(data.empty());
}

TEST(DataValue, OfAllThreeKeepsThem) {
    io_data_value const data(7, io_timestamp(-5), quality::bad);
    EXPECT_EQ(*data.value().get_if<int>(), 7);
    EXPECT_EQ(data.timestamp().ticks(), -5);
    EXPECT_EQ(data.quality(), quality::bad);
}

TEST(DataValue, MovesItsArgumentIn) {
    io_value first("level");
    io_value second("level");
    char const* const first_block = block_of(text_in(first));
    char const* const second_block = block_of(text_in(second));
    allocation_counter const counter;
    io_data_value const two(std::move(first), quality::good);
    io_data_value const three(std::move(second), io_timestamp(1), quality::good);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(text_in(two.value())), first_block);
    EXPECT_EQ(block_of(text_in(three.value())), second_block);
}

TEST(Quality, HasItsNumbers) {
    static_assert(static_cast<int>(quality::bad) == -1);
    static_assert(static_cast<int>(quality::uncertain) == 0);
    static_assert(static_cast<int>(quality::good) == 1);
    static_assert(sizeof(quality) == 4);
    static_assert(std::is_same_v<std::underlying_type_t<quality>, int>);
}

TEST(Quality, IsReadByItsSign) {
    for (int const number : {INT_MIN, -192, -1, 0, 1, 192, INT_MAX}) {
        io_data_value const data(7, static_cast<quality>(number));
        EXPECT_EQ(data.bad(), number < 0) << number;
        EXPECT_EQ(data.good(), number > 0) << number;
        EXPECT_EQ(static_cast<int>(data.quality()), number);
    }
}

TEST(DataValue, SetsTheTimestampAndNothingElse) {
    io_data_value data(7, io_timestamp(1), quality::good);
    data.timestamp(io_timestamp(99));
    EXPECT_EQ(data.timestamp().ticks(), 99);
    EXPECT_EQ(*data.value().get_if<int>(), 7);
    EXPECT_EQ(data.quality(), quality::good);
}

TEST(DataValue, SetsAllThree) {
    io_data_value data(7, io_timestamp(1), quality::good);
    data.value("level", io_timestamp(-3), quality::bad);
    EXPECT_EQ(text_in(data.value()), "level");
    EXPECT_EQ(data.timestamp().ticks(), -3);
    EXPECT_EQ(data.quality(), quality::bad);
}

TEST(DataValue, SetsAllThreeByAMove) {
    io_data_value data;
    io_value value("level");
    char const* const block = block_of(text_in(value));
    allocation_counter const counter;
    data.value(std::move(value), io_timestamp(1), quality::good);
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(block_of(text_in(data.value())), block);
}

TEST(DataValue, SetsThePresentTime) {
    io_data_value data(7, io_timestamp(1), quality::good);
    long long const before = present_ticks();
    data.value(8, quality::bad);
    long long const after = present_ticks();
    EXPECT_EQ(*data.value().get_if<int>(), 8);
    EXPECT_EQ(data.quality(), quality::bad);
    EXPECT_LE(before, data.timestamp().ticks());
    EXPECT_LE(data.timestamp().ticks(), after);
}

TEST(DataValue, SetsThePresentTimeWithACopyOfTheValue) {
    io_data_value data;
    io_value value("level");
    char const* const block = block_of(text_in(value));
    allocation_counter const counter;
    data.value(std::move(value), quality::good);
    EXPECT_EQ(counter.allocations(), 1U);
    EXPECT_NE(block_of(text_in(data.value())), block);
    EXPECT_EQ(text_in(data.value()), "level");
}

TEST(DataValue, IsUnchangedWhereTheCopyCannotBeMade) {
    io_data_value data("old", io_timestamp(5), quality::bad);
    io_value value("level");
    {
        allocation_failure const failure(1);
        EXPECT_THROW(data.value(std::move(value), quality::good), std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
    EXPECT_EQ(text_in(data.value()), "old");
    EXPECT_EQ(data.timestamp().ticks(), 5);
    EXPECT_EQ(data.quality(), quality::bad);
}

TEST(DataValue, SurvivesExhaustedMemory) {
    EXPECT_EQ(test_support::count_survived_failures([] {
                  io_data_value data;
                  data.value("level", quality::good);
              }),
              2);
}

TEST(DataValue, GivesItsValueForMovingOut) {
    io_data_value data("level", io_timestamp(5), quality::good);
    EXPECT_EQ(&data.value(), static_cast<void const*>(&data));
    static_assert(std::is_same_v<decltype(std::move(data).value()), io_value&&>);
    static_assert(std::is_same_v<decltype(data.value()), io_value const&>);
    static_assert(
        std::is_same_v<decltype(std::declval<io_data_value const>().value()), io_value const&>);
    io_value&& reference = std::move(data).value();
    EXPECT_EQ(&reference, &data.value());
    allocation_counter const counter;
    io_value const taken(std::move(data).value());
    EXPECT_EQ(counter.allocations(), 0U);
    EXPECT_EQ(text_in(taken), "level");
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(data.timestamp().ticks(), 5);
    EXPECT_EQ(data.quality(), quality::good);
}

// Gives the value another data type and leaves its payload alone, as another module could.
void overwrite_type(io_value& value, io_data_type const& type) {
    std::memcpy(static_cast<void*>(&value), &type, sizeof type);
}

TEST(DataValueEmpty, ReadsAllFieldsOfTheDataTypeAlone) {
    io_data_type const types[] = {{io_data_type::basic_types::i32, 0, 0, 0},
                                  {io_data_type::basic_types::empty, 1, 0, 0},
                                  {io_data_type::basic_types::empty, 0x100000000ULL, 0, 0},
                                  {io_data_type::basic_types::empty, 0, 1, 0},
                                  {io_data_type::basic_types::empty, 0, 0, 1}};
    for (io_data_type const& type : types) {
        io_value value;
        overwrite_type(value, type);
        ASSERT_EQ(value.index(), 0);
        EXPECT_FALSE(io_data_value(std::move(value), quality::good).empty()) << type;
    }
}

TEST(DataValueEmpty, IsTrueForAPayloadOfTheAllZeroType) {
    io_value value(io_data_type(), 7);
    ASSERT_EQ(value.index(), 4);
    EXPECT_TRUE(io_data_value(std::move(value), quality::good).empty());
}

TEST(DataValue, IsCopiedDeep) {
    io_data_value const data("level", io_timestamp(5), quality::good);
    io_data_value const copy(data);
    EXPECT_NE(block_of(text_in(copy.value())), block_of(text_in(data.value())));
    EXPECT_EQ(text_in(copy.value()), "level");
    EXPECT_EQ(copy.timestamp(), data.timestamp());
    EXPECT_EQ(copy.quality(), data.quality());
}

TEST(DataValue, LeavesTheEmptyValueWhenMovedFrom) {
    io_data_value data("level", io_timestamp(5), quality::good);
    io_data_value const taken(std::move(data));
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(text_in(taken.value()), "level");
}

TEST(DataValue, StandsAsValueTimestampQuality) {
    io_data_value const data(7, io_timestamp(-9), quality::bad);
    EXPECT_EQ(test_support::offset_of(data, data.value()), 0U);
    EXPECT_EQ(test_support::field_at<long long>(data, sizeof(io_value)), -9);
    EXPECT_EQ(test_support::field_at<int>(data, sizeof(io_value) + 8), -1);
    static_assert(sizeof(io_data_value) == test_support::by_word(64, 72));
}

} // namespace
