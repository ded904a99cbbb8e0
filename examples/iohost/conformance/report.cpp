#include "report.hpp"

#include "../printable.hpp"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <utility>

namespace iohost::conformance {

namespace {

constexpr int outcome_width = 9;
constexpr int rule_width = 36;

char const* word_for(report::outcome what) {
    switch (what) {
    case report::outcome::ok: return "ok";
    case report::outcome::failed: return "FAILED";
    case report::outcome::skipped: break;
    }
    return "skipped:";
}

char const* json_name_of(report::outcome what) {
    switch (what) {
    case report::outcome::ok: return "ok";
    case report::outcome::failed: return "failed";
    case report::outcome::skipped: break;
    }
    return "skipped";
}

} // namespace

void report::ok(std::string const& rule, std::string const& detail) {
    add({rule, outcome::ok, detail});
}

void report::failed(std::string const& rule, std::string const& detail) {
    add({rule, outcome::failed, detail});
}

void report::skipped(std::string const& rule, std::string const& why) {
    add({rule, outcome::skipped, why});
}

void report::judge(std::string const& rule,
                   std::vector<std::string> const& faults,
                   std::string const& detail) {
    if (faults.empty()) {
        ok(rule, detail);
    } else if (faults.size() == 1) {
        failed(rule, faults.front());
    } else {
        failed(rule, faults.front() + ", and " + std::to_string(faults.size() - 1) + " more");
    }
}

void report::add(line made) {
    if (shown_) {
        std::cout << std::left << std::setw(outcome_width) << word_for(made.what) << ' '
                  << std::setw(rule_width) << made.rule << ' ' << printable(made.detail) << '\n'
                  << std::flush;
    }
    lines_.push_back(std::move(made));
}

std::size_t report::count(outcome wanted) const {
    return static_cast<std::size_t>(std::count_if(
        lines_.begin(), lines_.end(), [&](auto const& each) { return each.what == wanted; }));
}

std::string report::summary() const {
    return std::to_string(lines_.size()) + " rules: " + std::to_string(count(outcome::ok)) +
           " ok, " + std::to_string(count(outcome::failed)) + " FAILED, " +
           std::to_string(count(outcome::skipped)) + " skipped";
}

json report::document() const {
    json rules = json::array();
    for (auto const& each : lines_) {
        rules.push_back(
            {{"rule", each.rule}, {"outcome", json_name_of(each.what)}, {"detail", each.detail}});
    }
    return {{"rules", std::move(rules)},
            {"ok", count(outcome::ok)},
            {"failed", count(outcome::failed)},
            {"skipped", count(outcome::skipped)}};
}

} // namespace iohost::conformance
