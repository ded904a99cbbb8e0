#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_error;
using v2::io_error_diagnostics;
using v2::io_error_diagnostics_generic;
using v2::io_exception;
using v2::io_value;

/// Of as many entries as there is room for.
io_error_diagnostics_generic two_entries() {
    io_error_diagnostics_generic list;
    list.set(long_text, long_text);
    list.set(v2::diagnostics_key::index, 4);
    return list;
}

io_error full_error() {
    io_error error(v2::io_errc::incompatible_type);
    error.diagnostics(two_entries());
    return error;
}

} // namespace

std::vector<operation> error_operations() {
    std::vector<operation> rows;
    row_adder const row{rows};

    rows.push_back(creation_of("DiagnosticsOfAnError",
                               {"io_error_diagnostics_generic::io_error_diagnostics_generic"},
                               two_entries));
    row("ADiagnosticThatIsAdded", promise::unchanged, {"io_error_diagnostics_generic::set"},
        two_entries,
        [](io_error_diagnostics_generic& list) { list.set(other_text, io_value(other_text)); });
    row("ADiagnosticThatIsReplaced", promise::unchanged, {"io_error_diagnostics_generic::set"},
        two_entries,
        [](io_error_diagnostics_generic& list) { list.set(long_text, io_value(other_text)); });
    row("ADiagnosticThatIsCopiedOut", promise::unchanged, {"io_error_diagnostics::get"},
        two_entries, [](io_error_diagnostics_generic const& list) { return list.get(long_text); });
    row("AWalkThroughDiagnostics", promise::unchanged,
        {"io_error_diagnostics::begin", "io_error_diagnostics::end"}, two_entries,
        [](io_error_diagnostics_generic const& list) {
            unsigned int length = 0;
            for (auto at = list.begin(); at != list.end(); at++) length += (*at).key.size();
            return std::pair(length, list.contains(long_text));
        });
    row("WhatDiagnosticsSay", promise::quiet,
        {"io_error_diagnostics::has", "io_error_diagnostics::size",
         "io_error_diagnostics_generic::remove"},
        two_entries, [](io_error_diagnostics_generic& list) {
            io_error_diagnostics const shared = list;
            list.remove("not there");
            list.remove(long_text);
            return std::pair(shared.has(long_text), shared.size());
        });
    row("WhatAnErrorSays", promise::quiet,
        {"make_io_error", "generic_io_error_category", "io_error_generic_category::name"},
        full_error, [](io_error& error) {
            io_error const shared = error;
            error = v2::make_io_error(v2::io_errc::not_found);
            return std::pair(shared == error,
                             std::string_view(v2::generic_io_error_category().name()).size());
        });
    row("TheMessageOfAnError", promise::unchanged, {"io_error_generic_category::message"},
        full_error, [](io_error const& error) { return error.message(); });
    row("AnErrorAsALine", promise::unchanged, {}, full_error,
        [](io_error const& error) { return v2::describe(error); });
    row("AnExceptionOfAnError", promise::unchanged, {"io_exception::io_exception"}, full_error,
        [](io_error const& error) {
            io_exception const made(error);
            io_exception const copy(made);
            return copy.error();
        });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Errors,
                         MemoryRunsOut,
                         ::testing::ValuesIn(error_operations()),
                         name_of_row());

} // namespace allocation_failure_test
