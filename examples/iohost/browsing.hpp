#pragma once

#include <backend_module.hpp>

#include <string>
#include <vector>

namespace iohost {

/// A node at its place in the tree below a folder.
struct tree_node {
    tavi::ioapi::v2::browsing::node node;
    unsigned int depth = 0; ///< 0 directly below the folder
    /// A folder that stands elsewhere in the tree, too: what is below stands there alone.
    bool repeated = false;
};

/// \return all that stands below a folder, each folder in front of its own nodes. A folder is
/// browsed once, so that one that leads back to itself does no harm.
/// \param folder  a default identifier for the top
/// \throws operation_failure  with what the backend says, and for a tree of more than 100 levels
[[nodiscard]] std::vector<tree_node> browse_tree(example::backend& backend,
                                                 tavi::ioapi::v2::plc_identifier const& folder);

/// \return the variables in a tree, in its order, each once.
[[nodiscard]] std::vector<tavi::ioapi::v2::browsing::node> variables_in(
    std::vector<tree_node> const& tree);

/// `folder`, `variable`, `type`, `unspecified`, or `class 9`.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::browsing::node_class node_class);

} // namespace iohost
