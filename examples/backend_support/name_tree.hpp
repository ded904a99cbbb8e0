#pragma once

#include <tavi/ioapi/v2/browse_result.hpp>
#include <tavi/ioapi/v2/browsing/node.hpp>
#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace backend_support {

/// One thing to be found by browsing.
struct leaf {
    std::string name;        ///< with a dot between its parts, such as `tank.level`
    std::string description; ///< a text for people
    tavi::ioapi::v2::io_data_type data_type{};
    /// One of class `folder` gives the folder of this name its description, and makes the folder
    /// if it has no content.
    tavi::ioapi::v2::browsing::node_class node_class =
        tavi::ioapi::v2::browsing::node_class::variable;
};

/// Folders made from dotted names: `tank.level` is the node `level` in the folder `tank`, which
/// stands at the top. The identifier of a leaf is its whole name, that of a folder the part before
/// the dot, each as a text in the primary part; `browse_name` is the last part alone.
///
/// A name that is a leaf and also the beginning of others has two nodes in one folder, with the
/// same identifier: a variable to read and a folder to go into. They are told apart by their class.
/// An empty part between two dots is a part like any other.
class name_tree {
public:
    name_tree() = default;
    /// \param leaves  each one a node; the nodes of a folder stand in the order in which they are
    ///     first named here
    explicit name_tree(std::vector<leaf> const& leaves);

    /// Append the nodes directly below a folder. \param folder  a default identifier for the top
    /// \return false, and nothing is added, for what is no folder of this tree
    /// \throws std::bad_alloc, std::length_error
    [[nodiscard]] bool children(tavi::ioapi::v2::plc_identifier const& folder,
                                tavi::ioapi::v2::browse_result& result) const;

private:
    using node = tavi::ioapi::v2::browsing::node;
    using node_list = std::vector<node>;

    struct text_hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>{}(text);
        }
    };

    [[nodiscard]] node_list const* find(tavi::ioapi::v2::plc_identifier const& folder) const;
    /// The nodes of the folder in which this name stands; makes it, and those above it.
    node_list& folder_of(std::string_view name);
    node_list& make_folder(std::string_view name);
    void describe_folder(leaf const& described);

    node_list top_;
    std::unordered_map<std::string, node_list, text_hash, std::equal_to<>> folders_;
};

} // namespace backend_support
