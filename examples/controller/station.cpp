#include "station.hpp"

#include "packing.hpp"

#include <span>

namespace station {

namespace {

double level_at(tick_count t) {
    return 2.0 + static_cast<double>(t % 8) / 4.0;
}

bool first_pump_runs_at(tick_count t) {
    return t % 4 < 2;
}

void show_bits(image& shown, tick_count t) {
    shown.coils[pump_1_runs] = first_pump_runs_at(t);
    shown.coils[pump_2_runs] = !first_pump_runs_at(t);
    shown.coils[horn_sounds] = t % 10 == 9;
    shown.coils[valve_open] = t % 2 == 1;

    shown.discretes[level_is_low] = level_at(t) < 2.5;
    shown.discretes[level_is_high] = level_at(t) >= 3.5;
    shown.discretes[door_open] = t % 6 == 5;
}

void show_profile(image& shown, tick_count t) {
    for (std::size_t chamber = 0; chamber < chamber_count; ++chamber) {
        auto const depth = static_cast<float>(level_at(t) - static_cast<double>(chamber) / 8.0);
        pack(shown.inputs, profile + 2 * chamber, depth, order::high_first);
    }
}

void show_inputs(image& shown, tick_count t) {
    auto const high = order::high_first;
    auto const low = order::low_first;
    auto const part = [t](unsigned int period) { return static_cast<std::int32_t>(t % period); };

    pack(shown.inputs, level, static_cast<float>(level_at(t)), high);
    pack(shown.inputs, flow, 12.5F + 1.5F * static_cast<float>(part(4)), low);
    shown.inputs[temperature] = static_cast<std::uint16_t>(-50 + 7 * part(100));
    shown.inputs[vibration] = swapped(static_cast<std::uint16_t>(300 + part(1000)));
    pack(shown.inputs, power, 100'000 - 45'000 * part(16), high);
    pack(shown.inputs, energy, 1234.5 + static_cast<double>(t) / 8.0, high);
    pack(shown.inputs, volume, std::uint64_t{10'000'000'000'000'001} + 25 * t, high);
    pack(shown.inputs, balance, -9'000'000'000 + std::int64_t{250} * part(1000), low);
    pack(shown.inputs, starts, static_cast<std::uint32_t>(4'000'000'000 + 10 * t), low);
    pack(shown.inputs, ticks, static_cast<std::uint32_t>(t), high);
    show_profile(shown, t);
}

void show_pump(std::span<std::uint16_t> registers, tick_count number, bool runs, tick_count t) {
    float const speed = runs ? 1450.0F + static_cast<float>(t % 4) / 2.0F : 0.0F;
    registers[pump_state::runs] = runs;
    pack(registers, pump_state::speed, speed, order::low_first);
    pack(registers, pump_state::starts, static_cast<std::uint32_t>(1000 * number + t / 4),
         order::high_first);
    for (std::size_t phase = 0; phase < pump_state::phase_count; ++phase) {
        auto const current = static_cast<std::uint16_t>(runs ? 120 + 2 * phase + t % 3 : 0);
        registers[pump_state::currents + phase] = swapped(current);
    }
}

void show_panel(std::span<std::uint16_t> registers) {
    auto const high = order::high_first;
    pack(registers, operator_panel::limit, 3.5F, order::low_first);
    pack_text(registers, operator_panel::note, operator_panel::note_size, "all well", high);
    for (std::size_t i = 0; i < operator_panel::factor_count; ++i) {
        int const factor = static_cast<int>(i + 1) * (i % 2 == 0 ? 1 : -1);
        registers[operator_panel::factors + i] = static_cast<std::uint16_t>(factor);
    }
    pack(registers, operator_panel::recipe_speed, 1200.5F, high);
    registers[operator_panel::recipe_batches] = 7;
    pack_text(registers, operator_panel::recipe_name, operator_panel::recipe_name_size, "blue",
              high);
}

void show_holdings(image& shown, tick_count t) {
    auto const high = order::high_first;
    auto const low = order::low_first;

    shown.holdings[step] = 0;
    shown.holdings[setpoint] = static_cast<std::uint16_t>(1500 + 10 * (t % 5));
    pack(shown.holdings, operating, static_cast<std::uint32_t>(86'400 + 60 * t), high);
    pack_text(shown.holdings, name, name_size, "Pump station 7", high);
    pack_text(shown.holdings, state, state_size, first_pump_runs_at(t) ? "filling" : "draining",
              low);
    pack(shown.holdings, gain, static_cast<double>(1 + t % 10) / 10.0, low);
    show_pump(std::span(shown.holdings).subspan(pump_1), 1, first_pump_runs_at(t), t);
    show_pump(std::span(shown.holdings).subspan(pump_2), 2, !first_pump_runs_at(t), t);
    show_panel(std::span(shown.holdings).subspan(panel));
}

} // namespace

image image_at(tick_count t) {
    image shown;
    show_bits(shown, t);
    show_inputs(shown, t);
    show_holdings(shown, t);
    return shown;
}

} // namespace station
