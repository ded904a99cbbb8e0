#include <linux_backend/endurance/file_days.hpp>
#include <modbus_backend/endurance/restarts.hpp>
#include <modbus_backend/endurance/simulated_days.hpp>

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <exception>
#include <iostream>
#include <optional>
#include <string>

/// \file
/// The long runs of the example backends, with figures of what came of them.

namespace {

using endurance::day_figures;
using endurance::file_figures;
using endurance::findings;
using endurance::growth;
using endurance::restart_figures;

constexpr char const* usage =
    "usage: endurance restarts|hours|files COUNT SEED, with a COUNT from 1 "
    "to 1000000 of restarts or hours, and any whole number as SEED\n";

template <class Number>
std::optional<Number> number_in(char const* text) {
    char const* const last = text + std::strlen(text);
    Number result = 0;
    auto const [end, error] = std::from_chars(text, last, result);
    if (error != std::errc() || end != last) return std::nullopt;
    return result;
}

void print(growth const& held) {
    std::cout << "  descriptors: " << held.first().descriptors << " when warm, "
              << held.last().descriptors << " at the end\n"
              << "  threads: " << held.first().threads << ", " << held.last().threads << '\n'
              << "  bytes on the heap: " << held.first().heap << ", " << held.last().heap
              << "; more at the end: " << held.bytes() << ", allowed: " << growth::most_heap
              << '\n';
}

/// \return whether nothing is wrong
bool print(findings const& wrong, growth const& held, std::chrono::duration<double> taken) {
    print(held);
    for (auto const& what : wrong.words()) std::cout << "  " << what << '\n';
    bool const grows = held.of_descriptors() || held.of_heap();
    std::cout << "  wrong: " << wrong.count() << ", taken: " << taken.count() << " s\n";
    return wrong.count() == 0 && !grows;
}

void print(restart_figures const& figures) {
    std::cout << "  controller ended and started again: " << figures.restarts
              << " times, of these killed: " << figures.killed << '\n'
              << "  writes told as success: " << figures.told << ", as failure: " << figures.failed
              << ", lost: " << figures.lost << '\n'
              << "  values read back: " << figures.read
              << ", delivered by subscription: " << figures.delivered << '\n';
}

void print(day_figures const& figures) {
    std::cout << "  simulated hours: " << figures.span / std::chrono::hours(1)
              << ", polls: " << figures.polls << ", requests heard: " << figures.requests
              << ", due: " << figures.requests_due << ", connections: " << figures.connections
              << ", due: " << figures.connections_due << '\n'
              << "  changes: " << figures.changes << ", values delivered: " << figures.delivered
              << ", too brief to be seen: " << figures.brief << ", missed: " << figures.missed
              << ", errors delivered: " << figures.faulty << '\n'
              << "  polls with faults:";
    for (std::size_t i = 1; i < endurance::fault_count; ++i) {
        std::cout << ' ' << endurance::fault_rules[i].name << ' ' << figures.met[i];
    }
    std::cout << '\n';
}

void print(file_figures const& figures) {
    std::cout << "  simulated hours: " << figures.span / std::chrono::hours(1)
              << ", polls: " << figures.polls << '\n'
              << "  changes: " << figures.changes << ", values delivered: " << figures.delivered
              << ", read beside that: " << figures.read
              << ", too brief to be seen: " << figures.brief << ", missed: " << figures.missed
              << ", errors delivered: " << figures.faulty << '\n'
              << "  mishaps:";
    for (std::size_t i = 1; i < endurance::mishap_count; ++i) {
        std::cout << ' ' << endurance::mishap_names[i] << ' ' << figures.met[i];
    }
    std::cout << '\n';
}

template <class Figures>
int report(Figures const& figures, std::chrono::steady_clock::time_point begin) {
    print(figures);
    bool const is_well =
        print(figures.wrong, figures.held, std::chrono::steady_clock::now() - begin);
    return is_well ? 0 : 1;
}

int run(std::string const& what, unsigned int count, std::uint64_t seed) {
    auto const begin = std::chrono::steady_clock::now();
    std::cout << "endurance: " << what << ' ' << count << ", seed " << seed << std::endl;
    if (what == "hours") {
        return report(endurance::watch_for(std::chrono::hours(count), seed), begin);
    }
    if (what == "files") {
        return report(endurance::watch_files_for(std::chrono::hours(count), seed), begin);
    }
    return report(endurance::restart(count, seed, BACKEND_PATH), begin);
}

} // namespace

int main(int argc, char** argv) {
    std::string const what = argc == 4 ? argv[1] : "";
    auto const count = argc == 4 ? number_in<unsigned int>(argv[2]) : std::nullopt;
    auto const seed = argc == 4 ? number_in<std::uint64_t>(argv[3]) : std::nullopt;
    bool const is_run = what == "restarts" || what == "hours" || what == "files";
    if (!is_run || !count || *count == 0 || *count > 1'000'000 || !seed) {
        std::cerr << usage;
        return 2;
    }
    try {
        return run(what, *count, *seed);
    } catch (std::exception const& error) {
        std::cerr << "endurance: " << error.what() << '\n';
        return 1;
    }
}
