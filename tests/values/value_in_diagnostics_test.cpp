#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

/// \file
/// The record that an operation writes to may be the last that holds the diagnostics in which the
/// very value stands that the operation reads.

namespace value_in_diagnostics {
namespace {

using namespace tavi::ioapi::v2;
using types = io_data_type::basic_types;

constexpr char const* long_text = "a text that stands in a block of its own";

/// A failure whose diagnostics nothing else holds.
io_error failure_with(io_value value) {
    io_error_diagnostics_generic list;
    list.set("held", std::move(value));
    io_error error(io_errc::not_found);
    error.diagnostics(list);
    return error;
}

/// The value in the diagnostics; it ends with them.
io_value const& held_by(io_error const& error) {
    io_error_diagnostics const list = error.diagnostics();
    return (*list.begin()).value;
}

void expect_success_alone(io_error const& error) {
    EXPECT_EQ(error, io_error(io_errc::success));
    EXPECT_FALSE(error.has_diagnostics());
}

TEST(ValueInDiagnostics, IsConvertedBeforeTheyGo) {
    io_error error = failure_with(long_text);
    EXPECT_EQ(held_by(error).as<utility::string>(error), long_text);
    expect_success_alone(error);
}

TEST(ValueInDiagnostics, IsConvertedExactlyBeforeTheyGo) {
    io_error error = failure_with(utility::array<double>{1.0, 2.0, 3.0});
    EXPECT_EQ(held_by(error).get_exact<std::vector<int>>(error), (std::vector<int>{1, 2, 3}));
    expect_success_alone(error);
}

TEST(ValueInDiagnostics, IsCopiedUnderItsOwnTypeBeforeTheyGo) {
    io_error error = failure_with(long_text);
    io_value const& held = held_by(error);
    io_value const copy = held.to_variant(held.data_type(), error);
    EXPECT_EQ(copy, io_value(long_text));
    EXPECT_EQ(copy.data_type(), io_data_type::scalar(types::string));
    expect_success_alone(error);
}

TEST(ValueInDiagnostics, BecomesAnotherTypeBeforeTheyGo) {
    io_error error = failure_with(utility::array<int>{1, 2, 3});
    io_value const converted = held_by(error).to_variant(io_data_type::array_of(types::i64), error);
    EXPECT_EQ(converted.as<std::vector<long long>>(), (std::vector<long long>{1, 2, 3}));
    expect_success_alone(error);
}

TEST(ValueInDiagnostics, IsRefusedBeforeTheyGo) {
    io_error error = failure_with(long_text);
    EXPECT_EQ(held_by(error).as<int>(error), 0);
    EXPECT_EQ(error, io_error(io_errc::incompatible_type));
    EXPECT_FALSE(error.has_diagnostics());
}

TEST(ObjectInDiagnostics, GivesItsMemberBeforeTheyGo) {
    io_object object;
    object.set("pressure", long_text);
    io_error error = failure_with(std::move(object));
    io_object const* const held = held_by(error).get_if<io_object>();
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->get("pressure", error), io_value(long_text));
    expect_success_alone(error);
}

} // namespace
} // namespace value_in_diagnostics
