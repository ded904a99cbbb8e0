#include "name_tree.hpp"

#include <utility>

namespace backend_support {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::browsing::node_class;

std::string_view last_part(std::string_view name) {
    return name.substr(name.rfind('.') + 1); // the whole name where there is no dot
}

v2::browsing::node node_of(leaf const& described) {
    return {described.node_class, v2::plc_identifier(described.name),
            v2::plc_identifier(last_part(described.name)), described.description,
            described.data_type};
}

} // namespace

name_tree::name_tree(std::vector<leaf> const& leaves) {
    for (auto const& leaf : leaves) {
        if (leaf.node_class == node_class::folder) {
            describe_folder(leaf);
        } else {
            folder_of(leaf.name).push_back(node_of(leaf));
        }
    }
}

name_tree::node_list& name_tree::folder_of(std::string_view name) {
    auto const dot = name.rfind('.');
    return dot == std::string_view::npos ? top_ : make_folder(name.substr(0, dot));
}

name_tree::node_list& name_tree::make_folder(std::string_view name) {
    auto const known = folders_.find(name);
    if (known != folders_.end()) return known->second;
    folder_of(name).push_back(node_of({std::string(name), {}, {}, node_class::folder}));
    return folders_[std::string(name)];
}

void name_tree::describe_folder(leaf const& described) {
    make_folder(described.name);
    for (auto& sibling : folder_of(described.name)) {
        bool const is_folder = sibling.node_class == node_class::folder;
        if (is_folder && sibling.identifier.primary().text() == described.name) {
            sibling.description = described.description;
        }
    }
}

name_tree::node_list const* name_tree::find(v2::plc_identifier const& folder) const {
    if (folder == v2::plc_identifier()) return &top_;
    bool const is_name = folder.primary().kind() == v2::plc_identifier_kind::text;
    if (!is_name || !folder.secondary().is_none()) return nullptr;
    auto const found = folders_.find(static_cast<std::string_view>(folder.primary().text()));
    return found == folders_.end() ? nullptr : &found->second;
}

bool name_tree::children(v2::plc_identifier const& folder, v2::browse_result& result) const {
    node_list const* const nodes = find(folder);
    if (nodes == nullptr) return false;
    result.reserve(result.size() + static_cast<unsigned int>(nodes->size()));
    for (auto const& child : *nodes) result.push(child);
    return true;
}

} // namespace backend_support
