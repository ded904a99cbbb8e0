#include <backend_support/subscribe_each.hpp>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using backend_support::subscribable;
using request_list = std::vector<v2::plc_identifier>;

auto const subscribed_type = v2::io_data_type::scalar(v2::io_data_type::basic_types::flt);
v2::plc_identifier const tank("tank");
v2::plc_identifier const pump("pump");
v2::plc_identifier const pump_speed("pump", "speed");
v2::plc_identifier const stranger("stranger");
v2::plc_identifier const nobody;

/// A backend that has a tank and a pump.
subscribable plant_look_up(v2::plc_identifier const& variable) {
    if (variable == tank || variable == pump) return {subscribed_type};
    if (variable == pump_speed) return {{}, v2::io_errc::not_supported};
    return {{}, v2::io_errc::not_found};
}

struct subscribing {
    backend_support::subscription_list list{};
    v2::subscription_result result{};

    void request(request_list const& variables) {
        backend_support::subscribe_each(variables, plant_look_up, list, result);
    }
};

TEST(subscribe_each, sets_type_and_id_of_what_there_is) {
    subscribing plant;
    plant.request({tank, pump});
    for (auto const& variable : {tank, pump}) {
        auto const& entry = plant.result.get(variable);
        EXPECT_TRUE(plant.result.has(variable));
        EXPECT_TRUE(entry.ok());
        EXPECT_EQ(entry.data_type, subscribed_type);
        EXPECT_TRUE(plant.list.remove(entry.id)) << variable;
    }
    EXPECT_TRUE(plant.list.empty());
}

TEST(subscribe_each, sets_the_error_of_what_there_is_not) {
    subscribing plant;
    plant.request({stranger, tank, v2::plc_identifier(7)});
    EXPECT_EQ(plant.result.get(stranger).error, v2::io_errc::not_found);
    EXPECT_EQ(plant.result.get(v2::plc_identifier(7)).error, v2::io_errc::not_found);
    EXPECT_EQ(plant.result.get(stranger).id.kind(), v2::subscription_id_kind::none);
    EXPECT_EQ(plant.list.variables(), request_list{tank});
}

TEST(subscribe_each, subscribes_once_to_what_one_request_repeats) {
    subscribing plant;
    plant.request({tank, tank});
    EXPECT_TRUE(plant.list.remove(plant.result.get(tank).id));
    EXPECT_TRUE(plant.list.empty());
}

TEST(subscribe_each, a_second_request_is_a_second_subscription) {
    subscribing first;
    first.request({tank});
    v2::subscription_result second;
    backend_support::subscribe_each(request_list{tank}, plant_look_up, first.list, second);
    EXPECT_NE(first.result.get(tank).id.number(), second.get(tank).id.number());
    EXPECT_TRUE(first.list.remove(first.result.get(tank).id));
    EXPECT_FALSE(first.list.empty());
}

TEST(subscribe_each, the_error_of_a_member_does_not_displace_an_id) {
    for (request_list const& request : {request_list{pump, pump_speed}, {pump_speed, pump}}) {
        subscribing plant;
        plant.request(request);
        EXPECT_TRUE(plant.result.get(pump).ok());
        EXPECT_TRUE(plant.list.remove(plant.result.get(pump).id));
    }
    subscribing alone;
    alone.request({pump_speed});
    EXPECT_EQ(alone.result.get(pump_speed).error, v2::io_errc::not_supported);
}

TEST(subscribe_each, an_identifier_without_a_primary_part_displaces_nothing) {
    for (request_list const& request : {request_list{nobody, tank}, {tank, nobody}}) {
        subscribing plant;
        plant.request(request);
        EXPECT_TRUE(plant.result.get(tank).ok());
        EXPECT_TRUE(plant.list.remove(plant.result.get(tank).id));
    }
    subscribing alone;
    alone.request({nobody});
    EXPECT_TRUE(alone.result.has(nobody));
    EXPECT_EQ(alone.result.get(nobody).error, v2::io_errc::not_found);
}

TEST(subscribe_each, of_no_variables_changes_nothing) {
    subscribing plant;
    plant.request({});
    EXPECT_TRUE(plant.result.empty());
    EXPECT_TRUE(plant.list.empty());
}

TEST(subscribe_each, leaves_a_true_result_where_it_is_interrupted) {
    subscribing plant;
    auto const failing = [](v2::plc_identifier const& variable) -> subscribable {
        if (variable == pump) throw std::runtime_error("unplugged");
        return plant_look_up(variable);
    };
    EXPECT_THROW(backend_support::subscribe_each(request_list{tank, pump}, failing, plant.list,
                                                 plant.result),
                 std::runtime_error);
    EXPECT_FALSE(plant.result.has(pump));
    EXPECT_TRUE(plant.list.remove(plant.result.get(tank).id));
    EXPECT_TRUE(plant.list.empty());
}

} // namespace
