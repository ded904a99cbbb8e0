#include "support/module_test.hpp"

#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>

#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using node_class = v2::browsing::node_class;
using basic_types = v2::io_data_type::basic_types;

/// A backend with a map of its own; nothing is read, so any controller will do.
class browse : public test_support::module_test {
protected:
    v2::browse_result nodes_in(v2::plc_identifier const& folder) const {
        v2::browse_result result;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        opened_->browse(folder, result, error);
        EXPECT_EQ(error, v2::io_error());
        return result;
    }

    [[nodiscard]] texts names_in(v2::plc_identifier const& folder) const {
        texts names;
        for (auto const& node : nodes_in(folder))
            names.push_back(node.identifier.primary().text().str());
        return names;
    }

    test_support::running_station const station_;
    test_support::temporary_file const map_{"structure pump # a pump\n  runs 0 u16\nend\n"
                                            "tank.level input 0 flt # m\n"
                                            "structures holding 1 u16\n"
                                            "pumps.first holding 20 pump # the older one\n"
                                            "pumps.on coil 0 boolean[2]\n"};
    test_support::opened_backend const opened_ =
        module.open(settings_for(station_.port(), map_.path()));
};

TEST_F(browse, the_top_has_folders_variables_and_the_structures) {
    auto const top = nodes_in({});
    EXPECT_EQ(names_in({}), texts({"tank", "structures", "pumps", "#structures"}));
    EXPECT_EQ(top.begin()[0].node_class, node_class::folder);
    EXPECT_EQ(top.begin()[1].node_class, node_class::variable);
    EXPECT_EQ(top.begin()[3].node_class, node_class::folder);
    EXPECT_FALSE(top.begin()[3].description.empty());
}

TEST_F(browse, variables_have_their_types_and_the_comments_of_their_lines) {
    auto const tank = nodes_in(v2::plc_identifier("tank"));
    ASSERT_EQ(tank.size(), 1U);
    auto const& level = *tank.begin();
    EXPECT_EQ(level.node_class, node_class::variable);
    EXPECT_EQ(level.identifier, v2::plc_identifier("tank.level"));
    EXPECT_EQ(level.browse_name, v2::plc_identifier("level"));
    EXPECT_EQ(level.description, "m");
    EXPECT_EQ(level.data_type, v2::io_data_type::scalar(basic_types::flt));
}

TEST_F(browse, structured_variables_name_the_type_that_the_host_gave) {
    v2::io_error error;
    auto const type = opened_.host().lookup_data_type(v2::plc_identifier("pump"), error);
    ASSERT_TRUE(error.ok());
    auto const pumps = nodes_in(v2::plc_identifier("pumps"));
    ASSERT_EQ(pumps.size(), 2U);
    EXPECT_EQ(pumps.begin()[0].data_type, type);
    EXPECT_EQ(pumps.begin()[0].description, "the older one");
    EXPECT_EQ(pumps.begin()[1].data_type, v2::io_data_type::array_of(basic_types::boolean));

    auto const structures = nodes_in(v2::plc_identifier("#structures"));
    ASSERT_EQ(structures.size(), 1U);
    EXPECT_EQ(structures.begin()->node_class, node_class::type);
    EXPECT_EQ(structures.begin()->identifier, v2::plc_identifier("#structures.pump"));
    EXPECT_EQ(structures.begin()->browse_name, v2::plc_identifier("pump"));
    EXPECT_EQ(structures.begin()->description, "a pump");
    EXPECT_EQ(structures.begin()->data_type, type);
}

TEST_F(browse, what_is_no_folder_is_not_found) {
    for (auto const& other : {v2::plc_identifier("tank.level"), v2::plc_identifier("structures"),
                              v2::plc_identifier("no"), v2::plc_identifier(1),
                              v2::plc_identifier("pumps.first", "runs")}) {
        v2::browse_result result;
        v2::io_error error;
        opened_->browse(other, result, error);
        EXPECT_EQ(error, v2::io_error(v2::io_errc::not_found));
        EXPECT_TRUE(result.empty());
    }
}

TEST_F(browse, nodes_are_added_to_those_that_are_there) {
    v2::browse_result result(2);
    v2::io_error error;
    opened_->browse(v2::plc_identifier("tank"), result, error);
    EXPECT_EQ(result.size(), 3U);
}

TEST_F(browse, what_is_found_can_be_read) {
    for (auto const& folder : {"tank", "pumps"}) {
        for (auto const& node : nodes_in(v2::plc_identifier(folder))) {
            auto const value = read_value(*opened_, node.identifier.primary().text().str());
            EXPECT_EQ(value.data_type(), node.data_type);
        }
    }
}

TEST_F(browse, without_structures_there_is_no_folder_for_them) {
    test_support::temporary_file const map("a holding 0 u16\n");
    auto const opened = module.open(settings_for(station_.port(), map.path()));
    v2::browse_result result;
    v2::io_error error;
    opened->browse({}, result, error);
    EXPECT_EQ(result.size(), 1U);
}

} // namespace
