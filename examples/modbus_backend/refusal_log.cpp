#include "refusal_log.hpp"

#include <algorithm>
#include <utility>

namespace modbus_backend {

namespace {

std::string range_of(request const& asked) {
    std::string range = std::to_string(asked.first);
    if (asked.count > 1) range += " to " + std::to_string(asked.first + asked.count - 1);
    return range;
}

std::string names_of(request const& asked) {
    if (asked.members.size() == 1) return asked.members[0].what->name;
    return std::to_string(asked.members.size()) + " variables";
}

} // namespace

refusal_log::news& refusal_log::news_of(request const& asked,
                                        tavi::ioapi::v2::io_error const& reason) {
    auto const function = read_function(asked.kind);
    auto const known = std::find_if(untold_.begin(), untold_.end(), [&](news const& each) {
        return each.function == function && each.code == reason.code();
    });
    if (known != untold_.end()) return *known;
    return untold_.emplace_back(news{function, reason.code(), reason.message().str(),
                                     range_of(asked) + " (" + names_of(asked) + ")"});
}

void refusal_log::refused(request const& asked, tavi::ioapi::v2::io_error const& reason) {
    bool is_news = false;
    for (auto const& member : asked.members) {
        is_news = std::exchange(known_[member.what], reason.code()) != reason.code() || is_news;
    }
    if (!is_news) return;
    auto& noted = news_of(asked, reason);
    noted.variables += asked.members.size();
    ++noted.requests;
}

void refusal_log::answered(request const& asked) {
    for (auto const& member : asked.members) known_.erase(member.what);
}

void refusal_log::tell() {
    for (auto const& each : std::exchange(untold_, {})) {
        auto const what = each.requests == 1 ? each.where
                                             : "for " + std::to_string(each.variables) +
                                                   " variables, first " + each.where;
        log_.write(tavi::ioapi::v2::log_severity_level::warning, "the controller refuses to ",
                   name_of(each.function), " ", what, ": ", each.reason);
    }
}

} // namespace modbus_backend
