#include <tavi/ioapi/v2/io_value.hpp>

#include "footprint.hpp"
#include "subject.hpp"

#include <algorithm>
#include <exception>
#include <limits>
#include <thread>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
using faults = std::vector<std::string>;

constexpr int round_size = 10;
constexpr int rounds = 4;
constexpr int cycles = rounds * round_size;
constexpr std::size_t most_variables = 100;
constexpr auto any_number = std::numeric_limits<std::size_t>::max();

/// One connection from its beginning to its end, with subscriptions that end with it.
void live_once(subject const& about, std::vector<v2::plc_identifier> const& variables) {
    auto const backend = about.open();
    v2::browse_result nodes;
    (void)about.browse(*backend, {}, nodes);
    v2::read_result values(variables);
    (void)about.read(*backend, values);
    v2::subscription_result subscriptions;
    (void)about.subscribe(*backend, variables, subscriptions);
    v2::read_result changes;
    (void)about.poll(*backend, changes);
}

/// So many connections, one after the other, in a thread of their own: what the allocator keeps for
/// a thread it takes back at its end, and counts no longer.
void live_often(subject const& about,
                std::vector<v2::plc_identifier> const& variables,
                int how_often) {
    std::exception_ptr failure;
    std::thread([&] {
        try {
            for (int i = 0; i < how_often; ++i) live_once(about, variables);
        } catch (...) {
            failure = std::current_exception();
        }
    }).join();
    if (failure) std::rethrow_exception(failure);
}

/// \return whether there is no more than before
bool judge(subject const& about,
           std::string const& rule,
           std::size_t before,
           std::size_t after,
           std::string const& what) {
    faults found;
    if (after > before) {
        found.push_back(std::to_string(before) + ' ' + what + " have become " +
                        std::to_string(after) + " after " + std::to_string(cycles) +
                        " connections");
    }
    about.rules.judge(rule, found,
                      std::to_string(after) + ' ' + what + " after " + std::to_string(cycles) +
                          " connections");
    return found.empty();
}

/// What a process keeps without losing it, such as a cache, comes to its end, and so not with every
/// round. \param heap  before the first round and after each
void judge_memory(subject const& about, std::vector<std::size_t> const& heap) {
    std::size_t least = any_number;
    for (std::size_t i = 1; i < heap.size(); ++i) {
        least = std::min(least, heap[i] > heap[i - 1] ? heap[i] - heap[i - 1] : 0);
    }
    auto const connections = std::to_string(round_size) + " connections";
    faults found;
    if (least != 0) {
        found.push_back(std::to_string(least) + " bytes more, or even more, with every " +
                        connections);
    }
    about.rules.judge("memory_is_given_back", found, "not a byte more with every " + connections);
}

} // namespace

void judge_lifetime(subject const& about) {
    std::vector<v2::plc_identifier> variables;
    for (auto const& node : about.readable(most_variables)) variables.push_back(node.identifier);

    for (int i = 0; i < 2; ++i) live_often(about, variables, round_size);
    auto const structures = about.host.structure_count();
    auto const before = measured({any_number, any_number, any_number});
    std::vector<std::size_t> heap{before.heap};
    auto after = before;
    for (int done = 0; done < rounds; ++done) {
        live_often(about, variables, round_size);
        after = measured(before);
        heap.push_back(after.heap);
    }
    judge(about, "descriptors_are_given_back", before.descriptors, after.descriptors,
          "descriptors");
    bool const threads =
        judge(about, "threads_end_with_the_connection", before.threads, after.threads, "threads");
    bool const types = judge(about, "structures_do_not_pile_up", structures,
                             about.host.structure_count(), "structures");
    if (threads && types) {
        judge_memory(about, heap);
    } else {
        about.rules.skipped("memory_is_given_back", "threads and structures that stay hold some");
    }
}

void judge_manners(subject const& about) {
    auto const& seen = about.seen;
    about.rules.judge("errors_are_cleared_first", seen.uncleared(),
                      std::to_string(seen.calls()) + " calls");
    about.rules.judge("errors_explain_themselves", seen.unexplained(),
                      std::to_string(seen.errors()) + " errors, each with category and message");
    about.rules.judge("log_records_are_well_formed", seen.odd_records(),
                      std::to_string(seen.records()) + " records");
}

} // namespace iohost::conformance
