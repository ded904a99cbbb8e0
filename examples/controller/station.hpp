#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// \file
/// The simulated pump station. Nothing here looks at a clock: every quantity is a function of the
/// tick count t, an unsigned 64-bit number, so that whoever knows t knows every answer. Only the
/// operator's panel is otherwise: it keeps what is written to it.

namespace station {

using tick_count = std::uint64_t;

/// \name Coils
/// \{
inline constexpr std::size_t pump_1_runs = 0; ///< t mod 4 < 2
inline constexpr std::size_t pump_2_runs = 1; ///< t mod 4 >= 2
inline constexpr std::size_t horn_sounds = 2; ///< t mod 10 = 9
inline constexpr std::size_t valve_open = 3;  ///< t is odd
inline constexpr std::size_t lamps = 8;       ///< of the panel, off at first; in between all is off
inline constexpr std::size_t lamp_count = 4;
inline constexpr std::size_t coil_count = 12;
/// \}

/// \name Discrete inputs
/// \{
inline constexpr std::size_t level_is_low = 0;  ///< level below 2.5
inline constexpr std::size_t level_is_high = 1; ///< level 3.5 or more
inline constexpr std::size_t door_open = 7;     ///< t mod 6 = 5; those in between are always off
inline constexpr std::size_t discrete_count = 8;
/// \}

/// \name Input registers
/// A number of several registers has its high word first unless stated otherwise.
/// \{
inline constexpr std::size_t level = 0;       ///< flt, m: 2 + (t mod 8) / 4
inline constexpr std::size_t flow = 2;        ///< flt, l/s, low word first: 12.5 + 1.5 (t mod 4)
inline constexpr std::size_t temperature = 4; ///< i16, 0.1 degC: -50 + 7 (t mod 100)
inline constexpr std::size_t vibration = 5;   ///< u16, um/s, bytes swapped: 300 + t mod 1000
inline constexpr std::size_t power = 6;       ///< i32, W: 100000 - 45000 (t mod 16)
inline constexpr std::size_t energy = 8;      ///< dbl, kWh: 1234.5 + t / 8
inline constexpr std::size_t volume = 12;     ///< u64, l: 10^16 + 1 + 25 t, modulo 2^64
inline constexpr std::size_t balance = 16; ///< i64, l, low word first: -9 10^9 + 250 (t mod 1000)
inline constexpr std::size_t starts = 20;  ///< u32, low word first: 4 10^9 + 10 t, modulo 2^32
inline constexpr std::size_t ticks = 22;   ///< u32: t modulo 2^32
/// 8 flt, m: the level in chamber i from 0 to 7, 2 + (t mod 8) / 4 - i / 8
inline constexpr std::size_t profile = 24;
inline constexpr std::size_t chamber_count = 8;
inline constexpr std::size_t input_count = 40;
/// \}

/// \name Holding registers
/// \{
/// Writing n to this register advances t by n; it reads as 0. Beside it the panel can be written.
inline constexpr std::size_t step = 0;
inline constexpr std::size_t setpoint = 1;  ///< u16, mm: 1500 + 10 (t mod 5)
inline constexpr std::size_t operating = 2; ///< u32, s: 86400 + 60 t, modulo 2^32
inline constexpr std::size_t name = 4;      ///< text of 8 registers: "Pump station 7", then zeros
inline constexpr std::size_t name_size = 8;
/// Text of 4 registers with bytes swapped: "filling" while pump 1 runs, else "draining".
inline constexpr std::size_t state = 12;
inline constexpr std::size_t state_size = 4;
inline constexpr std::size_t gain = 16;   ///< dbl, low word first: (1 + t mod 10) / 10
inline constexpr std::size_t pump_1 = 20; ///< all of pump 1, see `pump_state`
inline constexpr std::size_t pump_2 = 28;
inline constexpr std::size_t panel = 40; ///< see `operator_panel`; in between all is 0
inline constexpr std::size_t panel_size = 24;
inline constexpr std::size_t holding_count = 64;
/// \}

/// The state of pump p, 1 or 2, in holding registers that are counted from the first of the pump. A
/// pump that rests has no speed and draws no current.
namespace pump_state {
inline constexpr std::size_t runs = 0;        ///< u16: 1 while it runs, see the coils, else 0
inline constexpr std::size_t speed = 1;       ///< flt, 1/min, low word first: 1450 + (t mod 4) / 2
inline constexpr std::size_t starts = 3;      ///< u32: 1000 p + t / 4 rounded down, modulo 2^32
inline constexpr std::size_t currents = 5;    ///< 3 u16, 0.1 A, bytes swapped: 120 + 2 i + t mod 3
inline constexpr std::size_t phase_count = 3; ///< of the currents, i from 0 to 2
} // namespace pump_state

/// What the panel holds at first, in holding registers that are counted from its first.
namespace operator_panel {
inline constexpr std::size_t limit = 0; ///< flt, m, low word first: 3.5
inline constexpr std::size_t note = 2;  ///< text of 8 registers: "all well", then zeros
inline constexpr std::size_t note_size = 8;
inline constexpr std::size_t factors = 10; ///< 4 i16: 1, -2, 3, -4
inline constexpr std::size_t factor_count = 4;
inline constexpr std::size_t recipe_speed = 14;   ///< flt: 1200.5
inline constexpr std::size_t recipe_batches = 16; ///< u16: 7
inline constexpr std::size_t recipe_name = 17;    ///< text of 4 registers: "blue", then zeros
inline constexpr std::size_t recipe_name_size = 4;
} // namespace operator_panel

/// All that the station shows at one tick, as the protocol knows it. Bits are bytes of 0 or 1.
struct image {
    std::array<std::uint8_t, coil_count> coils{};
    std::array<std::uint8_t, discrete_count> discretes{};
    std::array<std::uint16_t, input_count> inputs{};
    std::array<std::uint16_t, holding_count> holdings{};
};

/// \return the station after `t` ticks, its panel as it is at first.
[[nodiscard]] image image_at(tick_count t);

} // namespace station
