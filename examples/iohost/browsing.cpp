#include "browsing.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "entry_name.hpp"
#include "failures.hpp"
#include "progress.hpp"

#include <unordered_set>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::browsing::node_class;

constexpr unsigned int deepest = 100;

class walk {
public:
    explicit walk(example::backend& backend) : backend_(backend) {}

    void into(v2::plc_identifier const& folder, unsigned int depth) {
        if (depth > deepest) throw operation_failure("browse", too_deep(folder));
        browsed_.insert(folder);
        v2::browse_result found;
        v2::io_error error;
        backend_.browse(folder, found, error);
        if (error) throw operation_failure::of_browse(given_name(folder), error);
        for (auto& node : found) add(std::move(node), depth);
        progress_.show(nodes_.size());
    }

    std::vector<tree_node> take() { return std::move(nodes_); }

private:
    static std::string given_name(v2::plc_identifier const& folder) {
        return folder == v2::plc_identifier() ? std::string() : given_name_of(folder);
    }

    static v2::io_error too_deep(v2::plc_identifier const& folder) {
        v2::io_error_diagnostics_generic details;
        details.set(v2::diagnostics_key::operation, "look below more than 100 folders");
        details.set("folder", iohost::name_of(folder));
        v2::io_error error(v2::io_errc::not_supported);
        error.diagnostics(details);
        return error;
    }

    void add(v2::browsing::node node, unsigned int depth) {
        bool const is_folder = node.node_class == node_class::folder;
        bool const repeated = is_folder && browsed_.count(node.identifier) != 0;
        nodes_.push_back({std::move(node), depth, repeated});
        // A copy, since the list grows below.
        if (is_folder && !repeated)
            into(v2::plc_identifier(nodes_.back().node.identifier), depth + 1);
    }

    example::backend& backend_;
    std::vector<tree_node> nodes_;
    std::unordered_set<v2::plc_identifier> browsed_;
    progress progress_{"nodes found"};
};

} // namespace

std::vector<tree_node> browse_tree(example::backend& backend, v2::plc_identifier const& folder) {
    walk all(backend);
    all.into(folder, 0);
    return all.take();
}

std::vector<v2::browsing::node> variables_in(std::vector<tree_node> const& tree) {
    std::vector<v2::browsing::node> variables;
    std::unordered_set<v2::plc_identifier> known;
    for (auto const& [node, depth, repeated] : tree) {
        bool const is_variable = node.node_class == node_class::variable;
        if (is_variable && known.insert(node.identifier).second) variables.push_back(node);
    }
    return variables;
}

std::string name_of(node_class node_class) {
    switch (node_class) {
    case v2::browsing::node_class::unspecified: return "unspecified";
    case v2::browsing::node_class::folder: return "folder";
    case v2::browsing::node_class::variable: return "variable";
    case v2::browsing::node_class::type: return "type";
    }
    return "class " + std::to_string(static_cast<unsigned int>(node_class));
}

} // namespace iohost
