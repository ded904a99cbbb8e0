#include "verdict.hpp"

#include "printable.hpp"

#include <algorithm>
#include <utility>

namespace iohost {

namespace {

using verification = tavi::ioapi::v2::config::verification_result;
using severity_type = verification::severity_type;

} // namespace

bool has_error(verification const& verdict) {
    return std::any_of(verdict.begin(), verdict.end(),
                       [](auto const& issue) { return issue.severity >= severity_type::error; });
}

std::string name_of(severity_type severity) {
    switch (severity) {
    case severity_type::none: return "none";
    case severity_type::information: return "information";
    case severity_type::warning: return "warning";
    case severity_type::error: return "error";
    }
    return "severity " + std::to_string(static_cast<int>(severity));
}

std::string keys_of(verification::issue_type const& issue) {
    std::string keys;
    for (auto const& key : issue.options) keys += (keys.empty() ? "" : ", ") + printable(key);
    return keys.empty() ? "-" : keys;
}

json to_json(verification const& verdict) {
    json issues = json::array();
    for (auto const& issue : verdict) {
        json keys = json::array();
        for (auto const& key : issue.options) keys.push_back(key.str());
        issues.push_back({{"severity", name_of(issue.severity)},
                          {"options", std::move(keys)},
                          {"message", issue.message.str()}});
    }
    return {{"valid", !has_error(verdict)}, {"issues", std::move(issues)}};
}

} // namespace iohost
