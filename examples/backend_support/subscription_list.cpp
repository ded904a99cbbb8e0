#include "subscription_list.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include <utility>

namespace backend_support {

namespace v2 = tavi::ioapi::v2;

v2::subscription_id subscription_list::add(v2::plc_identifier const& variable) {
    unsigned long long const number = last_number_ + 1;
    auto const [place, is_new] = places_.try_emplace(variable, number);
    try {
        if (is_new) subscribed_.emplace(number, subscribed{variable});
        subscriptions_.emplace(number, place->second);
    } catch (...) {
        if (is_new) {
            subscribed_.erase(number);
            places_.erase(place);
        }
        throw;
    }
    auto& known = subscribed_.at(place->second);
    ++known.subscriptions;
    known.delivered.reset();
    last_number_ = number;
    return v2::subscription_id::from_number(number);
}

bool subscription_list::remove(v2::subscription_id const& id) {
    if (id.kind() != v2::subscription_id_kind::number) return false;
    auto const ended = subscriptions_.find(id.number());
    if (ended == subscriptions_.end()) return false;
    auto const known = subscribed_.find(ended->second);
    subscriptions_.erase(ended);
    if (--known->second.subscriptions == 0) {
        places_.erase(known->second.variable);
        subscribed_.erase(known);
    }
    return true;
}

std::vector<v2::plc_identifier> subscription_list::variables() const {
    std::vector<v2::plc_identifier> list;
    list.reserve(subscribed_.size());
    for (auto const& [number, known] : subscribed_) list.push_back(known.variable);
    return list;
}

subscription_list::subscribed* subscription_list::find(v2::plc_identifier const& variable) {
    auto const place = places_.find(variable);
    return place == places_.end() ? nullptr : &subscribed_.at(place->second);
}

bool subscription_list::is_change(subscribed const& known,
                                  v2::read_result::result_type const& fresh) {
    if (!known.delivered) return true;
    auto const& before = *known.delivered;
    return before.error != fresh.error() || before.value.quality() != fresh.value().quality() ||
           !identical(before.value.value(), fresh.value().value());
}

void subscription_list::changes(v2::read_result const& fresh, v2::read_result& changed) {
    struct change {
        subscribed* known;
        answer delivered;
    };
    std::vector<change> found;
    std::vector<v2::plc_identifier> variables;
    for (auto const& entry : fresh) {
        subscribed* const known = find(entry.identifier());
        if (known == nullptr || !is_change(*known, entry)) continue;
        found.push_back({known, {entry.value(), entry.error()}});
        variables.push_back(entry.identifier());
    }

    v2::read_result result(variables);
    for (unsigned int i = 0; i < result.size(); ++i) {
        if (found[i].delivered.error) {
            result.set(i, found[i].delivered.error);
        } else {
            result.set(i, found[i].delivered.value);
        }
    }

    // Nothing from here on can run out of memory.
    for (auto& change : found) change.known->delivered = std::move(change.delivered);
    changed = std::move(result);
}

} // namespace backend_support
