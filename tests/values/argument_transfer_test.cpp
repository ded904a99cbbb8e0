#include <tavi/ioapi/v2/io_data_value.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/read_result.hpp>

#include "sample_payloads.hpp"
#include "support/alternatives.hpp"
#include "support/typed_tests.hpp"
#include "value_image.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

/// \file
/// Values that are handed on as arguments, with every kind of payload.

namespace argument_transfer {
namespace {

using namespace tavi::ioapi::v2;
using quality = io_data_value::value_quality;
using values_test::same_content;
using values_test::sample;
using values_test::sample_value;

/// All the room for a payload, without the padding around it.
auto payload_bytes(io_value const& value) {
    constexpr std::size_t size = values_test::index_offset - values_test::payload_offset;
    return values_test::read_at<std::array<unsigned char, size>>(value,
                                                                 values_test::payload_offset);
}

io_data_type odd_type() {
    io_data_type type;
    type.basic_type = io_data_type::basic_types::i16;
    type.structure_id = 0x1122334455667788ULL;
    type.array_kind = 2;
    type.array_extent = 9;
    return type;
}

template <class T>
class Argument : public ::testing::Test {
protected:
    ~Argument() noexcept override = default; // that of a value may raise

    static io_value odd_value() { return io_value(odd_type(), sample<T>()); }
    static io_data_value odd_data() { return {odd_value(), io_timestamp(7), quality::bad}; }

    /// Whether an entry has all of `odd_data`, and no error.
    static void expect_odd(read_result::result_type const& entry) {
        EXPECT_TRUE(same_content(entry.value().value(), odd_value()));
        EXPECT_EQ(entry.value().value().data_type(), odd_type());
        EXPECT_EQ(entry.value().timestamp(), io_timestamp(7));
        EXPECT_EQ(entry.value().quality(), quality::bad);
        EXPECT_EQ(entry.error(), io_error(io_errc::success));
        if constexpr (std::is_arithmetic_v<T> || std::is_same_v<T, std::nullptr_t>) {
            EXPECT_EQ(payload_bytes(entry.value().value()), payload_bytes(odd_value()))
                << "nothing is left of what was there";
        }
    }
};
TYPED_TEST_SUITE(Argument, test_support::every_alternative, test_support::alternative_names);

TYPED_TEST(Argument, PassesWholeIntoADataValue) {
    io_data_value const timed(this->odd_value(), io_timestamp(7), quality::bad);
    EXPECT_TRUE(same_content(timed.value(), this->odd_value()));
    EXPECT_EQ(timed.value().data_type(), odd_type());
    EXPECT_EQ(timed.timestamp(), io_timestamp(7));
    EXPECT_EQ(timed.quality(), quality::bad);
}

TYPED_TEST(Argument, PassesWholeIntoADataValueWithoutATime) {
    io_data_value const timeless(this->odd_value(), quality::good);
    EXPECT_TRUE(same_content(timeless.value(), this->odd_value()));
    EXPECT_EQ(timeless.value().data_type(), odd_type());
    EXPECT_EQ(timeless.timestamp(), io_timestamp());
    EXPECT_EQ(timeless.quality(), quality::good);
}

TYPED_TEST(Argument, IsEmptyAfterwardsWhereItWasMovedIn) {
    io_value source = this->odd_value();
    io_data_value const target(std::move(source), io_timestamp(7), quality::bad);
    EXPECT_TRUE(values_test::is_exactly_empty(source));
}

TYPED_TEST(Argument, PassesWholeIntoAnEntry) {
    plc_identifier const id("tank.level");
    read_result result(utility::data_view<plc_identifier const>(&id, 1));
    result[0].set(this->odd_data());
    this->expect_odd(result[0]);
}

TYPED_TEST(Argument, TakesThePlaceOfATextByIndex) {
    plc_identifier const id("tank.level");
    read_result result(utility::data_view<plc_identifier const>(&id, 1));
    result.set(0, io_data_value("a text that stands in a block of its own", quality::good));
    result.set(0, this->odd_data());
    this->expect_odd(result[0]);
}

TYPED_TEST(Argument, TakesThePlaceOfAnErrorByName) {
    plc_identifier const id("tank.level");
    read_result result(utility::data_view<plc_identifier const>(&id, 1));
    result.set(id, io_error(io_errc::not_found));
    result.set(id, this->odd_data());
    this->expect_odd(result[0]);
}

TYPED_TEST(Argument, GivesWayToANumber) {
    plc_identifier const id("tank.level");
    read_result result(utility::data_view<plc_identifier const>(&id, 1));
    result.set(0, this->odd_data());
    result.set(0, io_data_value(true, quality::good));
    EXPECT_NE(result[0].value().value().get_if<bool>(), nullptr);
    EXPECT_EQ(payload_bytes(result[0].value().value()), payload_bytes(io_value(true)));
}

} // namespace
} // namespace argument_transfer
