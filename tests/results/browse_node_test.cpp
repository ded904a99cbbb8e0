#include <tavi/ioapi/v2/browsing/node.hpp>

#include "support/allocations.hpp"
#include "support/object_bytes.hpp"
#include "support/raw_text.hpp"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

using namespace tavi::ioapi::v2;
using browsing::node;
using id = plc_identifier;
using test_support::by_word;
using test_support::offset_of;

io_data_type const pump_type = io_data_type::object(7);

node full_node() {
    return {browsing::node_class::folder, id("level", "unit"), id("Level", 2), "of the tank",
            pump_type};
}

void expect_full(node const& full) {
    EXPECT_EQ(full.node_class, browsing::node_class::folder);
    EXPECT_EQ(full.identifier, id("level", "unit"));
    EXPECT_EQ(full.browse_name, id("Level", 2));
    EXPECT_EQ(full.description, "of the tank");
    EXPECT_EQ(full.data_type, pump_type);
}

TEST(BrowseNode, IsBlankByDefault) {
    node const blank;
    EXPECT_EQ(static_cast<unsigned int>(blank.node_class), 0U);
    for (auto const* identifier : {&blank.identifier, &blank.browse_name}) {
        EXPECT_TRUE(identifier->primary().is_none());
        EXPECT_TRUE(identifier->secondary().is_none());
    }
    EXPECT_TRUE(blank.description.empty());
    EXPECT_EQ(blank.data_type.basic_type, io_data_type::basic_types::empty);
    EXPECT_EQ(blank.data_type.structure_id, 0U);
    EXPECT_EQ(blank.data_type.array_kind, 0U);
    EXPECT_EQ(blank.data_type.array_extent, 0U);
}

TEST(BrowseNode, StandsAsClassIdentifierNameDescriptionType) {
    node const any;
    EXPECT_EQ(offset_of(any, any.node_class), 0U);
    EXPECT_EQ(offset_of(any, any.identifier), 8U);
    EXPECT_EQ(offset_of(any, any.browse_name), by_word(56, 72));
    EXPECT_EQ(offset_of(any, any.description), by_word(104, 136));
    EXPECT_EQ(offset_of(any, any.data_type), by_word(120, 160));
    static_assert(sizeof(node) == by_word(144, 184));
    static_assert(std::is_aggregate_v<node>);
}

TEST(BrowseNodeClass, IsA32BitNumberOfWhichAnyIsLegal) {
    static_assert(sizeof(browsing::node_class) == 4);
    static_assert(static_cast<unsigned int>(browsing::node_class::unspecified) == 0);
    static_assert(static_cast<unsigned int>(browsing::node_class::folder) == 1);
    static_assert(static_cast<unsigned int>(browsing::node_class::variable) == 2);
    static_assert(static_cast<unsigned int>(browsing::node_class::type) == 3);
    node any;
    any.node_class = browsing::node_class{0xFFFFFFFFU};
    node const copy(any);
    EXPECT_EQ(static_cast<unsigned int>(copy.node_class), 0xFFFFFFFFU);
}

TEST(BrowseNode, IsCopiedDeep) {
    node const source = full_node();
    node const copy(source);
    expect_full(copy);
    expect_full(source);
    EXPECT_NE(copy.description.data(), source.description.data());
    EXPECT_NE(copy.identifier.primary().text().data(), source.identifier.primary().text().data());
    EXPECT_NE(copy.browse_name.primary().text().data(), source.browse_name.primary().text().data());
}

TEST(BrowseNode, GivesUpItsTextsWhenMoved) {
    node source = full_node();
    char const* const text = source.description.data();
    test_support::allocation_counter const counter;
    node const target(std::move(source));
    EXPECT_EQ(counter.allocations(), 0U);
    expect_full(target);
    EXPECT_EQ(target.description.data(), text);
    EXPECT_EQ(source.identifier, id());
    EXPECT_EQ(source.browse_name, id());
    EXPECT_EQ(source.description.size(), 0U);
    EXPECT_EQ(test_support::block_of(source.description), nullptr);
    EXPECT_EQ(source.node_class, browsing::node_class::folder) << "copied";
    EXPECT_EQ(source.data_type, pump_type) << "copied";
}

TEST(BrowseNode, ReusesTheBlockOfADescriptionOfTheSameLength) {
    node source = full_node();
    node target;
    target.description = "in the shed";
    char const* const block = target.description.data();
    target = source;
    expect_full(target);
    EXPECT_EQ(target.description.data(), block);
    source.description = "longer than that";
    target = source;
    EXPECT_EQ(target.description, "longer than that");
}

TEST(BrowseNode, LosesEverythingOldWhereAnotherIsAssigned) {
    auto const before = test_support::live_blocks();
    {
        node target = full_node();
        target = node();
        EXPECT_EQ(target.identifier, id());
        EXPECT_EQ(target.data_type, io_data_type());
        EXPECT_EQ(test_support::live_blocks(), before);
        target = full_node();
        expect_full(target);
    }
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(BrowseNode, LeavesNothingBehindWhereAFieldCannotBeCopied) {
    node const source = full_node();
    EXPECT_EQ(test_support::count_survived_failures([&] { node const copy(source); }), 4)
        << "three texts of identifiers and the description";
}

} // namespace
