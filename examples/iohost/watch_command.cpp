#include "commands.hpp"
#include "entry_name.hpp"
#include "failures.hpp"
#include "log_printer.hpp"
#include "polling.hpp"
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
#include <optional>
#include <utility>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using clock = stop_signal::clock;

watch_state variables_named(std::vector<std::string> const& names) {
    watch_state state;
    for (auto const& name : names) state.add(identifier_named(name));
    return state;
}

std::unique_ptr<watch_view> view_for(options const& chosen,
                                     v2::io_structure_dictionary& structures) {
    if (chosen.json) return json_view(structures);
    return is_terminal(STDOUT_FILENO) ? table_view(structures) : line_view();
}

/// A line for each reason, for there may be thousands of variables; what only one of them says is
/// not left out.
std::vector<std::string> grouped(std::vector<subscriptions::refused> const& refused) {
    struct reason {
        v2::io_error error;
        std::string first;
        std::size_t count = 0;
    };
    std::vector<reason> reasons;
    for (auto const& [variable, error] : refused) {
        auto known = std::find_if(reasons.begin(), reasons.end(),
                                  [&e = error](reason const& each) { return each.error == e; });
        if (known == reasons.end()) {
            known = reasons.insert(known, reason{error, name_of(variable)});
        }
        ++known->count;
    }
    std::vector<std::string> lines;
    for (auto const& [error, first, count] : reasons) {
        auto line = "cannot watch " + first;
        if (count > 1) line += " and " + std::to_string(count - 1) + " more";
        lines.push_back(line + ": " + describe(error));
    }
    return lines;
}

class watching {
public:
    watching(options const& chosen,
             session& opened,
             stop_signal& stop,
             watch_state state,
             watch_view& view)
        : chosen_(chosen), opened_(opened), stop_(stop), state_(std::move(state)), view_(view) {
        stop_.speak([this](char const* call) { end_in_midst_of(call); });
    }
    watching(watching const&) = delete;
    watching& operator=(watching const&) = delete;
    ~watching() { stop_.speak({}); }

    exit_status run() {
        auto& backend = stop_.outside(
            "open", [&]() -> auto& { return opened_.connection(); });
        {
            subscriptions subscribed(backend);
            subscribe(subscribed);
            begin_ = clock::now();
            poll_until_end(backend);
            end(subscribed);
        }
        summarise();
        stop_.outside("release", [&] { opened_.disconnect(); });
        return well_ && state_.well() ? all_well : operation_failed;
    }

private:
    void complain(std::string const& problem) {
        well_ = false;
        std::cerr << "iohost: " + printable(problem) + '\n' << std::flush;
        view_.disturb();
    }

    /// Where nobody gets the changes, the complaint of the end says so alone.
    void summarise() {
        if (std::exchange(is_summarised_, true) || !std::cout) return;
        auto const span = begin_ ? clock::now() - *begin_ : clock::duration::zero();
        view_.summarise(state_, span);
    }

    void end_in_midst_of(char const* call) {
        summarise();
        complain(
            std::string("ended without waiting for the backend, which has not come back from ") +
            call);
        std::cout << std::flush;
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

    void subscribe(subscriptions& subscribed) {
        std::vector<v2::plc_identifier> variables;
        variables.reserve(state_.variables.size());
        for (auto const& variable : state_.variables) variables.push_back(variable.identifier);
        auto const refused = stop_.outside("subscribe", [&] { return subscribed.add(variables); });
        for (auto const& problem : grouped(refused)) complain(problem);
        std::vector<v2::plc_identifier> unwatched;
        for (auto const& [variable, error] : refused) {
            if (chosen_.json) show_refused(variable, error);
            unwatched.push_back(variable);
        }
        state_.refuse(unwatched);
    }

    void poll(example::backend& backend) {
        v2::read_result changes;
        v2::io_error error;
        stop_.outside("poll", [&] { backend.poll(changes, error); });
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

    void poll_until_end(example::backend& backend) {
        if (state_.variables.empty()) return;
        auto const interval = std::chrono::milliseconds(std::max(backend.poll_interval(), 1U));
        poll_regularly(stop_, {*begin_, end_of(*begin_), interval}, [&] {
            poll(backend);
            if (chosen_.polls && state_.polls >= *chosen_.polls) return false;
            return std::cout && !has_lost_its_reader(STDOUT_FILENO);
        });
    }

    void end(subscriptions& subscribed) {
        auto const problems = stop_.outside("unsubscribe", [&] { return subscribed.end(); });
        for (auto const& problem : problems) complain(problem);
    }

    [[nodiscard]] clock::time_point end_of(clock::time_point begin) const {
        if (!chosen_.seconds) return clock::time_point::max();
        auto const span = std::chrono::duration<double>(*chosen_.seconds);
        return begin + std::chrono::duration_cast<clock::duration>(span);
    }

    options const& chosen_;
    session& opened_;
    stop_signal& stop_;
    watch_state state_;
    watch_view& view_;
    std::optional<clock::time_point> begin_;
    bool is_summarised_ = false;
    bool well_ = true;
};

/// Passes the records on, as long as there is a view that they disturb.
class record_taking {
public:
    record_taking(host_services& host, bool verbose, watch_view& view)
        : host_(host), verbose_(verbose) {
        // A record that comes while the table stands shifts it.
        host_.take_records_by([print = log_printer(verbose), &view](host_services::level level,
                                                                    std::string_view text) {
            print(level, text);
            view.disturb();
        });
    }
    record_taking(record_taking const&) = delete;
    record_taking& operator=(record_taking const&) = delete;
    ~record_taking() { host_.take_records_by(log_printer(verbose_)); }

private:
    host_services& host_;
    bool verbose_;
};

} // namespace

exit_status watch_command(options const& chosen) {
    auto state = variables_named(chosen.names);
    stop_signal stop(operation_failed);
    session opened(chosen);
    auto const view = view_for(chosen, opened.structures());
    record_taking const taking(opened.host(), chosen.verbose, *view);
    return watching(chosen, opened, stop, std::move(state), *view).run();
}

} // namespace iohost
