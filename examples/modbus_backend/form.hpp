#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>

namespace modbus_backend {

/// \name Keys of the options
/// \{
namespace option_key {
inline constexpr char const* map = "map";
inline constexpr char const* host = "host";
inline constexpr char const* port = "port";
inline constexpr char const* unit = "unit";
inline constexpr char const* byte_order = "byte_order";
inline constexpr char const* word_order = "word_order";
inline constexpr char const* timeout_ms = "timeout_ms";
inline constexpr char const* poll_interval_ms = "poll_interval_ms";
} // namespace option_key
/// \}

/// \return the options of this backend in two categories, `connection` and `timing`. Their types,
/// defaults and choices stand here alone; the ranges of numbers stand in `check`.
[[nodiscard]] tavi::ioapi::v2::config::config_template make_form();

} // namespace modbus_backend
