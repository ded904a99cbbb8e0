#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include "examples/support/opened_module.hpp"
#include "made_up_machine.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace linux_test {

namespace v2 = tavi::ioapi::v2;

/// The module as a host loads it. It stays until the tests end, and so may their errors.
[[nodiscard]] inline test_support::opened_module const& linux_module_file() {
    static test_support::opened_module const loaded(LINUX_BACKEND_PATH);
    return loaded;
}

/// An entry as it was read.
[[nodiscard]] inline v2::read_result::result_type read_entry(example::backend& backend,
                                                             v2::plc_identifier const& variable) {
    v2::read_result result(std::vector{variable});
    v2::io_error error = v2::io_errc::todo;
    backend.read(result, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(result.size(), 1U);
    return result[0];
}

/// A made-up machine, and a backend that looks at it.
class opened_machine {
public:
    [[nodiscard]] made_up_machine const& files() const noexcept { return files_; }
    [[nodiscard]] example::backend& backend() const noexcept { return *opened_; }
    [[nodiscard]] test_support::opened_backend& opened() noexcept { return opened_; }
    [[nodiscard]] test_support::recording_host& host() const noexcept { return opened_.host(); }

    [[nodiscard]] v2::read_result::result_type read(v2::plc_identifier const& variable) const {
        return read_entry(backend(), variable);
    }
    [[nodiscard]] v2::read_result::result_type read(std::string const& variable) const {
        return read(v2::plc_identifier(variable));
    }
    /// The value, where there is one.
    [[nodiscard]] v2::io_value value(v2::plc_identifier const& variable) const {
        auto const entry = read(variable);
        EXPECT_TRUE(entry.ok()) << variable << ' ' << entry.error();
        return entry.value().value();
    }
    [[nodiscard]] v2::io_value value(std::string const& variable) const {
        return value(v2::plc_identifier(variable));
    }
    [[nodiscard]] v2::io_value member(char const* variable, char const* name) const {
        return value(v2::plc_identifier(variable, name));
    }

private:
    made_up_machine files_;
    test_support::opened_backend opened_ = linux_module_file().open(files_.options());
};

/// Expect an error of the backend's own, by its number and with what it tells.
inline void expect_linux_error(v2::io_error const& error,
                               int code,
                               std::string const& operation,
                               std::string const& variable) {
    EXPECT_STREQ(error.category().name(), "linux") << error;
    EXPECT_EQ(error.code(), code) << error;
    EXPECT_EQ(error.diagnostics().get("operation").as<std::string>(), operation) << error;
    EXPECT_EQ(error.diagnostics().get("variable").as<std::string>(), variable) << error;
}

/// The same, of a file below the folders of the made-up machine.
inline void expect_file_error(opened_machine const& machine,
                              std::string const& variable,
                              int code,
                              std::string const& file) {
    auto const entry = machine.read(variable);
    expect_linux_error(entry.error(), code, "read", variable);
    EXPECT_EQ(entry.error().diagnostics().get("file").as<std::string>(),
              machine.files().path(file));
    EXPECT_TRUE(entry.value().empty());
}

} // namespace linux_test
