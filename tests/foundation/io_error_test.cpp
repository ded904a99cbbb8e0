#include <tavi/ioapi/v2/io_error.hpp>

#include "pump_category.hpp"
#include "support/allocations.hpp"
#include "support/diagnostics.hpp"
#include "support/object_bytes.hpp"
#include "support/printed.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using foundation_test::pump_category;
using test_support::watched_diagnostics;

TEST(IoError, SaysSuccessByDefault) {
    io_error const error;
    EXPECT_EQ(error.code(), 0);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_TRUE(error.ok());
    EXPECT_FALSE(error.failed());
    EXPECT_FALSE(static_cast<bool>(error));
    EXPECT_EQ(error.message(), "succecss"); // sic
}

TEST(IoError, TakesTheCategoryOfWhatItIsAssigned) {
    pump_category const category;
    io_error const source(category, 5);
    io_error copied;
    copied = source;
    EXPECT_EQ(&copied.category(), &category);
    EXPECT_EQ(copied.code(), 5);
    io_error moved;
    moved = io_error(category, 6);
    EXPECT_EQ(&moved.category(), &category);
    EXPECT_EQ(moved.code(), 6);
}

TEST(IoError, IsMadeFromACode) {
    io_error const error = io_errc::no_result;
    EXPECT_EQ(error.code(), 5);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
    EXPECT_FALSE(error.ok());
    EXPECT_TRUE(error.failed());
    EXPECT_TRUE(static_cast<bool>(error));
}

TEST(IoError, KeepsAnyNumberOfACategory) {
    pump_category const category;
    for (int const code : {0, 5, -7, 0x7fffffff}) {
        io_error const error(category, code);
        EXPECT_EQ(error.code(), code);
        EXPECT_EQ(&error.category(), &category);
        EXPECT_EQ(error.diagnostics().list(), nullptr);
        EXPECT_EQ(error.ok(), code == 0);
    }
}

TEST(IoError, IsATestOnlyWhereATestIsWanted) {
    static_assert(std::is_constructible_v<bool, io_error>);
    static_assert(!std::is_convertible_v<io_error, bool>);
    static_assert(!std::is_convertible_v<int, io_error>);
}

TEST(IoError, IsEqualByCodeAndCategory) {
    pump_category const pump;
    pump_category const other;
    EXPECT_TRUE(io_error(io_errc::no_result) == make_io_error(io_errc::no_result));
    EXPECT_FALSE(io_error(io_errc::no_result) != make_io_error(io_errc::no_result));
    EXPECT_FALSE(io_error(io_errc::no_result) == io_error(io_errc::not_found));
    EXPECT_TRUE(io_error(io_errc::no_result) != io_error(io_errc::not_found));
    EXPECT_FALSE(io_error(pump, 5) == io_error(io_errc::no_result));
    EXPECT_TRUE(io_error(pump, 5) == io_error(pump, 5));
    EXPECT_FALSE(io_error(pump, 5) == io_error(other, 5)) << "categories differ by address";
    EXPECT_FALSE(io_error(pump, 0) == io_error());
    EXPECT_TRUE(io_error() == io_errc::success);
}

TEST(IoError, IsEqualWhateverItsDiagnosticsAre) {
    watched_diagnostics const diagnostics;
    io_error detailed(io_errc::no_result);
    detailed.diagnostics(io_error_diagnostics(diagnostics.get()));
    EXPECT_TRUE(detailed == io_error(io_errc::no_result));
}

TEST(IoErrorReset, GivesSuccessOfTheGenericCategory) {
    pump_category const category;
    watched_diagnostics diagnostics;
    io_error error(category, 5);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    diagnostics.take_calls();
    error.reset();
    EXPECT_EQ(error.code(), 0);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(diagnostics.take_calls(), (std::vector<std::string>{"release"}));
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST(IoErrorReset, IsHarmlessWithoutDiagnostics) {
    io_error error(io_errc::no_result);
    error.reset();
    error.reset();
    EXPECT_TRUE(error.ok());
}

TEST(IoError, NeverAllocates) {
    watched_diagnostics const diagnostics;
    io_error source(io_errc::no_result);
    source.diagnostics(io_error_diagnostics(diagnostics.get()));
    io_error plain(io_errc::todo);
    test_support::allocation_counter const counter;
    io_error copy(plain);
    io_error moved(std::move(plain));
    copy = moved;
    copy = std::move(moved);
    copy.reset();
    static_cast<void>(make_io_error(io_errc::todo));
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(IoError, StandsAsCodeCategoryDiagnostics) {
    pump_category const category;
    watched_diagnostics const diagnostics;
    io_error error(category, -5);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    EXPECT_EQ(test_support::field_at<int>(error, 0), -5);
    EXPECT_EQ(test_support::field_at<io_error_category const*>(error, sizeof(void*)), &category);
    EXPECT_EQ(
        test_support::field_at<interfaces::io_error_diagnostics_impl*>(error, 2 * sizeof(void*)),
        diagnostics.get());
    static_assert(sizeof(io_error) == test_support::by_word(12, 24));
}

struct description_case {
    io_error error;
    char const* text;
};

TEST(IoErrorText, TellsCategoryCodeAndMessage) {
    pump_category const category;
    description_case const cases[] = {
        {io_error(), "generic:0 succecss"}, // sic
        {io_errc::incompatible_type, "generic:3 incompatible type"},
        {io_errc::todo, "generic:2147483647 todo"},
        {io_errc(10), "generic:10"},
        {io_errc(-1), "generic:-1"},
        {io_error(category, 5), "pump:5 blocked"},
        {io_error(category, 6), "pump:6"},
    };
    for (auto const& [error, text] : cases) {
        EXPECT_EQ(describe(error), text);
        EXPECT_EQ(test_support::printed(error), text);
        EXPECT_EQ(test_support::printed_by_own_traits(error), text);
    }
}

TEST(IoErrorText, IsPrintedByWidthAndFill) {
    std::ostringstream out;
    out << std::setw(12) << std::setfill('.') << io_error(io_errc(10)) << '|';
    EXPECT_EQ(out.str(), "..generic:10|");
}

class raw_category final : public io_error_category {
public:
    char const* name() const override { return "raw"; }
    utility::string message(int) const override { return utility::string("a\0b", 3); }
};

TEST(IoErrorText, IsPrintedWholeWithZeroBytes) {
    raw_category const category;
    io_error const error(category, 1);
    EXPECT_EQ(describe(error), std::string("raw:1 a\0b", 9));
    EXPECT_EQ(test_support::printed(error), describe(error));
}

} // namespace
