#pragma once

#include "api.hpp"
#include "browsing/node.hpp"
#include "detail/deep_ptr.hpp"
#include "plc_identifier.hpp"
#include "utility/array.hpp"
#include "utility/data_view.hpp"

namespace tavi::ioapi::v2 {

/// What a backend found on a controller: a list of nodes in the order in which it pushed them.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Nothing is
/// checked by index. Not synchronised.
///
/// Where memory is exhausted the result stays as it was, save in copy assignment, which then may
/// leave some of the nodes of each and one that is mixed. All that adds nodes raises
/// `std::bad_alloc`, and `std::length_error` beyond the most nodes that a standard vector can hold
/// (14913080 on 32-bit platforms) or 32 bits can count.
class TAVI_IOAPI_API browse_result {
public:
    class impl;
    using value_type = browsing::node;
    using iterator = browsing::node*;
    using const_iterator = browsing::node const*;

    /// No nodes.
    browse_result();
    /// `size` default nodes.
    explicit browse_result(unsigned int size);
    /// Copies of the nodes of a view.
    explicit browse_result(utility::data_view<browsing::node const> nodes);

    browse_result(browse_result const&);
    browse_result(browse_result&&) noexcept;
    /// Reuses the nodes held where their number suffices.
    browse_result& operator=(browse_result const&);
    browse_result& operator=(browse_result&&) noexcept;
    ~browse_result();

    /// The number of nodes.
    [[nodiscard]] unsigned int size() const noexcept;
    /// Whether there are no nodes.
    [[nodiscard]] bool empty() const { return begin() == end(); }

    /// Have room for at least `capacity` nodes from now on; never gives room back. Where it takes a
    /// new block, all pointers to nodes end.
    void reserve(unsigned int capacity);
    /// Append default nodes, or destroy those at the end.
    void resize(unsigned int size);
    /// Move a node to the end. The room doubles when it is used up.
    void push(browsing::node node);
    /// Destroy all nodes; the room stays.
    void clear() noexcept;

    /// All nodes, in order; pointers that end with `reserve`, the next change of size or
    /// assignment.
    [[nodiscard]] browsing::node* begin() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] browsing::node* end() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] browsing::node const* begin() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] browsing::node const* end() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] browsing::node const* cbegin() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] browsing::node const* cend() const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// The first node whose `identifier` equals this one, or null. Linear, no allocation. It ends
    /// as the pointers of `begin` do.
    [[nodiscard]] browsing::node const* get_node(plc_identifier const& identifier) const noexcept
        TAVI_IOAPI_LIFETIMEBOUND;
    /// The first node whose `browse_name` equals this one, or null; the same holds for it.
    [[nodiscard]] browsing::node const* get_node_by_browse_name(
        plc_identifier const& browse_name) const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// Copies of all nodes of a class, in order. \throws std::bad_alloc where no room can be had
    /// for them; where memory runs out while they are being copied there, the process ends
    [[nodiscard]] utility::array<browsing::node> get_nodes_by_class(
        browsing::node_class node_class) const;

    /// **Never gives a usable node**: the reference is to the address `index` times the size of a
    /// node, whatever the result holds. Use `begin()[index]`. Kept for modules that ask for it.
    [[nodiscard]] browsing::node& operator[](unsigned int index);
    [[nodiscard]] browsing::node const& operator[](unsigned int index) const;

private:
    detail::deep_ptr<impl> impl_;
};

static_assert(sizeof(browse_result) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2
