#include "subscriptions.hpp"

#include "entry_name.hpp"
#include "failures.hpp"

#include <set>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using identifiers = std::vector<v2::plc_identifier>;

/// Take those out that one result can answer for: it has one entry for all identifiers that have
/// the same primary part.
identifiers take_round(identifiers& left) {
    identifiers round;
    identifiers later;
    std::set<v2::plc_identifier> entries; // whose order looks at the primary part alone
    for (auto& variable : left) {
        bool const fits = entries.insert(variable).second;
        (fits ? round : later).push_back(std::move(variable));
    }
    left = std::move(later);
    return round;
}

} // namespace

subscriptions::~subscriptions() {
    for (auto const& result : results_) {
        for (auto const& entry : result) {
            v2::io_error ignored;
            if (entry.ok()) backend_.unsubscribe(entry.id, ignored);
        }
    }
}

std::vector<subscriptions::refused> subscriptions::add(identifiers const& variables) {
    std::vector<refused> failed;
    identifiers left = variables;
    while (!left.empty()) {
        auto const round = take_round(left);
        auto& result = results_.emplace_back();
        v2::io_error error;
        backend_.subscribe(round, result, error);
        insist("subscribe", error);
        for (auto const& variable : round) {
            auto const& entry = result.get(variable);
            if (v2::subscription_result::is_not_found(entry)) {
                failed.emplace_back(variable, v2::io_errc::no_result);
            } else if (!entry.ok()) {
                failed.emplace_back(variable, entry.error);
            }
        }
    }
    return failed;
}

std::vector<std::string> subscriptions::end() {
    std::vector<std::string> problems;
    for (auto const& result : results_) {
        for (auto const& entry : result) {
            if (!entry.ok()) continue;
            v2::io_error error;
            backend_.unsubscribe(entry.id, error);
            if (error) {
                problems.push_back("unsubscribe " + name_of(entry.identifier) + ": " +
                                   describe(error));
            }
        }
    }
    results_.clear();
    return problems;
}

} // namespace iohost
