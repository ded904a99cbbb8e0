#include "browsing.hpp"
#include "columns.hpp"
#include "commands.hpp"
#include "entry_name.hpp"
#include "json_entry.hpp"
#include "printable.hpp"
#include "session.hpp"
#include "type_names.hpp"

#include <iostream>
#include <string>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

constexpr std::size_t indentation = 2;

std::string type_in(v2::browsing::node const& node, v2::io_structure_dictionary& structures) {
    if (node.data_type == v2::io_data_type()) return {};
    return name_of(node.data_type, structures);
}

std::string or_dash(std::string const& text) {
    return text.empty() ? "-" : printable(text);
}

v2::plc_identifier const& shown_name(v2::browsing::node const& node) {
    bool const has_own = !node.browse_name.primary().is_none();
    return has_own ? node.browse_name : node.identifier;
}

void print_tree(std::vector<tree_node> const& tree, v2::io_structure_dictionary& structures) {
    columns table({"name", "class", "type", "identifier", "description"});
    for (auto const& [node, depth, repeated] : tree) {
        auto const description = node.description.str() + (repeated ? " (shown elsewhere)" : "");
        table.add({std::string(depth * indentation, ' ') + name_of(shown_name(node)),
                   name_of(node.node_class), or_dash(type_in(node, structures)),
                   name_of(node.identifier), or_dash(description)});
    }
    std::cout << table;
}

json json_of(tree_node const& at, v2::io_structure_dictionary& structures) {
    auto const type = type_in(at.node, structures);
    json shown = {{"name", given_name_of(at.node.identifier)},
                  {"browse_name", given_name_of(shown_name(at.node))},
                  {"class", name_of(at.node.node_class)},
                  {"type", type.empty() ? json() : json(type)},
                  {"description", at.node.description.str()}};
    if (at.node.node_class == v2::browsing::node_class::folder) {
        if (at.repeated) {
            shown["repeated"] = true;
        } else {
            shown["nodes"] = json::array();
        }
    }
    return shown;
}

/// The nodes from `next` on that stand at `depth` or deeper.
json nodes_from(std::vector<tree_node> const& tree,
                std::size_t& next,
                unsigned int depth,
                v2::io_structure_dictionary& structures) {
    json nodes = json::array();
    while (next < tree.size() && tree[next].depth >= depth) {
        nodes.push_back(json_of(tree[next], structures));
        ++next;
        if (next < tree.size() && tree[next].depth > depth) {
            nodes.back()["nodes"] = nodes_from(tree, next, depth + 1, structures);
        }
    }
    return nodes;
}

} // namespace

exit_status browse_command(options const& chosen) {
    auto const folder =
        chosen.folder.empty() ? v2::plc_identifier() : identifier_named(chosen.folder);
    session opened(chosen);
    auto const tree = browse_tree(opened.connection(), folder);
    if (chosen.json) {
        std::size_t first = 0;
        print_document({{"nodes", nodes_from(tree, first, 0, opened.structures())}});
    } else {
        print_tree(tree, opened.structures());
    }
    return all_well;
}

} // namespace iohost
