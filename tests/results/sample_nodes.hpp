#pragma once

#include <tavi/ioapi/v2/browse_result.hpp>

#include <string>
#include <vector>

namespace results_test {

using tavi::ioapi::v2::browse_result;
using tavi::ioapi::v2::browsing::node;
using tavi::ioapi::v2::browsing::node_class;

/// A node that owns no memory.
[[nodiscard]] inline node numbered_node(unsigned int number,
                                        node_class kind = node_class::variable) {
    node made;
    made.node_class = kind;
    made.identifier = tavi::ioapi::v2::plc_identifier(number);
    return made;
}

/// A node that owns two blocks: the text of its identifier and its description.
[[nodiscard]] inline node texted_node(std::string const& name,
                                      node_class kind = node_class::variable) {
    node made;
    made.node_class = kind;
    made.identifier = tavi::ioapi::v2::plc_identifier(name);
    made.description = "what is known of " + name;
    return made;
}

[[nodiscard]] inline browse_result numbered_nodes(unsigned int count) {
    browse_result result;
    for (unsigned int i = 0; i < count; ++i) result.push(numbered_node(i));
    return result;
}

/// The primary numbers of the identifiers, in order.
[[nodiscard]] inline std::vector<unsigned long long> numbers_in(browse_result const& result) {
    std::vector<unsigned long long> numbers;
    for (node const& each : result) numbers.push_back(each.identifier.primary().number());
    return numbers;
}

/// The primary texts of the identifiers, in order.
[[nodiscard]] inline std::vector<std::string> names_in(browse_result const& result) {
    std::vector<std::string> names;
    for (node const& each : result) names.push_back(each.identifier.primary().text().str());
    return names;
}

} // namespace results_test
