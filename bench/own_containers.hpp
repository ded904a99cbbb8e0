#pragma once

#include "identifiers.hpp"
#include "values.hpp"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// \file
/// What the library's results of browsing and subscribing are made of, beside the same standard
/// container used directly.

namespace bench {

using identifiers = std::vector<v2::plc_identifier>;

[[nodiscard]] inline identifiers make_identifiers(int count) {
    identifiers result;
    result.reserve(static_cast<std::size_t>(count));
    for (auto const& text : identifier_texts(count)) result.emplace_back(text);
    return result;
}

[[nodiscard]] inline v2::browsing::node make_node(v2::plc_identifier const& identifier) {
    v2::browsing::node node;
    node.node_class = v2::browsing::node_class::variable;
    node.identifier = identifier;
    node.browse_name = identifier;
    node.data_type = v2::io_data_type::scalar(v2::detail::types::dbl);
    return node;
}

// --- nodes

class iokern_nodes {
public:
    void push(v2::browsing::node node) { content_.push(std::move(node)); }
    [[nodiscard]] std::size_t size() const { return content_.size(); }
    [[nodiscard]] v2::browsing::node const& last() const { return *(content_.end() - 1); }

private:
    v2::browse_result content_;
};

class standard_nodes {
public:
    void push(v2::browsing::node node) { content_.push_back(std::move(node)); }
    [[nodiscard]] std::size_t size() const { return content_.size(); }
    [[nodiscard]] v2::browsing::node const& last() const { return content_.back(); }

private:
    std::vector<v2::browsing::node> content_;
};

// --- subscriptions

using subscription = v2::subscription_result::variable_result;

class iokern_subscriptions {
public:
    void set(v2::plc_identifier const& identifier, unsigned int number) {
        content_.set(identifier, v2::io_data_type::scalar(v2::detail::types::dbl), number,
                     v2::subscription_id::from_number(number));
    }
    [[nodiscard]] unsigned int get(v2::plc_identifier const& identifier) const {
        return content_.get(identifier).aux_value;
    }

private:
    v2::subscription_result content_;
};

class standard_subscriptions {
public:
    void set(v2::plc_identifier const& identifier, unsigned int number) {
        content_.insert_or_assign(
            identifier,
            subscription{identifier, v2::io_data_type::scalar(v2::detail::types::dbl),
                         v2::io_error(), number, v2::subscription_id::from_number(number)});
    }
    [[nodiscard]] unsigned int get(v2::plc_identifier const& identifier) const {
        auto const place = content_.find(identifier);
        return place != content_.end() ? place->second.aux_value : 0;
    }

private:
    std::map<v2::plc_identifier, subscription> content_;
};

} // namespace bench
