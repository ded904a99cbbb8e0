#include "support/module_test.hpp"

#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>

#include <iterator>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;
using test_support::summaries;

/// The simulated station, whose contents at tick 0 follow from its formulas.
class reading : public test_support::module_test {
protected:
    test_support::running_station const station_;
    test_support::opened_backend const opened_ =
        module.open(settings_for(station_.port(), STATION_MAP_PATH));
};

TEST_F(reading, gives_values_with_their_declared_types) {
    auto const result = read(*opened_, {"tank.volume", "tank.balance", "tank.level"});
    ASSERT_EQ(summaries(result), texts(3, "ok"));
    EXPECT_EQ(result[0].value().value().data_type(), v2::io_data_type::scalar(basic_types::u64));
    EXPECT_EQ(result[0].value().value().as<unsigned long long>(), 10'000'000'000'000'001U);
    EXPECT_EQ(result[1].value().value().data_type(), v2::io_data_type::scalar(basic_types::i64));
    EXPECT_EQ(result[1].value().value().as<long long>(), -9'000'000'000);
    EXPECT_EQ(result[2].value().value().as<float>(), 2.0F);
    EXPECT_TRUE(result[2].value().good());
    EXPECT_TRUE(result[2].value().timestamp().has_value());
}

TEST_F(reading, gives_structures_under_the_type_that_the_host_gave) {
    auto const result = read(*opened_, {"pump1.state", "pump2.state"});
    ASSERT_EQ(summaries(result), texts(2, "ok"));
    auto const& type = result[0].value().value().data_type();
    EXPECT_EQ(result[1].value().value().data_type(), type);
    v2::io_error error;
    auto const structure = opened_.host().lookup_structure_type(type, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(structure.name(), "pump_state");
    EXPECT_EQ(structure.get_member("runs"), v2::io_data_type::scalar(basic_types::u16));
    EXPECT_EQ(structure.get_member("speed"), v2::io_data_type::scalar(basic_types::flt));
    EXPECT_EQ(structure.get_member("starts"), v2::io_data_type::scalar(basic_types::u32));
    EXPECT_EQ(structure.get_member("currents"), v2::io_data_type::array_of(basic_types::u16));
    EXPECT_EQ(std::distance(structure.begin(), structure.end()), 4);
}

TEST_F(reading, gives_the_members_of_structures_and_the_elements_of_arrays) {
    auto const result = read(*opened_, {"pump1.state", "tank.profile", "pumps.run"});
    ASSERT_EQ(summaries(result), texts(3, "ok"));
    auto const* const pump = result[0].value().value().get_if<v2::io_object>();
    ASSERT_NE(pump, nullptr);
    EXPECT_EQ(pump->get("runs").as<int>(), 1);
    EXPECT_EQ(pump->get("speed").as<float>(), 1450.0F);
    EXPECT_EQ(pump->get("starts").as<int>(), 1000);
    EXPECT_EQ(pump->get("currents").as<std::vector<int>>(), (std::vector<int>{120, 122, 124}));
    EXPECT_EQ(result[1].value().value().as<std::vector<float>>(),
              (std::vector<float>{2, 1.875, 1.75, 1.625, 1.5, 1.375, 1.25, 1.125}));
    EXPECT_EQ(result[2].value().value().as<std::vector<bool>>(), (std::vector<bool>{true, false}));
}

TEST_F(reading, gives_single_members_by_the_secondary_part) {
    auto const result =
        read(*opened_, {"pump1.state/speed", "pump2.state/starts", "pump1.state/currents"});
    ASSERT_EQ(summaries(result), texts(3, "ok"));
    EXPECT_EQ(result[0].value().value().data_type(), v2::io_data_type::scalar(basic_types::flt));
    EXPECT_EQ(result[0].value().value().as<float>(), 1450.0F);
    EXPECT_EQ(result[1].value().value().as<int>(), 2000);
    EXPECT_EQ(result[2].value().value().as<std::vector<int>>(), (std::vector<int>{120, 122, 124}));
}

TEST_F(reading, tells_apart_what_is_in_no_map_and_what_the_controller_refuses) {
    auto const result = read(*opened_, {"tank.level", "tank2.level", "tank3.level"});
    EXPECT_EQ(summaries(result),
              texts({"ok", "modbus:2 illegal data address", "generic:1 not found"}));
    EXPECT_TRUE(result[1].value().empty());
    EXPECT_FALSE(result[1].value().timestamp().has_value());
    EXPECT_EQ(result[1].value().quality(), v2::io_data_value::value_quality());
    EXPECT_EQ(describe(result[1].error()),
              "modbus:2 illegal data address {address: (u32) 40, device_code: (i32) 2, "
              "function: (u32) 4, operation: (string) \"read input registers\", "
              "variable: (string) \"tank2.level\"}");
}

TEST_F(reading, other_identifiers_are_in_no_map) {
    v2::plc_identifier const strange[] = {v2::plc_identifier("tank.level", 1),
                                          v2::plc_identifier("tank.level", "speed"),
                                          v2::plc_identifier("pump1.state", "torque"),
                                          v2::plc_identifier("pump1.state", 1),
                                          v2::plc_identifier("#structures.pump_state"),
                                          v2::plc_identifier(1),
                                          v2::plc_identifier()};
    v2::read_result result(strange);
    v2::io_error error;
    opened_->read(result, error);
    EXPECT_EQ(summaries(result), texts(7, "generic:1 not found"));
    EXPECT_EQ(describe(result[2].error()),
              "generic:1 not found {operation: (string) \"read\", variable: (string) "
              "\"pump1.state/torque\"}");
    EXPECT_EQ(test_support::detail_of(result[5].error(), "variable"), v2::io_value("1"));
}

TEST_F(reading, what_is_in_no_map_is_named_by_every_operation) {
    auto const written = write_one(*opened_, "tank3.level", 1);
    EXPECT_EQ(describe(written), "generic:1 not found {operation: (string) \"write\", variable: "
                                 "(string) \"tank3.level\"}");
    EXPECT_EQ(test_support::detail_of(write_one(*opened_, "tank.level/x", 1), "variable"),
              v2::io_value("tank.level/x"));
    v2::subscription_result subscribed;
    v2::io_error error;
    opened_->subscribe(test_support::identifiers_of({"tank3.level"}), subscribed, error);
    ASSERT_FALSE(subscribed.empty());
    EXPECT_EQ(describe(subscribed.begin()->error),
              "generic:1 not found {operation: (string) \"subscribe\", variable: (string) "
              "\"tank3.level\"}");
}

TEST_F(reading, what_is_asked_for_twice_is_answered_twice) {
    auto const result = read(*opened_, {"tank.setpoint", "no", "tank.setpoint", "no"});
    EXPECT_EQ(summaries(result), texts({"ok", "generic:1 not found", "ok", "generic:1 not found"}));
    EXPECT_EQ(result[2].value().value().as<int>(), 1500);
}

TEST_F(reading, nothing_is_no_error) {
    EXPECT_TRUE(read(*opened_, {}).empty());
}

TEST_F(reading, several_backends_share_a_controller) {
    auto const second = module.open(settings_for(station_.port(), STATION_MAP_PATH));
    EXPECT_EQ(summaries(read(*opened_, {"tank.level"})), texts{"ok"});
    {
        auto const passing = module.open(settings_for(station_.port(), STATION_MAP_PATH));
        EXPECT_EQ(summaries(read(*passing, {"tank.level"})), texts{"ok"});
    }
    EXPECT_EQ(summaries(read(*second, {"tank.level"})), texts{"ok"});
    EXPECT_EQ(summaries(read(*opened_, {"tank.level"})), texts{"ok"});
}

TEST_F(reading, structured_values_outlive_the_backend) {
    auto passing = module.open(settings_for(station_.port(), STATION_MAP_PATH));
    auto const value = read_value(*passing, "pump1.state");
    passing.close();
    v2::io_error error;
    auto const known = passing.host().lookup_structure_type(value.data_type(), error);
    EXPECT_TRUE(known.has_member("speed"));
    EXPECT_EQ(value.get_if<v2::io_object>()->get("starts").as<int>(), 1000);
}

TEST_F(reading, the_orders_of_the_configuration_count_where_the_map_states_none) {
    test_support::temporary_file const map("silent input 2 flt\n"
                                           "stated input 0 flt word_order=big\n"
                                           "swapped input 5 u16\n");
    auto values = settings_for(station_.port(), map.path());
    values.set("word_order", "little");
    auto const words = module.open(values);
    EXPECT_EQ(read_value(*words, "silent").as<float>(), 12.5F);
    EXPECT_EQ(read_value(*words, "stated").as<float>(), 2.0F);
    values.set("byte_order", "little");
    auto const both = module.open(values);
    EXPECT_EQ(read_value(*both, "swapped").as<int>(), 300);
}

} // namespace
