#include "request_plan.hpp"

#include <algorithm>
#include <tuple>

namespace modbus_backend {

namespace {

unsigned int end_of(variable const& described) {
    return described.address + described.type.width();
}

request request_for(wanted_variable const& wanted) {
    return {wanted.what->kind, wanted.what->address, wanted.what->type.width(), {wanted}};
}

/// \return whether there was room.
bool take_in(request& growing, wanted_variable const& wanted) {
    unsigned int const end = std::max(growing.first + growing.count, end_of(*wanted.what));
    if (wanted.what->kind != growing.kind) return false;
    if (end - growing.first > most_in_a_request(growing.kind)) return false;
    growing.count = end - growing.first;
    growing.members.push_back(wanted);
    return true;
}

request request_for(std::span<wanted_variable const> members) {
    request made = request_for(members.front());
    for (auto const& member : members.subspan(1)) take_in(made, member);
    return made;
}

/// The index of the first member of the second half.
std::size_t best_split(std::vector<wanted_variable> const& members) {
    std::size_t best = members.size() / 2;
    unsigned int widest = 0;
    unsigned int end = 0;
    for (std::size_t i = 1; i < members.size(); ++i) {
        end = std::max(end, end_of(*members[i - 1].what));
        unsigned int const address = members[i].what->address;
        if (address > end && address - end > widest) {
            widest = address - end;
            best = i;
        }
    }
    return best;
}

} // namespace

std::vector<request> plan_requests(std::vector<wanted_variable> wanted) {
    std::stable_sort(wanted.begin(), wanted.end(), [](auto const& left, auto const& right) {
        return std::tie(left.what->kind, left.what->address) <
               std::tie(right.what->kind, right.what->address);
    });
    std::vector<request> plan;
    for (auto const& next : wanted) {
        if (plan.empty() || !take_in(plan.back(), next)) plan.push_back(request_for(next));
    }
    return plan;
}

std::pair<request, request> split(request const& refused) {
    auto const members = std::span(refused.members);
    std::size_t const middle = best_split(refused.members);
    return {request_for(members.first(middle)), request_for(members.subspan(middle))};
}

} // namespace modbus_backend
