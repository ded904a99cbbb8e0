#include "refusal_log.hpp"

#include "function_code.hpp"

#include <string>
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

void refusal_log::refused(request const& asked, tavi::ioapi::v2::io_error const& reason) {
    bool is_news = false;
    for (auto const& member : asked.members) {
        is_news = std::exchange(known_[member.what], reason.code()) != reason.code() || is_news;
    }
    if (!is_news) return;
    log_.write(tavi::ioapi::v2::log_severity_level::warning, "the controller refuses to ",
               name_of(read_function(asked.kind)), " ", range_of(asked), " (", names_of(asked),
               "): ", reason.message().str());
}

void refusal_log::answered(request const& asked) {
    for (auto const& member : asked.members) known_.erase(member.what);
}

} // namespace modbus_backend
