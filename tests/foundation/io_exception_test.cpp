#include <tavi/ioapi/v2/io_exception.hpp>

#include "support/allocations.hpp"
#include "support/diagnostics.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>
#include <type_traits>

namespace {

using namespace tavi::ioapi::v2;

TEST(IoException, CarriesItsError) {
    io_exception const exception(make_io_error(io_errc::incompatible_type));
    EXPECT_EQ(exception.code(), 3);
    EXPECT_EQ(exception.error(), io_error(io_errc::incompatible_type));
    EXPECT_STREQ(exception.what(), "incompatible type");
}

TEST(IoException, IsCaughtAsEachOfItsBases) {
    auto const raise = [] { throw io_exception(make_io_error(io_errc::no_result)); };
    EXPECT_THROW(raise(), io_exception);
    EXPECT_THROW(raise(), std::runtime_error);
    try {
        raise();
    } catch (std::exception const& exception) {
        EXPECT_STREQ(exception.what(), "no result");
    }
}

TEST(IoException, KeepsItsWordsInCopies) {
    io_exception copy(make_io_error(io_errc::todo));
    {
        io_exception const original(make_io_error(io_errc::not_found));
        copy = original;
    }
    EXPECT_STREQ(copy.what(), "not found");
    EXPECT_EQ(copy.code(), 1);
}

TEST(IoException, CopiesWithoutFailure) {
    static_assert(std::is_nothrow_copy_constructible_v<io_exception>);
    static_assert(std::is_nothrow_copy_assignable_v<io_exception>);
    static_assert(std::is_nothrow_destructible_v<io_exception>);
}

TEST(IoException, LeavesNothingBehindWhenMemoryIsExhausted) {
    EXPECT_GE(test_support::count_survived_failures(
                  [] { io_exception const exception(make_io_error(io_errc::no_result)); }),
              2); // the message, and the text of the base
}

TEST(IoException, ReleasesTheDiagnosticsWhenItCannotBeMade) {
    test_support::watched_diagnostics const diagnostics;
    io_error error(io_errc::no_result);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(io_exception{std::move(error)}, std::bad_alloc);
    }
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST(IoException, HasTheFieldsOfItsErrorBehindTheBase) {
    test_support::watched_diagnostics const diagnostics;
    io_error error(io_errc::no_result);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    io_exception const exception(error);
    EXPECT_EQ(test_support::offset_of(exception, exception.error()), sizeof(std::runtime_error));
    EXPECT_EQ(test_support::field_at<int>(exception, sizeof(std::runtime_error)), 5);
    static_assert(sizeof(io_exception) == sizeof(std::runtime_error) + sizeof(io_error));
}

} // namespace
