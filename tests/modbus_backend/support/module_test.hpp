#pragma once

#include <examples/support/opened_module.hpp>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace test_support {

/// An error without its diagnostics: `modbus:2 illegal data address`.
[[nodiscard]] inline std::string summary(example::v2::io_error error) {
    if (error.ok()) return "ok";
    error.diagnostics({});
    return describe(error);
}

/// A value that an error carries, or the empty one.
[[nodiscard]] inline example::v2::io_value detail_of(example::v2::io_error const& error,
                                                     char const* key) {
    return error.diagnostics().get(key);
}

/// What each entry of a result reports, without diagnostics.
template <class Result>
[[nodiscard]] std::vector<std::string> summaries(Result const& result) {
    std::vector<std::string> lines;
    for (auto const& entry : result) lines.push_back(summary(entry.error()));
    return lines;
}

/// A name, or a name and that of a member behind a slash.
[[nodiscard]] inline example::v2::plc_identifier identifier_of(std::string const& text) {
    auto const slash = text.find('/');
    if (slash == std::string::npos) return example::v2::plc_identifier(text);
    return example::v2::plc_identifier(text.substr(0, slash), text.substr(slash + 1));
}

[[nodiscard]] inline std::vector<example::v2::plc_identifier> identifiers_of(
    std::vector<std::string> const& names) {
    std::vector<example::v2::plc_identifier> identifiers;
    for (auto const& name : names) identifiers.push_back(identifier_of(name));
    return identifiers;
}

/// Uses the module as a host does. Whatever a test keeps of it ends before it is unloaded.
class module_test : public ::testing::Test {
protected:
    using texts = std::vector<std::string>;

    // Values may throw when they end; the fixture's base does not allow that.
    ~module_test() noexcept override = default;

    /// A configuration for a controller on this machine.
    static example::v2::config::store settings_for(int port,
                                                   std::string const& map,
                                                   unsigned int timeout_ms = 30'000) {
        example::v2::config::store values;
        values.set("map", map);
        values.set("host", "127.0.0.1");
        values.set("port", port);
        values.set("timeout_ms", timeout_ms);
        return values;
    }

    static example::v2::read_result read(example::backend& backend, texts const& names) {
        example::v2::read_result result(identifiers_of(names));
        example::v2::io_error error(example::v2::io_errc::todo); // must be cleared
        backend.read(result, error);
        EXPECT_EQ(error, example::v2::io_error());
        return result;
    }

    /// One value, which must be there.
    static example::v2::io_value read_value(example::backend& backend, std::string const& name) {
        auto const result = read(backend, {name});
        EXPECT_EQ(summary(result[0].error()), "ok") << name;
        EXPECT_TRUE(result[0].value().good()) << name;
        return result[0].value().value();
    }

    using assignment = std::pair<std::string, example::v2::io_value>;

    static example::v2::write_result write(example::backend& backend,
                                           std::vector<assignment> const& given) {
        texts names;
        std::vector<example::v2::io_value> values;
        for (auto const& [name, value] : given) {
            names.push_back(name);
            values.push_back(value);
        }
        example::v2::write_result result(identifiers_of(names));
        example::v2::io_error error(example::v2::io_errc::todo); // must be cleared
        backend.write(values, result, error);
        EXPECT_EQ(error, example::v2::io_error());
        return result;
    }

    /// What comes of one write, with its diagnostics.
    static example::v2::io_error write_one(example::backend& backend,
                                           std::string const& name,
                                           example::v2::io_value const& value) {
        auto const result = write(backend, {{name, value}});
        return result[0].error();
    }

    opened_module module{BACKEND_PATH};
};

} // namespace test_support
