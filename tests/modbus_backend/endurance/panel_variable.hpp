#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace endurance {

/// Variables of the station's panel, of each kind that is written in a way of its own: one
/// register, two, many, and coils. Each can hold a number; of the coils, the last four bits of it.
enum class panel_variable { word, number, text, lamps };

inline constexpr std::array all_panel_variables{panel_variable::word, panel_variable::number,
                                                panel_variable::text, panel_variable::lamps};

/// The lines of the map that describe them.
[[nodiscard]] std::string map_of_panel();

[[nodiscard]] char const* name_of(panel_variable which);

/// What a host writes, and is to read then.
[[nodiscard]] tavi::ioapi::v2::io_value value_of(panel_variable which, std::uint32_t number);

/// What stands in the controller then: registers, or bits.
[[nodiscard]] std::vector<std::uint16_t> contents_of(panel_variable which, std::uint32_t number);

/// What stands there now. \throws std::runtime_error
[[nodiscard]] std::vector<std::uint16_t> contents_in(int port, panel_variable which);

/// Let it hold another number, without the backend. \throws std::runtime_error
void set_by_hand(int port, panel_variable which, std::uint32_t number);

} // namespace endurance
