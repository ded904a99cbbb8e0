#include "browse_tree.hpp"

#include "data_type.hpp"

#include <string>
#include <vector>

namespace modbus_backend {

using backend_support::leaf;
using tavi::ioapi::v2::browsing::node_class;

backend_support::name_tree browse_tree_of(variable_map const& map) {
    std::vector<leaf> leaves;
    for (auto const& described : map.variables()) {
        leaves.push_back({described.name, described.description, data_type_of(described.type)});
    }
    if (!map.structures().empty()) {
        leaves.push_back(
            {structure_folder, "Structures that variables are of", {}, node_class::folder});
    }
    for (auto const& described : map.structures()) {
        leaves.push_back({std::string(structure_folder) + "." + described->name,
                          described->description, described->blank->type(), node_class::type});
    }
    return backend_support::name_tree(leaves);
}

} // namespace modbus_backend
