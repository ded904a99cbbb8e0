#include <tavi/ioapi/v2/detail/narrow.hpp>

#include "browse_result_impl.hpp"
#include "foundation/growing_list.hpp"
#include "foundation/handle.hpp"
#include "foundation/range.hpp"
#include "foundation/unchecked.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace tavi::ioapi::v2 {

namespace {

using browsing::node;

TAVI_IOAPI_UNCHECKED node& node_at(node const* first, unsigned int index) {
    std::uintptr_t const volatile address =
        reinterpret_cast<std::uintptr_t>(first) + std::uintptr_t{index} * sizeof(node);
    // As an integer, since no pointer may be moved off null; there is nothing here to optimise.
    return *reinterpret_cast<node*>(address); // NOLINT(performance-no-int-to-ptr)
}

} // namespace

// --- the list

browse_result::impl::impl(std::vector<node> nodes) : nodes_(std::move(nodes)) {}

void browse_result::impl::resize(unsigned int size) {
    detail::resize(nodes_, size);
}

void browse_result::impl::reserve(unsigned int capacity) {
    detail::reserve(nodes_, capacity);
}

void browse_result::impl::push(node node) {
    detail::append(nodes_, std::move(node));
}

unsigned int browse_result::impl::size() const noexcept {
    return static_cast<unsigned int>(nodes_.size()); // the list is not let grow beyond it
}

void browse_result::impl::clear() noexcept {
    nodes_.clear();
}

node* browse_result::impl::data() noexcept {
    return nodes_.data();
}

node const* browse_result::impl::data() const noexcept {
    return nodes_.data();
}

TAVI_IOAPI_UNCHECKED node& browse_result::impl::operator[](unsigned int index) {
    return node_at(data(), index);
}

TAVI_IOAPI_UNCHECKED node const& browse_result::impl::operator[](unsigned int index) const {
    return node_at(data(), index);
}

// --- the handle

browse_result::browse_result() : impl_(std::in_place) {}

browse_result::browse_result(unsigned int size)
    : impl_(std::in_place, std::vector<node>(detail::checked_count<node>(size))) {}

browse_result::browse_result(utility::data_view<node const> nodes)
    : impl_(std::in_place, detail::list_of(nodes)) {}

TAVI_IOAPI_DEFINE_HANDLE(browse_result, browse_result);

unsigned int browse_result::size() const noexcept {
    return impl_->size();
}

void browse_result::reserve(unsigned int capacity) {
    impl_->reserve(capacity);
}

void browse_result::resize(unsigned int size) {
    impl_->resize(size);
}

void browse_result::push(node node) {
    impl_->push(std::move(node));
}

void browse_result::clear() noexcept {
    impl_->clear();
}

TAVI_IOAPI_DEFINE_RANGE(browse_result, node, impl_->data(), impl_->size());

namespace {

node const* first_with(browse_result const& nodes,
                       plc_identifier node::*field,
                       plc_identifier const& wanted) noexcept {
    auto const found = std::find_if(nodes.begin(), nodes.end(),
                                    [&](node const& each) { return each.*field == wanted; });
    return found != nodes.end() ? found : nullptr;
}

/// A failure in here ends the process: hosts were built for an answer that is whole or none.
void fill(utility::array<node>& slots, std::vector<node> const& nodes) noexcept {
    std::copy(nodes.begin(), nodes.end(), slots.begin());
}

} // namespace

node const* browse_result::get_node(plc_identifier const& identifier) const noexcept {
    return first_with(*this, &node::identifier, identifier);
}

node const* browse_result::get_node_by_browse_name(
    plc_identifier const& browse_name) const noexcept {
    return first_with(*this, &node::browse_name, browse_name);
}

utility::array<node> browse_result::get_nodes_by_class(browsing::node_class node_class) const {
    std::vector<node> found;
    found.reserve(size());
    std::copy_if(begin(), end(), std::back_inserter(found),
                 [&](node const& each) { return each.node_class == node_class; });
    utility::array<node> nodes(detail::narrow_count(found.size()));
    fill(nodes, found);
    return nodes;
}

// The index is applied to no list of this result, but to an empty one.

TAVI_IOAPI_UNCHECKED node& browse_result::operator[](unsigned int index) {
    impl none;
    return none[index];
}

TAVI_IOAPI_UNCHECKED node const& browse_result::operator[](unsigned int index) const {
    impl const none;
    return none[index];
}

} // namespace tavi::ioapi::v2
