#include "../entry_name.hpp"
#include "subject.hpp"

#include <algorithm>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::browsing::node_class;
using faults = std::vector<std::string>;

void judge_nodes(subject const& about) {
    faults found;
    for (auto const& [node, depth, repeated] : about.tree) {
        if (node.identifier.primary().is_none()) {
            found.push_back("a " + name_of(node.node_class) + " without an identifier");
        } else if (node.node_class == node_class::unspecified ||
                   node.node_class > node_class::type) {
            found.push_back(name_of(node.identifier) + " is of no known class");
        }
    }
    auto const cycles = std::count_if(about.tree.begin(), about.tree.end(),
                                      [](auto const& at) { return at.repeated; });
    std::string detail = std::to_string(about.tree.size()) + " nodes, " +
                         std::to_string(about.variables.size()) + " variables";
    if (cycles != 0) detail += ", " + std::to_string(cycles) + " folders stand more than once";
    about.rules.judge("browse_gives_sound_nodes", found, detail);
}

void judge_adding(subject const& about, example::backend& backend) {
    constexpr char const* rule = "browse_adds_to_the_result";
    v2::browsing::node before;
    before.identifier = unknown_variable();
    v2::browse_result result;
    result.push(before);
    faults found;
    if (auto const error = about.browse(backend, {}, result)) {
        found.push_back("browse: " + describe(error));
    } else if (result.empty() || result.begin()->identifier != before.identifier) {
        found.emplace_back("a node that the result had before is gone");
    }
    about.rules.judge(rule, found, "what was there stays");
}

void judge_other_folders(subject const& about, example::backend& backend) {
    std::vector<v2::plc_identifier> none{unknown_variable()};
    if (!about.variables.empty()) none.push_back(about.variables.front().identifier);
    faults found;
    for (auto const& identifier : none) {
        v2::browse_result result;
        auto const error = about.browse(backend, identifier, result);
        if (error != v2::io_error(v2::io_errc::not_found)) {
            found.push_back("'" + name_of(identifier) + "' is no folder, but gives " +
                            (error ? describe(error) : "no error") + " and not " +
                            describe(v2::io_errc::not_found));
        }
    }
    about.rules.judge("browse_refuses_what_is_no_folder", found,
                      std::to_string(none.size()) + " tried");
}

} // namespace

void judge_browsing(subject& about) {
    auto& backend = about.connection();
    about.tree = browse_tree(backend, {});
    about.variables = variables_in(about.tree);
    judge_nodes(about);
    judge_adding(about, backend);
    judge_other_folders(about, backend);
}

} // namespace iohost::conformance
