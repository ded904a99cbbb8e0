#pragma once

#include "variable.hpp"

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace modbus_backend {

/// A variable that is wanted, and where its answer goes.
struct wanted_variable {
    variable const* what;
    std::size_t where;
};

/// One request of the protocol: a range of one kind, and the variables that lie in it.
struct request {
    register_kind kind;
    unsigned int first;
    unsigned int count;
    std::vector<wanted_variable> members; ///< by ascending address, at least one
};

/// Cover what is wanted with as few requests as the protocol allows. What lies between two
/// variables is read along, since a round trip costs far more than a longer answer.
[[nodiscard]] std::vector<request> plan_requests(std::vector<wanted_variable> wanted);

/// Divide a request of two members or more that the controller has refused: at its widest gap,
/// which is the likeliest cause, or in the middle where it has none.
[[nodiscard]] std::pair<request, request> split(request const& refused);

} // namespace modbus_backend
