#include <backend_support/name_tree.hpp>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using backend_support::leaf;
using backend_support::name_tree;
using v2::browsing::node_class;

auto const dbl_type = v2::io_data_type::scalar(v2::io_data_type::basic_types::dbl);

/// The nodes below a folder as `class identifier name`.
std::vector<std::string> below(name_tree const& tree, v2::plc_identifier const& folder) {
    v2::browse_result result;
    EXPECT_TRUE(tree.children(folder, result)) << folder;
    std::vector<std::string> listed;
    for (auto const& node : result) {
        std::string const kind = node.node_class == node_class::folder     ? "folder "
                                 : node.node_class == node_class::variable ? "variable "
                                                                           : "other ";
        listed.push_back(kind + node.identifier.primary().text().str() + ' ' +
                         node.browse_name.primary().text().str());
        EXPECT_TRUE(node.identifier.secondary().is_none());
        EXPECT_TRUE(node.browse_name.secondary().is_none());
    }
    return listed;
}

std::vector<std::string> below(name_tree const& tree, std::string const& folder) {
    return below(tree, v2::plc_identifier(folder));
}

using node_listing = std::vector<std::string>;
v2::plc_identifier const tree_top;

name_tree plant() {
    return name_tree({{"tank.level", "fill level in m", dbl_type},
                      {"alarm", "what is wrong"},
                      {"pump.motor.speed", "1/min", dbl_type},
                      {"tank.name", "as painted on it"},
                      {"pump.motor.current", "A", dbl_type}});
}

TEST(name_tree, the_top_has_the_first_parts_in_the_order_of_appearance) {
    EXPECT_EQ(below(plant(), tree_top),
              (node_listing{"folder tank tank", "variable alarm alarm", "folder pump pump"}));
}

TEST(name_tree, a_folder_has_what_stands_directly_below_it) {
    EXPECT_EQ(below(plant(), "tank"),
              (node_listing{"variable tank.level level", "variable tank.name name"}));
    EXPECT_EQ(below(plant(), "pump"), node_listing{"folder pump.motor motor"});
    EXPECT_EQ(below(plant(), "pump.motor"), (node_listing{"variable pump.motor.speed speed",
                                                          "variable pump.motor.current current"}));
}

TEST(name_tree, a_leaf_keeps_description_type_and_class) {
    name_tree const tree({{"a.b", "in m", dbl_type, node_class::type}});
    v2::browse_result result;
    ASSERT_TRUE(tree.children(v2::plc_identifier("a"), result));
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result.begin()->description, "in m");
    EXPECT_EQ(result.begin()->data_type, dbl_type);
    EXPECT_EQ(result.begin()->node_class, node_class::type);
}

TEST(name_tree, a_folder_has_neither_type_nor_description_of_its_own) {
    v2::browse_result result;
    ASSERT_TRUE(plant().children(tree_top, result));
    auto const* const tank = result.get_node(v2::plc_identifier("tank"));
    ASSERT_NE(tank, nullptr);
    EXPECT_TRUE(tank->description.empty());
    EXPECT_EQ(tank->data_type, v2::io_data_type());
}

TEST(name_tree, a_leaf_of_class_folder_describes_one) {
    for (bool const described_first : {true, false}) {
        std::vector<leaf> leaves{{"a.b.c", ""}};
        leaves.insert(described_first ? leaves.begin() : leaves.end(),
                      leaf{"a.b", "all about b", {}, node_class::folder});
        name_tree const tree(leaves);
        v2::browse_result result;
        ASSERT_TRUE(tree.children(v2::plc_identifier("a"), result));
        ASSERT_EQ(result.size(), 1U);
        EXPECT_EQ(result.begin()->description, "all about b");
        EXPECT_EQ(result.begin()->node_class, node_class::folder);
        EXPECT_EQ(below(tree, "a.b"), node_listing{"variable a.b.c c"});
    }
}

TEST(name_tree, a_described_folder_may_be_empty) {
    name_tree const tree({{"a", "nothing yet", {}, node_class::folder}});
    EXPECT_EQ(below(tree, tree_top), node_listing{"folder a a"});
    EXPECT_EQ(below(tree, "a"), node_listing());
}

TEST(name_tree, a_name_that_others_begin_with_has_a_node_of_each_kind) {
    name_tree const leaf_first({{"a", ""}, {"a.b", ""}});
    EXPECT_EQ(below(leaf_first, tree_top), (node_listing{"variable a a", "folder a a"}));
    EXPECT_EQ(below(leaf_first, "a"), node_listing{"variable a.b b"});
    name_tree const folder_first({{"a.b", ""}, {"a", ""}});
    EXPECT_EQ(below(folder_first, tree_top), (node_listing{"folder a a", "variable a a"}));
}

TEST(name_tree, one_name_begins_another_at_a_dot_only) {
    name_tree const tree({{"tank.level", ""}, {"tank2.level", ""}});
    EXPECT_EQ(below(tree, "tank"), node_listing{"variable tank.level level"});
    EXPECT_EQ(below(tree, tree_top), (node_listing{"folder tank tank", "folder tank2 tank2"}));
}

TEST(name_tree, empty_parts_are_parts) {
    name_tree const tree({{"a..b", ""}, {".c", ""}, {"", ""}});
    EXPECT_EQ(below(tree, tree_top), (node_listing{"folder a a", "folder  ", "variable  "}));
    EXPECT_EQ(below(tree, "a"), node_listing{"folder a. "});
    EXPECT_EQ(below(tree, "a."), node_listing{"variable a..b b"});
    EXPECT_EQ(below(tree, ""), node_listing{"variable .c c"});
}

TEST(name_tree, refuses_what_is_no_folder_and_adds_nothing) {
    auto const tree = plant();
    for (v2::plc_identifier const& other :
         {v2::plc_identifier("tank.level"), v2::plc_identifier("alarm"), v2::plc_identifier(""),
          v2::plc_identifier("tan"), v2::plc_identifier("tank."), v2::plc_identifier("Tank"),
          v2::plc_identifier("tank", "level"), v2::plc_identifier(4),
          v2::plc_identifier({}, "tank")}) {
        v2::browse_result result;
        EXPECT_FALSE(tree.children(other, result)) << other;
        EXPECT_TRUE(result.empty()) << other;
    }
}

TEST(name_tree, adds_to_what_the_result_holds) {
    auto const tree = plant();
    v2::browse_result result;
    ASSERT_TRUE(tree.children(tree_top, result));
    ASSERT_TRUE(tree.children(v2::plc_identifier("tank"), result));
    EXPECT_EQ(result.size(), 5U);
    EXPECT_EQ(result.begin()[3].identifier, v2::plc_identifier("tank.level"));
}

TEST(name_tree, without_leaves_has_an_empty_top) {
    EXPECT_EQ(below(name_tree(), tree_top), node_listing());
    EXPECT_EQ(below(name_tree(std::vector<leaf>()), tree_top), node_listing());
}

TEST(name_tree, finds_its_way_among_ten_thousand_leaves) {
    std::vector<leaf> leaves;
    for (int i = 0; i < 10'000; ++i) {
        leaves.push_back({"area" + std::to_string(i / 10) + ".v" + std::to_string(i), ""});
    }
    auto const start = std::chrono::steady_clock::now();
    name_tree const tree(leaves);
    for (int area = 0; area < 1000; ++area) {
        EXPECT_EQ(below(tree, "area" + std::to_string(area)).size(), 10U);
    }
    EXPECT_EQ(below(tree, tree_top).size(), 1000U);
    // A search through all leaves for each folder would take many times as long.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

} // namespace
