#include "loaded_module.hpp"
#include "module/own_host.hpp"

#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;

class ListAcross : public boundary::WithModule {};

TEST_F(ListAcross, OfNodesGrowsOnBothSides) {
    browse_result result;
    result.push({browsing::node_class::type, plc_identifier("mine"), {}, "from here", {}});
    backend->browse(result);
    ASSERT_EQ(result.size(), 4U);
    EXPECT_EQ(result.begin()[0].description, "from here");
    ASSERT_NE(result.get_node(plc_identifier("tank", 2)), nullptr);
    EXPECT_EQ(result.get_node(plc_identifier("tank", 2))->description, "how fast it runs");
    EXPECT_EQ(result.get_nodes_by_class(browsing::node_class::variable).size(), 2U);
    result.begin()[1].description = "changed here";
    result.resize(2);
    backend->browse(result);
    EXPECT_EQ(result.size(), 5U);
    EXPECT_EQ(browse_result(result).begin()[1].description, "changed here");
}

TEST_F(ListAcross, OfSubscriptionsReleasesTheObjectsOfTheModule) {
    std::vector<plc_identifier> identifiers;
    for (unsigned int i = 0; i < 9; ++i) identifiers.emplace_back(i);
    {
        subscription_result result;
        backend->subscribe(identifiers, result);
        EXPECT_EQ(std::distance(result.begin(), result.end()), 9);
        EXPECT_EQ(backend->living_objects(), 2);
        EXPECT_EQ(result[plc_identifier(1U)].id.number(), 1001U);
        EXPECT_EQ(result[plc_identifier(2U)].id.kind(), subscription_id_kind::address);
        EXPECT_EQ(result[plc_identifier(8U)].error.message(), "device refuses");
        EXPECT_EQ(result.remove(plc_identifier(3U)), 1U);
        EXPECT_EQ(backend->living_objects(), 1);
        subscription_result moved(std::move(result));
        EXPECT_EQ(moved[plc_identifier(7U)].id.object()->add_ref(), 2U);
        EXPECT_EQ(moved[plc_identifier(7U)].id.object()->release(), 1U);
    }
    EXPECT_EQ(backend->living_objects(), 0);
}

TEST_F(ListAcross, OfOptionsIsReadAndChangedByTheHost) {
    config::config_template form = backend->form();
    ASSERT_EQ(form.categories().size(), 1U);
    config::option* const interval = form.get_option("interval");
    ASSERT_NE(interval, nullptr);
    ASSERT_EQ(interval->options().size(), 2U);
    EXPECT_EQ(interval->options()[1].display_name, "fast");
    EXPECT_EQ(*interval->default_value().get_if<int>(), 60);
    interval->options({});
    EXPECT_TRUE(form.get_option("interval")->options().empty());
    EXPECT_TRUE(form.get_category("connection")
                    ->add_option({"port", "Port", "", io_data_type::basic_types::u16}));
}

TEST_F(ListAcross, OfIssuesFollowsTheValuesOfTheHost) {
    config::store values;
    config::verification_result result = backend->verify(values);
    EXPECT_EQ(std::distance(result.begin(), result.end()), 2);
    EXPECT_EQ(result.severity_for_option("host"),
              config::verification_result::severity_type::error);
    values.set("host", "station");
    values.set("interval", 5);
    result = backend->verify(values);
    EXPECT_TRUE(result.empty());
    result.add_issue({});
    EXPECT_FALSE(result.empty());
}

TEST_F(ListAcross, OfDiagnosticsIsFilledOnBothSides) {
    io_error error(backend->category(), 12);
    {
        io_error_diagnostics_generic diagnostics;
        diagnostics.set("address", 40001U);
        error.diagnostics(diagnostics);
        backend->annotate(diagnostics);
    }
    EXPECT_EQ(describe(error),
              "boundary:12 device refuses {address: (u32) 40001, seen: (boolean) true}");
}

class QueryAcross : public boundary::WithModule {};

TEST_F(QueryAcross, TakesTheModulesCallsToTheHost) {
    boundary::own_host host;
    io_error error;
    io_data_type const type = backend->ask(backend_query(host), error);
    EXPECT_EQ(type, io_data_type::object(1));
    ASSERT_EQ(host.structures.size(), 1U);
    EXPECT_TRUE(host.structures[0].second.has_member("level"));
    ASSERT_EQ(host.log.size(), 1U);
    EXPECT_EQ(host.log[0].first, log_severity_level::warning);
    EXPECT_EQ(host.log[0].second, "asking");
    EXPECT_EQ(error.code(), 1);
    EXPECT_EQ(*error.diagnostics().get("operation").get_if<utility::string>(), "lookup");
}

TEST_F(QueryAcross, TakesTheHostsCallsToAHostInTheModule) {
    backend_query query = backend->query();
    EXPECT_EQ(query.backend_version().patch_version, 3U);
    EXPECT_EQ(query.backend_version().label, "beta");
    EXPECT_EQ(query.project_directory(), "/project");
    io_error error = io_errc::todo;
    io_structure_type structure("pump", {{"speed", io_data_type::object(4)}});
    io_data_type const type =
        query.register_structure_type(plc_identifier("pump"), std::move(structure), error);
    EXPECT_TRUE(error.ok());
    EXPECT_EQ(query.lookup_structure_type(type, error).get_member("speed"),
              io_data_type::object(4));
    EXPECT_EQ(query.lookup_data_type(plc_identifier("pump"), error), type);
    query.replace_structure_type(type, io_structure_type("other"), error);
    EXPECT_EQ(query.lookup_structure_type(type, error).name(), "other");
    query.unregister_structure_type(type, error);
    static_cast<void>(query.lookup_structure_type(type, error));
    EXPECT_EQ(error.code(), 9);
    query.push_log_record(log_severity_level::fatal, "the end");
    query.clear_structure_types();
    error.reset();
}

TEST_F(QueryAcross, FindsTheSharedRecordForAbsentVariablesInAnInitialiser) {
    EXPECT_EQ(backend->early_absent_code(), 0);
}

} // namespace
