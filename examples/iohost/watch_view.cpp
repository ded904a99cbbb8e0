#include "watch_view.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include "columns.hpp"
#include "entry_name.hpp"
#include "iso_time.hpp"
#include "json_entry.hpp"
#include "one_line.hpp"
#include "printable.hpp"
#include "quality.hpp"
#include "terminal.hpp"
#include "type_names.hpp"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <iostream>
#include <string>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using duration = std::chrono::duration<double>;

std::string seconds_of(duration span) {
    char text[32];
    (void)std::snprintf(text, sizeof(text), "%.1f", span.count());
    return text;
}

/// When a change was: as the backend says, or now.
std::string time_of(v2::read_result::result_type const& entry) {
    auto const stated = entry.value().timestamp();
    return iso_time(entry.ok() && stated.has_value() ? stated : v2::io_timestamp::now());
}

void print_summary(std::ostream& out, watch_state const& state, duration span) {
    out << "watched for " << seconds_of(span) << " s: " << state.polls << " polls, "
        << state.failed_polls << " of them failed";
    if (state.refused != 0) out << ", " << state.refused << " variables refused";
    out << '\n';
    columns table({"identifier", "changes", "errors"});
    for (auto const& variable : state.variables) {
        table.add({name_of(variable.identifier), std::to_string(variable.changes),
                   std::to_string(variable.errors)});
    }
    out << table << std::flush;
}

class lines final : public watch_view {
public:
    void show(watched_variable const& changed) override {
        auto const& entry = *changed.last;
        std::cout << time_of(entry) << "  " << name_of(entry.identifier()) << "  ";
        if (!entry.ok()) {
            std::cout << "error: " << printable(describe(entry.error()));
        } else {
            std::cout << one_line(entry.value().value());
            if (!entry.value().good()) std::cout << "  (" << quality_of(entry.value()) << ')';
        }
        std::cout << '\n';
    }
    void finish_poll(watch_state const&) override { std::cout << std::flush; }
    void summarise(watch_state const& state, duration span) override {
        print_summary(std::cerr, state, span);
    }
};

class json_lines final : public watch_view {
public:
    explicit json_lines(v2::io_structure_dictionary& structures) : structures_(structures) {}

    void show(watched_variable const& changed) override {
        auto line = to_json(*changed.last, structures_);
        line["time"] = time_of(*changed.last);
        std::cout << line_of(line) << '\n';
    }
    void finish_poll(watch_state const&) override { std::cout << std::flush; }
    void summarise(watch_state const& state, duration span) override {
        json variables = json::array();
        for (auto const& variable : state.variables) {
            variables.push_back({{"name", given_name_of(variable.identifier)},
                                 {"changes", variable.changes},
                                 {"errors", variable.errors}});
        }
        json const summary = {{"seconds", span.count()},
                              {"polls", state.polls},
                              {"failed_polls", state.failed_polls},
                              {"refused", state.refused},
                              {"variables", std::move(variables)}};
        std::cout << line_of({{"summary", summary}}) << '\n' << std::flush;
    }

private:
    v2::io_structure_dictionary& structures_;
};

class drawn_table final : public watch_view {
public:
    explicit drawn_table(v2::io_structure_dictionary& structures) : structures_(structures) {}

    void show(watched_variable const&) override { changed_ = true; }
    void disturb() override { disturbed_ = true; }

    void finish_poll(watch_state const& state) override {
        if (disturbed_.exchange(false)) drawn_lines_ = 0;
        if (!changed_ && drawn_lines_ != 0) return;
        changed_ = false;
        draw(lines_of(state), size_of_terminal(STDOUT_FILENO));
    }

    void summarise(watch_state const& state, duration span) override {
        print_summary(std::cout, state, span);
    }

private:
    [[nodiscard]] std::vector<std::string> row_of(watched_variable const& variable) {
        auto const name = name_of(variable.identifier);
        auto const changes = std::to_string(variable.changes);
        if (!variable.last) return {name, "-", "-", "-", "-", changes, "-"};
        auto const& entry = *variable.last;
        if (!entry.ok()) {
            return {name, "-", "-", "-", "-", changes, printable(describe(entry.error()))};
        }
        auto const& data = entry.value();
        return {name,
                printable(name_of(data.value().data_type(), structures_)),
                one_line(data.value()),
                iso_time(data.timestamp()),
                quality_of(data),
                changes,
                "-"};
    }

    [[nodiscard]] std::vector<std::string> lines_of(watch_state const& state) {
        columns table({"identifier", "type", "value", "time", "quality", "changes", "error"});
        for (auto const& variable : state.variables) table.add(row_of(variable));
        return table.lines();
    }

    void draw(std::vector<std::string> lines, terminal_size size) {
        // What has left the screen above cannot be drawn over.
        if (lines.size() >= size.rows && size.rows > 2) {
            auto const hidden = lines.size() - (size.rows - 2);
            lines.resize(size.rows - 2);
            lines.push_back("... and " + std::to_string(hidden) + " more");
        }
        if (drawn_lines_ != 0) std::cout << "\x1b[" << drawn_lines_ << 'A';
        for (auto const& line : lines) {
            std::cout << clear_line << cut(line, size.columns) << '\n';
        }
        std::cout << std::flush;
        drawn_lines_ = lines.size();
    }

    v2::io_structure_dictionary& structures_;
    std::size_t drawn_lines_ = 0;
    bool changed_ = false;
    std::atomic<bool> disturbed_ = false;
};

} // namespace

std::unique_ptr<watch_view> line_view() {
    return std::make_unique<lines>();
}

std::unique_ptr<watch_view> json_view(v2::io_structure_dictionary& structures) {
    return std::make_unique<json_lines>(structures);
}

std::unique_ptr<watch_view> table_view(v2::io_structure_dictionary& structures) {
    return std::make_unique<drawn_table>(structures);
}

} // namespace iohost
