#pragma once

#include <tavi/ioapi/v2/subscription_result.hpp>

#include <vector>

namespace results_test {

/// The identifiers that the entries show, in order.
[[nodiscard]] inline std::vector<tavi::ioapi::v2::plc_identifier> identifiers_in(
    tavi::ioapi::v2::subscription_result const& result) {
    std::vector<tavi::ioapi::v2::plc_identifier> found;
    auto const last = result.end();
    for (auto at = result.begin(); at != last; ++at) found.push_back(at->identifier);
    return found;
}

} // namespace results_test
