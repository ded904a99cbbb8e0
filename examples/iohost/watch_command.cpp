#include "commands.hpp"
#include "entry_name.hpp"
#include "failures.hpp"
#include "log_printer.hpp"
#include "printable.hpp"
#include "session.hpp"
#include "stop_signal.hpp"
#include "subscriptions.hpp"
#include "terminal.hpp"
#include "watch_view.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using clock = stop_signal::clock;

watch_state variables_named(std::vector<std::string> const& names) {
    watch_state state;
    for (auto const& name : names) {
        auto identifier = identifier_named(name);
        if (state.find(identifier) == nullptr) {
            state.variables.push_back({std::move(identifier), std::nullopt, 0, 0});
        }
    }
    return state;
}

std::unique_ptr<watch_view> view_for(options const& chosen,
                                     v2::io_structure_dictionary& structures) {
    if (chosen.json) return json_view(structures);
    return is_terminal(STDOUT_FILENO) ? table_view(structures) : line_view();
}

class watching {
public:
    watching(options const& chosen, example::backend& backend, watch_state state, watch_view& view)
        : chosen_(chosen),
          backend_(backend),
          subscribed_(backend),
          state_(std::move(state)),
          view_(view) {}

    exit_status run(stop_signal& stop) {
        subscribe();
        auto const begin = clock::now();
        poll_until_end(stop, begin);
        for (auto const& problem : subscribed_.end()) complain(problem);
        view_.summarise(state_, clock::now() - begin);
        return well_ && state_.well() ? all_well : operation_failed;
    }

private:
    void complain(std::string const& problem) {
        well_ = false;
        std::cerr << "iohost: " + printable(problem) + '\n' << std::flush;
        view_.disturb();
    }

    void note(v2::read_result::result_type const& entry) {
        auto* const variable = state_.find(entry.identifier());
        if (variable == nullptr) return;
        variable->last = entry;
        ++variable->changes;
        if (!entry.ok()) ++variable->errors;
        view_.show(*variable);
    }

    /// Who reads the objects alone is to know it, too.
    void show_refused(v2::plc_identifier const& variable, v2::io_error const& error) {
        watched_variable refused{variable, v2::read_result::result_type(variable), 0, 1};
        refused.last->set(error);
        view_.show(refused);
    }

    void subscribe() {
        std::vector<v2::plc_identifier> variables;
        variables.reserve(state_.variables.size());
        for (auto const& variable : state_.variables) variables.push_back(variable.identifier);
        for (auto const& each : subscribed_.add(variables)) {
            auto const& [variable, error] = each;
            complain("cannot watch " + name_of(variable) + ": " + describe(error));
            if (chosen_.json) show_refused(variable, error);
            std::erase_if(state_.variables,
                          [&](auto const& other) { return other.identifier == each.first; });
        }
    }

    void poll() {
        v2::read_result changes;
        v2::io_error error;
        backend_.poll(changes, error);
        ++state_.polls;
        state_.last_poll_failed = error.failed();
        if (error) {
            ++state_.failed_polls;
            std::cerr << "iohost: poll: " + printable(describe(error)) + '\n' << std::flush;
            view_.disturb();
        }
        for (auto const& entry : changes) note(entry);
        view_.finish_poll(state_);
    }

    void poll_until_end(stop_signal& stop, clock::time_point begin) {
        if (state_.variables.empty()) return;
        auto const interval = std::chrono::milliseconds(std::max(backend_.poll_interval(), 1U));
        auto const end = end_of(begin);
        auto next = begin;
        while (!stop.came_before(std::min(next, end)) && clock::now() < end) {
            poll();
            if (chosen_.polls && state_.polls >= *chosen_.polls) return;
            if (has_lost_its_reader(STDOUT_FILENO)) return;
            // What a slow poll has missed is not made up for.
            next = std::max(next + interval, clock::now());
        }
    }

    [[nodiscard]] clock::time_point end_of(clock::time_point begin) const {
        if (!chosen_.seconds) return clock::time_point::max();
        auto const span = std::chrono::duration<double>(*chosen_.seconds);
        return begin + std::chrono::duration_cast<clock::duration>(span);
    }

    options const& chosen_;
    example::backend& backend_;
    subscriptions subscribed_;
    watch_state state_;
    watch_view& view_;
    bool well_ = true;
};

} // namespace

exit_status watch_command(options const& chosen) {
    auto state = variables_named(chosen.names);
    stop_signal stop;
    session opened(chosen);
    auto& backend = opened.connection();
    auto const view = view_for(chosen, opened.structures());
    // A record that comes while the table stands shifts it.
    auto const print = log_printer(chosen.verbose);
    opened.host().take_records_by([&](host_services::level level, std::string_view text) {
        print(level, text);
        view->disturb();
    });
    watching all(chosen, backend, std::move(state), *view);
    auto const status = all.run(stop);
    opened.host().take_records_by(log_printer(chosen.verbose));
    return status;
}

} // namespace iohost
