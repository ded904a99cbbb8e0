#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "support/diagnostics.hpp"

#include <gtest/gtest.h>

namespace structures_test {

/// A category that no call under test reports in.
class stale_category final : public tavi::ioapi::v2::io_error_category {
public:
    char const* name() const noexcept override { return "stale"; }
    tavi::ioapi::v2::utility::string message(int) const override { return "stale"; }
};

/// Whether `call` leaves exactly this code of the generic category in an error that held another
/// code, of another category, with diagnostics, and drops these.
template <class Call>
[[nodiscard]] ::testing::AssertionResult reports(tavi::ioapi::v2::io_errc expected, Call call) {
    stale_category const category;
    test_support::watched_diagnostics const diagnostics;
    tavi::ioapi::v2::io_error error(category, 77);
    error.diagnostics(io_error_diagnostics(diagnostics.get()));
    call(error);
    if (&error.category() != &tavi::ioapi::v2::generic_io_error_category()) {
        return ::testing::AssertionFailure() << "of category " << error.category().name();
    }
    if (error.code() != static_cast<int>(expected)) {
        return ::testing::AssertionFailure() << "code " << error.code();
    }
    if (error.diagnostics().list() != nullptr || diagnostics.others() != 0) {
        return ::testing::AssertionFailure() << "the old diagnostics are still held";
    }
    return ::testing::AssertionSuccess();
}

/// Whether `call` clears the error.
template <class Call>
[[nodiscard]] ::testing::AssertionResult succeeds(Call call) {
    return reports(tavi::ioapi::v2::io_errc::success, call);
}

} // namespace structures_test
