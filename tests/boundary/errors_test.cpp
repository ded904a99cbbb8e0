#include "loaded_module.hpp"
#include "support/diagnostics.hpp"

#include <stdexcept>
#include <string>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;

class ErrorAcross : public boundary::WithModule {};

TEST_F(ErrorAcross, SpeaksThroughTheCategoryOfTheModule) {
    io_error const error(backend->category(), 12);
    EXPECT_STREQ(error.category().name(), "boundary");
    EXPECT_EQ(error.message(), "device refuses");
    EXPECT_EQ(describe(error), "boundary:12 device refuses");
    EXPECT_EQ(io_error(backend->category(), 3).message(), "");
}

TEST_F(ErrorAcross, SharesTheGenericCategory) {
    EXPECT_EQ(backend->generic_category(), &generic_io_error_category());
}

TEST_F(ErrorAcross, WasUsableInAnInitialiserOfTheModule) {
    EXPECT_STREQ(backend->early_message(), "not found");
}

void expect_device_code(io_error const& error, int number) {
    auto* const diagnostics = error.diagnostics().list();
    ASSERT_NE(diagnostics, nullptr);
    EXPECT_EQ(diagnostics->size(), 1U);
    EXPECT_EQ(*diagnostics->get("device_code").get_if<int>(), number);
    EXPECT_TRUE(diagnostics->get("other").empty());
    auto* const iterator = diagnostics->make_iterator();
    auto* const clone = iterator->clone();
    EXPECT_TRUE(iterator->equal_to(*clone));
    EXPECT_EQ(iterator->get().key, "device_code");
    EXPECT_EQ(*iterator->get().value->get_if<int>(), number);
    EXPECT_FALSE(iterator->advance());
    EXPECT_FALSE(iterator->equal_to(*clone));
    clone->release();
    iterator->release();
}

TEST_F(ErrorAcross, CarriesDiagnosticsThatTheLibraryCounts) {
    io_error const error = backend->detailed_error();
    expect_device_code(error, 1200);
    EXPECT_EQ(backend->living_diagnostics(), 1);
}

TEST_F(ErrorAcross, CarriesDiagnosticsThatCountThemselves) {
    io_error const error = backend->self_counted_error();
    EXPECT_EQ(error.code(), 13);
    expect_device_code(error, 1300);
}

TEST_F(ErrorAcross, SharesItsDiagnosticsWithCopies) {
    io_error error = backend->detailed_error();
    io_error const copy(error);
    error.reset();
    EXPECT_EQ(backend->living_diagnostics(), 1);
    expect_device_code(copy, 1200);
}

TEST_F(ErrorAcross, IsToldApartByItsDynamicType) {
    io_error const library_counted = backend->detailed_error();
    io_error const self_counted = backend->self_counted_error();
    using counted = make_object_implementation<interfaces::io_error_diagnostics_impl>;
    EXPECT_NE(dynamic_cast<counted*>(library_counted.diagnostics().list()), nullptr);
    EXPECT_EQ(dynamic_cast<counted*>(self_counted.diagnostics().list()), nullptr);
}

class ExceptionAcross : public boundary::WithModule {};

TEST_F(ExceptionAcross, IsCaughtHereByItsClass) {
    try {
        backend->raise(make_io_error(io_errc::not_supported));
    } catch (io_exception const& exception) {
        EXPECT_EQ(exception.code(), 6);
        EXPECT_STREQ(exception.what(), "not supported");
        EXPECT_EQ(&exception.error().category(), &generic_io_error_category());
    }
}

TEST_F(ExceptionAcross, IsCaughtHereByItsBase) {
    EXPECT_THROW(backend->raise(io_errc::todo), std::runtime_error);
}

TEST_F(ExceptionAcross, CarriesCategoryAndDiagnosticsOfTheModule) {
    bool caught = false;
    try {
        backend->raise_own();
    } catch (io_exception const& exception) {
        caught = true;
        EXPECT_STREQ(exception.what(), "device refuses");
        EXPECT_EQ(&exception.error().category(), &backend->category());
        expect_device_code(exception.error(), 1200);
        EXPECT_EQ(backend->living_diagnostics(), 1);
    }
    EXPECT_TRUE(caught);
    EXPECT_EQ(backend->living_diagnostics(), 0);
}

TEST_F(ExceptionAcross, KeepsTheDiagnosticsOfTheHost) {
    test_support::watched_diagnostics const diagnostics;
    io_error error(io_errc::not_found);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    try {
        backend->raise(std::move(error));
    } catch (io_exception const& exception) {
        EXPECT_EQ(exception.error().diagnostics().list(), diagnostics.get());
    }
    EXPECT_EQ(diagnostics.others(), 0U);
}

TEST_F(ExceptionAcross, IsCaughtThereByItsClass) {
    EXPECT_EQ(backend->code_raised_by([] { throw io_exception(io_errc::no_result); }), 5);
    EXPECT_EQ(backend->code_raised_by([] {}), -1);
}

TEST_F(ExceptionAcross, LeavesNothingBehindWhenItsWordsCannotBeMade) {
    test_support::watched_diagnostics const diagnostics;
    io_error error(io_errc::not_found);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    {
        test_support::allocation_failure const failure(1);
        EXPECT_THROW(backend->raise(std::move(error)), std::bad_alloc);
    }
    EXPECT_EQ(diagnostics.others(), 0U);
}

} // namespace
