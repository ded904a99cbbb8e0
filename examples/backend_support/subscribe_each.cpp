#include "subscribe_each.hpp"

#include <unordered_set>
#include <utility>
#include <vector>

namespace backend_support {

namespace {

namespace v2 = tavi::ioapi::v2;

struct refusal {
    v2::plc_identifier variable;
    v2::io_error error;
};

void subscribe(v2::plc_identifier const& variable,
               v2::io_data_type const& type,
               subscription_list& subscriptions,
               v2::subscription_result& result) {
    auto id = subscriptions.add(variable);
    unsigned long long const number = id.number();
    try {
        result.set(variable, type, 0, std::move(id));
    } catch (...) {
        subscriptions.remove(v2::subscription_id::from_number(number));
        throw;
    }
}

v2::plc_identifier entry_of(v2::plc_identifier const& variable) {
    return v2::plc_identifier(variable.primary());
}

} // namespace

void subscribe_each(v2::utility::data_view<v2::plc_identifier const> variables,
                    std::function<subscribable(v2::plc_identifier const&)> const& look_up,
                    subscription_list& subscriptions,
                    v2::subscription_result& result) {
    std::unordered_set<v2::plc_identifier> entries_with_id;
    std::vector<refusal> refusals;
    for (auto const& variable : variables) {
        auto const found = look_up(variable);
        if (found.error) {
            refusals.push_back({variable, found.error});
        } else if (entries_with_id.insert(entry_of(variable)).second) {
            subscribe(variable, found.data_type, subscriptions, result);
        }
    }
    for (auto const& [variable, error] : refusals) {
        if (entries_with_id.contains(entry_of(variable))) continue;
        if (!variable.primary().is_none() || result.empty()) result.set(variable, error);
    }
}

} // namespace backend_support
