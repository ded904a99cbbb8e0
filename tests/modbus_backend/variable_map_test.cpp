#include <gtest/gtest.h>
#include <modbus_backend/variable_map.hpp>

#include <sstream>
#include <string>
#include <utility>

namespace {

using modbus_backend::variable_map;
using tavi::ioapi::v2::plc_identifier;

variable_map sample_variables() {
    std::istringstream text("structure pump\n  runs 0 u16\n  speed 2 flt word_order=little\nend\n"
                            "a holding 10 u16\n"
                            "p1 holding 20 pump\n"
                            "p2 input 30 pump\n");
    return variable_map(modbus_backend::parse_map(text));
}

TEST(variable_map, finds_variables_by_their_names) {
    auto const map = sample_variables();
    ASSERT_NE(map.find(plc_identifier("a")), nullptr);
    EXPECT_EQ(map.find(plc_identifier("a"))->address, 10U);
    EXPECT_EQ(map.find(plc_identifier("p2"))->address, 30U);
    EXPECT_EQ(map.variables().size(), 3U);
}

TEST(variable_map, finds_the_places_of_members_by_the_secondary_part) {
    auto const map = sample_variables();
    auto const* const speed = map.find(plc_identifier("p2", "speed"));
    ASSERT_NE(speed, nullptr);
    EXPECT_EQ(speed->name, "p2/speed");
    EXPECT_EQ(speed->kind, modbus_backend::register_kind::input);
    EXPECT_EQ(speed->address, 32U);
    EXPECT_EQ(speed->type.element, modbus_backend::value_type::flt);
    EXPECT_EQ(speed->type.words, modbus_backend::part_order::little);
    EXPECT_EQ(speed->type.members, nullptr);
    EXPECT_EQ(map.find(plc_identifier("p1", "runs"))->address, 20U);
}

TEST(variable_map, finds_nothing_else) {
    auto const map = sample_variables();
    for (auto const& unknown :
         {plc_identifier(), plc_identifier("b"), plc_identifier(1), plc_identifier("p1", 0),
          plc_identifier("p1", "torque"), plc_identifier("a", "runs"), plc_identifier("p1/speed"),
          plc_identifier("pump"), plc_identifier("pump", "runs"), plc_identifier("p1", "")}) {
        EXPECT_EQ(map.find(unknown), nullptr);
    }
}

TEST(variable_map, finds_the_same_after_a_move) {
    auto first = sample_variables();
    auto const second = std::move(first);
    EXPECT_EQ(second.find(plc_identifier("p2", "speed"))->address, 32U);
    EXPECT_EQ(second.find(plc_identifier("a")), &second.variables()[0]);
}

} // namespace
