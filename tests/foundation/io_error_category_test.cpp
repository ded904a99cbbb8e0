#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>
#include <tavi/ioapi/v2/io_exception.hpp>

#include "pump_category.hpp"
#include "support/allocations.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <ostream>
#include <string>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::pump_category;
using test_support::allocation_counter;
using test_support::block_of;

struct code_row {
    int value;
    io_errc name;
    char const* message;
};
void PrintTo(code_row const& row, std::ostream* out) {
    *out << row.value;
}

constexpr code_row code_rows[] = {
    {0, io_errc::success, "succecss"}, // sic
    {1, io_errc::not_found, "not found"},
    {2, io_errc::invalid_property, "invalid property"},
    {3, io_errc::incompatible_type, "incompatible type"},
    {4, io_errc::value_too_large, "value too large"},
    {5, io_errc::no_result, "no result"},
    {6, io_errc::not_supported, "not supported"},
    {7, io_errc::not_implemented, "not implemented"},
    {8, io_errc::unhandled_exception, "unhandled exception"},
    {9, io_errc::invalid_backend_context, "invalid backend context"},
    {0x7fffffff, io_errc::todo, "todo"},
};

class GenericCode : public ::testing::TestWithParam<code_row> {};
INSTANTIATE_TEST_SUITE_P(EachRow, GenericCode, ::testing::ValuesIn(code_rows));

TEST_P(GenericCode, HasItsNumber) {
    EXPECT_EQ(static_cast<int>(GetParam().name), GetParam().value);
}

TEST_P(GenericCode, HasItsMessage) {
    EXPECT_EQ(generic_io_error_category().message(GetParam().value), GetParam().message);
}

TEST_P(GenericCode, HasAFreshBlockForEachMessage) {
    allocation_counter const counter;
    utility::string const first = generic_io_error_category().message(GetParam().value);
    utility::string const second = generic_io_error_category().message(GetParam().value);
    EXPECT_EQ(counter.allocations(), 2U);
    EXPECT_NE(block_of(first), nullptr);
    EXPECT_NE(block_of(first), block_of(second));
}

TEST_P(GenericCode, IsCarriedByAMadeError) {
    io_error const error = make_io_error(GetParam().name);
    EXPECT_EQ(error.code(), GetParam().value);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(error.message(), GetParam().message);
}

TEST_P(GenericCode, IsWhatItsExceptionSays) {
    EXPECT_STREQ(io_exception(make_io_error(GetParam().name)).what(), GetParam().message);
}

class UnknownCode : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(BesideTheTable,
                         UnknownCode,
                         ::testing::Values(-1,
                                           -2,
                                           -9,
                                           std::numeric_limits<int>::min(),
                                           std::numeric_limits<int>::min() + 1,
                                           10,
                                           11,
                                           12345,
                                           0x7ffffffd,
                                           0x7ffffffe));

TEST_P(UnknownCode, HasTheEmptyMessageWithoutABlock) {
    allocation_counter const counter;
    utility::string const message = generic_io_error_category().message(GetParam());
    EXPECT_EQ(message.size(), 0U);
    EXPECT_EQ(block_of(message), nullptr);
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST_P(UnknownCode, IsKeptByAnError) {
    io_error const error = make_io_error(io_errc(GetParam()));
    EXPECT_EQ(error.code(), GetParam());
    EXPECT_EQ(error.message(), "");
    EXPECT_TRUE(error.failed());
}

TEST_P(UnknownCode, IsAnExceptionWithoutWords) {
    EXPECT_STREQ(io_exception(make_io_error(io_errc(GetParam()))).what(), "");
}

TEST(GenericCategory, IsNamedGeneric) {
    EXPECT_STREQ(generic_io_error_category().name(), "generic");
}

TEST(GenericCategory, IsOneObject) {
    EXPECT_EQ(&generic_io_error_category(), &generic_io_error_category());
}

TEST(GenericCategory, SpeaksTheSameWhereSomebodyMakesAnotherOne) {
    auto own = std::make_unique<io_error_generic_category>();
    EXPECT_STREQ(own->name(), "generic");
    EXPECT_EQ(own->message(1), "not found");
    // Categories are told by their addresses.
    EXPECT_NE(io_error(*own, 1), make_io_error(io_errc::not_found));
}

TEST(GenericCategory, HoldsItsTableAlone) {
    static_assert(sizeof(io_error_generic_category) == sizeof(void*));
}

TEST(GenericCategory, FailsOnlyByExhaustedMemory) {
    EXPECT_EQ(test_support::count_survived_failures(
                  [] { static_cast<void>(generic_io_error_category().message(3)); }),
              1);
}

TEST(OwnCategory, SpeaksThroughItsErrors) {
    pump_category const category;
    io_error const error(category, 5);
    EXPECT_EQ(&error.category(), &category);
    EXPECT_STREQ(error.category().name(), "pump");
    EXPECT_EQ(error.message(), "blocked");
    EXPECT_EQ(io_error(category, 6).message(), "");
}

TEST(OwnCategory, SpeaksThroughExceptions) {
    pump_category const category;
    io_exception const exception(io_error(category, 5));
    EXPECT_STREQ(exception.what(), "blocked");
    EXPECT_EQ(&exception.error().category(), &category);
}

TEST(OwnCategory, CountsAsFailureByItsCodeAlone) {
    pump_category const category;
    EXPECT_TRUE(io_error(category, 0).ok());
    EXPECT_TRUE(io_error(category, -1).failed());
}

} // namespace
