#include "watched.hpp"

#include <algorithm>

namespace iohost {

watched_variable* watch_state::find(tavi::ioapi::v2::plc_identifier const& identifier) {
    auto const found = std::find_if(variables.begin(), variables.end(), [&](auto const& variable) {
        return variable.identifier == identifier;
    });
    return found != variables.end() ? &*found : nullptr;
}

bool watch_state::well() const {
    return !last_poll_failed &&
           std::all_of(variables.begin(), variables.end(),
                       [](auto const& variable) { return !variable.last || variable.last->ok(); });
}

} // namespace iohost
