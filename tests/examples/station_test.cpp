#include <controller/station.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// What is expected here is worked out by hand from the formulas, registers included.

namespace {

using registers = std::vector<std::uint16_t>;

registers at(std::span<std::uint16_t const> table, std::size_t first, std::size_t count) {
    auto const part = table.subspan(first, count);
    return {part.begin(), part.end()};
}

TEST(station, bits_at_the_start) {
    auto const shown = station::image_at(0);
    EXPECT_EQ(shown.coils, (std::array<std::uint8_t, 12>{1, 0, 0, 0}));
    EXPECT_EQ(shown.discretes, (std::array<std::uint8_t, 8>{1, 0, 0, 0, 0, 0, 0, 0}));
}

// 119 mod 4 = 3, mod 10 = 9, mod 8 = 7, mod 6 = 5, and it is odd.
TEST(station, bits_where_each_stands_otherwise) {
    auto const shown = station::image_at(119);
    EXPECT_EQ(shown.coils, (std::array<std::uint8_t, 12>{0, 1, 1, 1}));
    EXPECT_EQ(shown.discretes, (std::array<std::uint8_t, 8>{0, 1, 0, 0, 0, 0, 0, 1}));
}

TEST(station, pumps_take_turns) {
    bool const first_runs[] = {true, true, false, false, true};
    for (std::size_t t = 0; t < std::size(first_runs); ++t) {
        auto const shown = station::image_at(t);
        EXPECT_EQ(shown.coils[station::pump_1_runs] == 1, first_runs[t]) << t;
        EXPECT_EQ(shown.coils[station::pump_2_runs] == 0, first_runs[t]) << t;
    }
}

// The level is 2, 2.25, 2.5 ... 3.75.
TEST(station, level_switches_follow_the_level) {
    for (unsigned int t = 0; t < 8; ++t) {
        auto const shown = station::image_at(t);
        EXPECT_EQ(shown.discretes[station::level_is_low] == 1, t < 2) << t;
        EXPECT_EQ(shown.discretes[station::level_is_high] == 1, t > 5) << t;
    }
}

TEST(station, input_registers_at_the_start) {
    auto const shown = station::image_at(0);
    EXPECT_EQ(at(shown.inputs, station::level, 2), (registers{0x4000, 0x0000})); // 2.0
    EXPECT_EQ(at(shown.inputs, station::flow, 2), (registers{0x0000, 0x4148}));  // 12.5
    EXPECT_EQ(at(shown.inputs, station::temperature, 1), (registers{0xFFCE}));   // -50
    EXPECT_EQ(at(shown.inputs, station::vibration, 1), (registers{0x2C01}));     // 300 = 0x012C
    EXPECT_EQ(at(shown.inputs, station::power, 2), (registers{0x0001, 0x86A0})); // 100000
    // 1234.5 = 1.2055664... * 2^10
    EXPECT_EQ(at(shown.inputs, station::energy, 4), (registers{0x4093, 0x4A00, 0, 0}));
    // 10^16 + 1 = 0x2386F26FC10001
    EXPECT_EQ(at(shown.inputs, station::volume, 4), (registers{0x0023, 0x86F2, 0x6FC1, 0x0001}));
    // -9 10^9 = 0xFFFFFFFDE78EE600
    EXPECT_EQ(at(shown.inputs, station::balance, 4), (registers{0xE600, 0xE78E, 0xFFFD, 0xFFFF}));
    // 4 10^9 = 0xEE6B2800
    EXPECT_EQ(at(shown.inputs, station::starts, 2), (registers{0x2800, 0xEE6B}));
    EXPECT_EQ(at(shown.inputs, station::ticks, 2), (registers{0, 0}));
}

TEST(station, input_registers_move_with_the_clock) {
    auto const shown = station::image_at(119);
    EXPECT_EQ(at(shown.inputs, station::level, 2), (registers{0x4070, 0x0000})); // 3.75
    EXPECT_EQ(at(shown.inputs, station::flow, 2), (registers{0x0000, 0x4188}));  // 17
    EXPECT_EQ(at(shown.inputs, station::temperature, 1), (registers{83}));
    EXPECT_EQ(at(shown.inputs, station::vibration, 1), (registers{0xA301}));     // 419 = 0x01A3
    EXPECT_EQ(at(shown.inputs, station::power, 2), (registers{0xFFFC, 0xB828})); // -215000
    // 1249.375 = 0x4E1.6, hence 0x1.3858 * 2^10
    EXPECT_EQ(at(shown.inputs, station::energy, 4), (registers{0x4093, 0x8580, 0, 0}));
    // 10^16 + 1 + 2975 (0x0B9F)
    EXPECT_EQ(at(shown.inputs, station::volume, 4), (registers{0x0023, 0x86F2, 0x6FC1, 0x0BA0}));
    // -9 10^9 + 29750 (0x7436)
    EXPECT_EQ(at(shown.inputs, station::balance, 4), (registers{0x5A36, 0xE78F, 0xFFFD, 0xFFFF}));
    // 4 10^9 + 1190 (0x04A6)
    EXPECT_EQ(at(shown.inputs, station::starts, 2), (registers{0x2CA6, 0xEE6B}));
    EXPECT_EQ(at(shown.inputs, station::ticks, 2), (registers{0, 119}));
}

TEST(station, holding_registers_at_the_start) {
    auto const shown = station::image_at(0);
    EXPECT_EQ(shown.holdings[station::step], 0);
    EXPECT_EQ(shown.holdings[station::setpoint], 1500);
    EXPECT_EQ(at(shown.holdings, station::operating, 2), (registers{0x0001, 0x5180})); // 86400
    EXPECT_EQ(
        at(shown.holdings, station::name, 8),
        (registers{0x5075, 0x6D70, 0x2073, 0x7461, 0x7469, 0x6F6E, 0x2037, 0})); // Pump station 7
    EXPECT_EQ(at(shown.holdings, station::state, 4),
              (registers{0x6966, 0x6C6C, 0x6E69, 0x0067})); // fi ll in g
    // 0.1 = 0x3FB999999999999A
    EXPECT_EQ(at(shown.holdings, station::gain, 4), (registers{0x999A, 0x9999, 0x9999, 0x3FB9}));
}

TEST(station, the_panel_is_the_same_at_every_tick) {
    for (station::tick_count const t : {0u, 119u}) {
        auto const shown = station::image_at(t);
        auto const panel = std::span(shown.holdings).subspan(station::panel);
        EXPECT_EQ(at(panel, station::operator_panel::limit, 2), (registers{0, 0x4060})); // 3.5
        EXPECT_EQ(at(panel, station::operator_panel::note, 8),
                  (registers{0x616C, 0x6C20, 0x7765, 0x6C6C, 0, 0, 0, 0})); // al l_ we ll
        EXPECT_EQ(at(panel, station::operator_panel::factors, 4),
                  (registers{1, 0xFFFE, 3, 0xFFFC}));
        // 1200.5 = 1.17236328125 * 2^10
        EXPECT_EQ(at(panel, station::operator_panel::recipe_speed, 2), (registers{0x4496, 0x1000}));
        EXPECT_EQ(at(panel, station::operator_panel::recipe_batches, 1), (registers{7}));
        EXPECT_EQ(at(panel, station::operator_panel::recipe_name, 4),
                  (registers{0x626C, 0x7565, 0, 0})); // blue, two characters each
        EXPECT_EQ(at(panel, 21, 3), (registers{0, 0, 0}));
    }
}

TEST(station, holding_registers_move_with_the_clock) {
    auto const shown = station::image_at(119);
    EXPECT_EQ(shown.holdings[station::step], 0);
    EXPECT_EQ(shown.holdings[station::setpoint], 1540);
    EXPECT_EQ(at(shown.holdings, station::operating, 2), (registers{0x0001, 0x6D64})); // 93540
    EXPECT_EQ(at(shown.holdings, station::state, 4),
              (registers{0x7264, 0x6961, 0x696E, 0x676E}));                        // dr ai ni ng
    EXPECT_EQ(at(shown.holdings, station::gain, 4), (registers{0, 0, 0, 0x3FF0})); // 1.0
}

// 2 - i / 8. From 2 down the exponent is 1 only for 2 itself; below, 1 + k / 8 is 0x3F80 with k in
// the three bits below the exponent, each step 0x0010.
TEST(station, the_profile_falls_from_chamber_to_chamber) {
    EXPECT_EQ(at(station::image_at(0).inputs, station::profile, 16),
              (registers{0x4000, 0, 0x3FF0, 0, 0x3FE0, 0, 0x3FD0, 0, 0x3FC0, 0, 0x3FB0, 0, 0x3FA0,
                         0, 0x3F90, 0}));
}

// 119 mod 8 = 7: from 3.75 = 0x4070 down to 2.875, in steps of 0x0008.
TEST(station, the_profile_moves_with_the_level) {
    EXPECT_EQ(at(station::image_at(119).inputs, station::profile, 16),
              (registers{0x4070, 0, 0x4068, 0, 0x4060, 0, 0x4058, 0, 0x4050, 0, 0x4048, 0, 0x4040,
                         0, 0x4038, 0}));
}

// 1450 = 0x5AA = 1.416015625 * 2^10, 120 = 0x78.
TEST(station, a_running_pump_and_a_resting_one_at_the_start) {
    auto const shown = station::image_at(0);
    EXPECT_EQ(at(shown.holdings, station::pump_1, 8),
              (registers{1, 0x4000, 0x44B5, 0, 1000, 0x7800, 0x7A00, 0x7C00}));
    EXPECT_EQ(at(shown.holdings, station::pump_2, 8), (registers{0, 0, 0, 0, 2000, 0, 0, 0}));
}

// 119 mod 4 = 3, so pump 2 runs at 1451.5, which is 1450 and 3 steps of 2^-1; 119 mod 3 = 2, and
// 119 / 4 is 29.
TEST(station, the_pumps_have_changed_places) {
    auto const shown = station::image_at(119);
    EXPECT_EQ(at(shown.holdings, station::pump_1, 8), (registers{0, 0, 0, 0, 1029, 0, 0, 0}));
    EXPECT_EQ(at(shown.holdings, station::pump_2, 8),
              (registers{1, 0x7000, 0x44B5, 0, 2029, 0x7A00, 0x7C00, 0x7E00}));
}

TEST(station, counters_wrap_without_disturbing_the_rest) {
    auto const last = std::uint64_t{0xFFFFFFFFFFFFFFFF}; // mod 2^32 = 2^32 - 1
    auto const shown = station::image_at(last);
    EXPECT_EQ(at(shown.inputs, station::ticks, 2), (registers{0xFFFF, 0xFFFF}));
    // 86400 - 60 = 86340 = 0x15144
    EXPECT_EQ(at(shown.holdings, station::operating, 2), (registers{0x0001, 0x5144}));
    // 10^16 + 1 - 25 = ...C10001 - 0x19
    EXPECT_EQ(at(shown.inputs, station::volume, 4), (registers{0x0023, 0x86F2, 0x6FC0, 0xFFE8}));
}

} // namespace
