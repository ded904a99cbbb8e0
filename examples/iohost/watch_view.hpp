#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "watched.hpp"

#include <chrono>
#include <memory>

namespace iohost {

/// How changes are shown while they come.
class watch_view {
public:
    watch_view() = default;
    watch_view(watch_view const&) = delete;
    watch_view& operator=(watch_view const&) = delete;
    virtual ~watch_view() = default;

    /// One change, which the state has already.
    virtual void show(watched_variable const& changed) = 0;
    /// All changes of a poll are shown.
    virtual void finish_poll(watch_state const& state) = 0;
    /// Something else was written where the view is; from any thread.
    virtual void disturb() {}
    /// It is over.
    virtual void summarise(watch_state const& state, std::chrono::duration<double> span) = 0;
};

/// One line for each change: time, name, and value or error. The summary goes to standard error.
[[nodiscard]] std::unique_ptr<watch_view> line_view();

/// The same as one JSON object a line, the summary too.
[[nodiscard]] std::unique_ptr<watch_view> json_view(
    tavi::ioapi::v2::io_structure_dictionary& structures);

/// A table that is drawn over in place, cut to the size of the terminal.
[[nodiscard]] std::unique_ptr<watch_view> table_view(
    tavi::ioapi::v2::io_structure_dictionary& structures);

} // namespace iohost
