#include "watched.hpp"

#include <algorithm>
#include <utility>

namespace iohost {

namespace v2 = tavi::ioapi::v2;

void watch_state::add(v2::plc_identifier identifier) {
    if (!places_.emplace(identifier, variables.size()).second) return;
    variables.push_back({std::move(identifier), std::nullopt, 0, 0});
}

watched_variable* watch_state::find(v2::plc_identifier const& identifier) {
    auto const found = places_.find(identifier);
    return found != places_.end() ? &variables[found->second] : nullptr;
}

void watch_state::refuse(std::vector<v2::plc_identifier> const& identifiers) {
    for (auto const& identifier : identifiers) refused += places_.erase(identifier);
    std::erase_if(variables, [&](auto const& each) { return !places_.contains(each.identifier); });
    for (std::size_t i = 0; i < variables.size(); ++i) places_[variables[i].identifier] = i;
}

bool watch_state::well() const {
    return !last_poll_failed &&
           std::all_of(variables.begin(), variables.end(),
                       [](auto const& variable) { return !variable.last || variable.last->ok(); });
}

} // namespace iohost
