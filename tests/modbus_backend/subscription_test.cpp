#include "support/module_test.hpp"

#include <controller/station.hpp>
#include <examples/support/running_station.hpp>
#include <signal.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;
using test_support::running_station;
using test_support::summaries;
using test_support::summary;

/// The simulated station, whose clock moves by what is written to its first holding register.
class subscription : public test_support::module_test {
protected:
    v2::subscription_result subscribe(texts const& names) const {
        v2::subscription_result result;
        v2::io_error error(v2::io_errc::todo); // must be cleared
        opened_->subscribe(test_support::identifiers_of(names), result, error);
        EXPECT_EQ(error, v2::io_error());
        return result;
    }

    [[nodiscard]] v2::read_result poll() const {
        v2::read_result changes(test_support::identifiers_of({"old"}));
        v2::io_error error(v2::io_errc::todo); // must be cleared
        opened_->poll(changes, error);
        EXPECT_EQ(error, v2::io_error());
        return changes;
    }

    /// The names of what has changed.
    [[nodiscard]] texts polled() const {
        texts names;
        for (auto const& entry : poll()) names.push_back(entry.identifier().primary().text().str());
        return names;
    }

    [[nodiscard]] v2::io_error unsubscribe(v2::subscription_id const& id) const {
        v2::io_error error(v2::io_errc::todo);
        opened_->unsubscribe(id, error);
        return error;
    }

    void step() const {
        test_support::modbus_client const client(station_->port());
        EXPECT_EQ(modbus_write_register(client.get(), station::step, 1), 1);
    }

    [[nodiscard]] v2::config::store settings() const {
        auto values = settings_for(station_->port(), STATION_MAP_PATH);
        values.set("poll_interval_ms", 123);
        return values;
    }

    std::unique_ptr<running_station> station_ = std::make_unique<running_station>();
    test_support::opened_backend const opened_ = module.open(settings());
};

TEST_F(subscription, says_how_often_to_poll) {
    EXPECT_EQ(opened_->poll_interval(), 123U);
}

TEST_F(subscription, gives_an_id_and_the_data_type) {
    auto const result = subscribe({"tank.level", "pump1.state", "pumps.run"});
    auto const& level = result[v2::plc_identifier("tank.level")];
    EXPECT_EQ(summary(level.error), "ok");
    EXPECT_EQ(level.data_type, v2::io_data_type::scalar(basic_types::flt));
    EXPECT_NE(level.id.kind(), v2::subscription_id_kind::none);
    v2::io_error error;
    EXPECT_EQ(result[v2::plc_identifier("pump1.state")].data_type,
              opened_.host().lookup_data_type(v2::plc_identifier("pump_state"), error));
    EXPECT_EQ(result[v2::plc_identifier("pumps.run")].data_type,
              v2::io_data_type::array_of(basic_types::boolean));
}

TEST_F(subscription, refuses_members_and_what_is_in_no_map) {
    auto const result = subscribe({"pump1.state/speed", "tank3.level", "pump2.state/torque"});
    EXPECT_EQ(summary(result[v2::plc_identifier("pump1.state")].error),
              "modbus:265 a member cannot be subscribed to");
    EXPECT_EQ(summary(result[v2::plc_identifier("tank3.level")].error), "generic:1 not found");
    EXPECT_EQ(summary(result[v2::plc_identifier("pump2.state")].error), "generic:1 not found");
    EXPECT_TRUE(poll().empty());
}

TEST_F(subscription, delivers_all_at_first_and_then_what_has_changed) {
    auto const subscribed = subscribe({"tank.level", "tank.volume", "door.open", "pump1.runs"});
    EXPECT_EQ(poll().size(), 4U);
    EXPECT_EQ(polled(), texts());
    step();
    EXPECT_EQ(polled(), texts({"tank.level", "tank.volume"})); // the others hold at tick 1
    EXPECT_EQ(polled(), texts());
}

TEST_F(subscription, delivers_values_with_time_and_quality) {
    auto const subscribed = subscribe({"tank.level"});
    auto const changes = poll();
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].value().value().as<float>(), 2.0F);
    EXPECT_TRUE(changes[0].value().good());
    EXPECT_TRUE(changes[0].value().timestamp().has_value());
}

TEST_F(subscription, delivers_structures_when_a_member_has_changed) {
    auto const subscribed = subscribe({"pump1.state"});
    EXPECT_EQ(poll().size(), 1U);
    EXPECT_EQ(polled(), texts());
    step();
    auto const changes = poll();
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].value().value().get_if<v2::io_object>()->get("speed").as<float>(),
              1450.5F);
}

TEST_F(subscription, delivers_an_error_once) {
    auto const subscribed = subscribe({"tank2.level"});
    EXPECT_EQ(summaries(poll()), texts{"modbus:2 illegal data address"});
    EXPECT_EQ(polled(), texts());
}

TEST_F(subscription, delivers_a_loss_and_what_comes_after_it) {
    auto const subscribed = subscribe({"tank.level", "pump1.runs"});
    EXPECT_EQ(summaries(poll()), texts(2, "ok"));
    int const port = station_->port();
    station_->stop(SIGKILL);
    EXPECT_EQ(summaries(poll()), texts(2, "modbus:257 connection lost"));
    EXPECT_EQ(summaries(poll()), texts(2, "modbus:256 not connected"));
    EXPECT_EQ(polled(), texts());
    station_ = std::make_unique<running_station>(port);
    EXPECT_EQ(summaries(poll()), texts(2, "ok"));
    EXPECT_EQ(polled(), texts());
}

TEST_F(subscription, twice_makes_two_that_end_one_by_one) {
    auto const first = subscribe({"tank.level"});
    auto const second = subscribe({"tank.level"});
    auto const& first_id = first[v2::plc_identifier("tank.level")].id;
    auto const& second_id = second[v2::plc_identifier("tank.level")].id;
    EXPECT_NE(first_id.number(), second_id.number());
    EXPECT_EQ(poll().size(), 1U);
    EXPECT_EQ(unsubscribe(first_id), v2::io_error());
    step();
    EXPECT_EQ(poll().size(), 1U);
    EXPECT_EQ(unsubscribe(second_id), v2::io_error());
    step();
    EXPECT_EQ(poll().size(), 0U);
}

TEST_F(subscription, of_one_variable_twice_in_a_request_ends_with_its_one_id) {
    auto const subscribed = subscribe({"tank.level", "tank.level"});
    EXPECT_EQ(poll().size(), 1U);
    EXPECT_EQ(unsubscribe(subscribed[v2::plc_identifier("tank.level")].id), v2::io_error());
    step();
    EXPECT_EQ(poll().size(), 0U);
}

TEST_F(subscription, of_a_structure_survives_the_refusal_of_its_member) {
    auto const subscribed = subscribe({"pump1.state", "pump1.state/speed"});
    auto const& entry = subscribed[v2::plc_identifier("pump1.state")];
    EXPECT_EQ(summary(entry.error), "ok");
    EXPECT_EQ(unsubscribe(entry.id), v2::io_error());
}

TEST_F(subscription, ends_only_what_there_is) {
    auto const subscribed = subscribe({"tank.level"});
    auto const& id = subscribed[v2::plc_identifier("tank.level")].id;
    v2::io_error const not_found(v2::io_errc::not_found);
    EXPECT_EQ(unsubscribe(v2::subscription_id::from_number(id.number() + 1)), not_found);
    EXPECT_EQ(unsubscribe({}), not_found);
    EXPECT_EQ(unsubscribe(id), v2::io_error());
    EXPECT_EQ(unsubscribe(id), not_found);
}

} // namespace
