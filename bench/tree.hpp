#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

/// \file
/// A nested value as plain data: what is printed, and what the peers' values are built from.

namespace bench {

struct tree_node {
    using list = std::vector<tree_node>;
    using object = std::vector<std::pair<std::string, tree_node>>;

    std::variant<bool, int, long long, double, std::string, list, object> content;
};

/// The number of members in all objects of `print_tree`.
inline constexpr int print_tree_members = 10'000;

namespace detail {

inline tree_node member_of(int number, int member) {
    switch (member) {
    case 0:
    case 1:
    case 2: return {number * 37 + member};
    case 3: return {number * 1000003LL};
    case 4:
    case 5:
    case 6: return {number * 0.25 + member * 0.125};
    case 7:
    case 8: return {"text of " + std::to_string(1000 + number)};
    default: return {number % 2 != 0};
    }
}

inline tree_node tree_below(int level, int& number) {
    if (level < 3) {
        tree_node::list list;
        for (int i = 0; i < 10; ++i) list.push_back(tree_below(level + 1, number));
        return {std::move(list)};
    }
    tree_node::object members;
    for (int i = 0; i < 10; ++i) {
        members.emplace_back("member_0" + std::to_string(i), member_of(number, i));
    }
    ++number;
    return {std::move(members)};
}

} // namespace detail

/// An array of arrays of arrays, ten of each, of objects with ten members of five kinds.
inline tree_node const& print_tree() {
    static tree_node const tree = [] {
        int number = 0;
        return detail::tree_below(0, number);
    }();
    return tree;
}

} // namespace bench
