#pragma once

#include "../detail/data_model.hpp"
#include "../io_data_type.hpp"
#include "../plc_identifier.hpp"
#include "../utility/string.hpp"

#include <cstddef>
#include <type_traits>

namespace tavi::ioapi::v2::browsing {

/// What sort of node this is. Other numbers are legal by cast; the library only compares them.
enum class node_class : unsigned int {
    unspecified = 0, ///< not said
    folder = 1,      ///< holds other nodes
    variable = 2,    ///< can be read, written or subscribed to by its identifier
    type = 3         ///< describes a structure and has no value
};

/// One node of what there is on a controller, a plain record.
struct node {
    browsing::node_class node_class = browsing::node_class::unspecified; ///< the sort of the node
    plc_identifier identifier;                                           ///< the node's identity
    plc_identifier browse_name;  ///< the node's name for browsing, such as that in its folder
    utility::string description; ///< a text for people
    io_data_type data_type;      ///< all 0 where the node has none
};

static_assert(std::is_nothrow_move_constructible_v<node> && std::is_nothrow_destructible_v<node>,
              "containers move nodes when they grow");
static_assert(sizeof(node) == detail::by_data_model(144, 184));
static_assert(offsetof(node, node_class) == 0);
static_assert(offsetof(node, identifier) == 8);
static_assert(offsetof(node, browse_name) == detail::by_data_model(56, 72));
static_assert(offsetof(node, description) == detail::by_data_model(104, 136));
static_assert(offsetof(node, data_type) == detail::by_data_model(120, 160));

} // namespace tavi::ioapi::v2::browsing
