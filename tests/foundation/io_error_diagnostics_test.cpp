#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_exception.hpp>

#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using test_support::logged_diagnostics;
using test_support::watched_diagnostics;
using calls = std::vector<std::string>;

// A compiler must not see that both sides are one object.
io_error& same(io_error& error) {
    return error;
}

class ErrorWithDiagnostics : public ::testing::Test {
protected:
    ErrorWithDiagnostics() : error(io_errc::no_result) {
        error.diagnostics(io_error_diagnostics(diagnostics.get()));
        diagnostics.take_calls();
    }

    watched_diagnostics diagnostics;
    io_error error;
};

TEST_F(ErrorWithDiagnostics, HoldsOneReference) {
    EXPECT_EQ(diagnostics.others(), 1U);
    EXPECT_EQ(error.diagnostics().list(), diagnostics.get());
}

TEST_F(ErrorWithDiagnostics, SharesThemWithItsCopy) {
    {
        io_error const copy(error);
        EXPECT_EQ(diagnostics.take_calls(), (calls{"add_ref"}));
        EXPECT_EQ(copy.diagnostics().list(), diagnostics.get());
        EXPECT_EQ(copy, error);
        EXPECT_EQ(diagnostics.others(), 2U);
        diagnostics.take_calls();
    }
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(error.diagnostics().list(), diagnostics.get());
    EXPECT_EQ(diagnostics.others(), 1U);
}

TEST_F(ErrorWithDiagnostics, GivesThemUpWhenMovedFrom) {
    io_error const target(std::move(error));
    EXPECT_EQ(diagnostics.take_calls(), calls{});
    EXPECT_EQ(target.diagnostics().list(), diagnostics.get());
    EXPECT_EQ(error.diagnostics().list(), nullptr);
}

TEST_F(ErrorWithDiagnostics, KeepsCodeAndCategoryWhenMovedFrom) {
    io_error target(std::move(error));
    EXPECT_EQ(error.code(), 5);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
    io_error assigned;
    assigned = std::move(target);
    EXPECT_EQ(target.code(), 5);
    EXPECT_EQ(&target.category(), &generic_io_error_category());
    EXPECT_EQ(target.diagnostics().list(), nullptr);
    EXPECT_EQ(assigned.code(), 5);
    EXPECT_EQ(diagnostics.take_calls(), calls{});
}

TEST_F(ErrorWithDiagnostics, SharesThemWithATargetOfAssignment) {
    io_error target;
    target = error;
    EXPECT_EQ(diagnostics.take_calls(), (calls{"add_ref"}));
    EXPECT_EQ(target, error);
    EXPECT_EQ(target.diagnostics().list(), diagnostics.get());
}

TEST_F(ErrorWithDiagnostics, DropsThemForThoseOfTheSource) {
    watched_diagnostics others;
    io_error source(io_errc::todo);
    source.diagnostics(io_error_diagnostics(others.get()));
    others.take_calls();
    error = source;
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(others.take_calls(), (calls{"add_ref"}));
    EXPECT_EQ(error.code(), 0x7fffffff);
    EXPECT_EQ(error.diagnostics().list(), others.get());
}

TEST_F(ErrorWithDiagnostics, DropsThemForASourceWithoutAny) {
    error = io_error();
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(error.code(), 0);
}

TEST_F(ErrorWithDiagnostics, DropsThemForThoseOfAMovedSource) {
    watched_diagnostics others;
    io_error source(io_errc::todo);
    source.diagnostics(io_error_diagnostics(others.get()));
    others.take_calls();
    error = std::move(source);
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(others.take_calls(), calls{});
    EXPECT_EQ(error.diagnostics().list(), others.get());
    EXPECT_EQ(source.diagnostics().list(), nullptr);
    EXPECT_EQ(others.others(), 1U);
}

TEST_F(ErrorWithDiagnostics, ReleasesBeforeItAddsWhenAssignedToItself) {
    error = same(error); // the test's own reference keeps them alive in between
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release", "add_ref"}));
    EXPECT_EQ(error.diagnostics().list(), diagnostics.get());
    EXPECT_EQ(error.code(), 5);
}

TEST_F(ErrorWithDiagnostics, ReleasesBeforeItAddsWhenBothShareThem) {
    io_error const other(error);
    diagnostics.take_calls();
    error = other;
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release", "add_ref"}));
    EXPECT_EQ(diagnostics.others(), 2U);
}

TEST_F(ErrorWithDiagnostics, EndsWithoutThemWhenMovedToItself) {
    error = std::move(same(error));
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(error.code(), 5);
    EXPECT_EQ(&error.category(), &generic_io_error_category());
}

TEST_F(ErrorWithDiagnostics, ReleasesThemAtItsEnd) {
    {
        io_error const target(std::move(error));
        static_cast<void>(target);
    }
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST_F(ErrorWithDiagnostics, ReplacesThemByOthers) {
    watched_diagnostics others;
    error.diagnostics(io_error_diagnostics(others.get()));
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
    EXPECT_EQ(others.take_calls(), (calls{"add_ref"}));
    error.diagnostics(io_error_diagnostics(nullptr));
    EXPECT_EQ(others.take_calls(), (calls{"release"}));
    EXPECT_EQ(error.diagnostics().list(), nullptr);
    EXPECT_EQ(error.code(), 5);
}

TEST_F(ErrorWithDiagnostics, SurvivesAttachingWhatItHolds) {
    error.diagnostics(io_error_diagnostics(error.diagnostics().list()));
    EXPECT_EQ(diagnostics.others(), 1U);
    EXPECT_EQ(error.diagnostics().list(), diagnostics.get());
}

TEST_F(ErrorWithDiagnostics, MovesThemIntoAnException) {
    {
        io_exception const exception(std::move(error));
        EXPECT_EQ(diagnostics.take_calls(), calls{});
        EXPECT_EQ(error.diagnostics().list(), nullptr);
        EXPECT_EQ(exception.error().diagnostics().list(), diagnostics.get());
        EXPECT_EQ(diagnostics.others(), 1U);
        diagnostics.take_calls();
    }
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
}

TEST_F(ErrorWithDiagnostics, SharesThemWithAnExceptionMadeFromACopy) {
    io_exception const exception(error);
    EXPECT_EQ(diagnostics.take_calls(), (calls{"add_ref"}));
    EXPECT_EQ(error.diagnostics().list(), diagnostics.get());
    EXPECT_EQ(diagnostics.others(), 2U);
}

TEST_F(ErrorWithDiagnostics, SharesThemWithCopiesOfAnException) {
    io_exception const exception(error);
    diagnostics.take_calls();
    {
        io_exception const copy(exception);
        EXPECT_EQ(diagnostics.take_calls(), (calls{"add_ref"}));
        EXPECT_EQ(copy.error().diagnostics().list(), diagnostics.get());
        diagnostics.take_calls();
    }
    EXPECT_EQ(diagnostics.take_calls(), (calls{"release"}));
}

TEST(ErrorDiagnostics, AreDestroyedWithTheLastRecord) {
    auto const log = std::make_shared<calls>();
    auto* const diagnostics = new logged_diagnostics(log);
    {
        io_error first(io_errc::no_result);
        first.diagnostics(io_error_diagnostics(diagnostics));
        diagnostics->release();
        log->clear();
        io_error const second(first);
        first.reset();
        EXPECT_EQ(*log, (calls{"add_ref", "release"}));
    }
    EXPECT_EQ(*log, (calls{"add_ref", "release", "release", "destroy"}));
}

} // namespace
