#pragma once

#include <array>
#include <string_view>
#include <vector>

namespace linux_backend {

/// How long processors were at what, in ticks, in the order of `processor_time_names`.
using processor_ticks = std::array<unsigned long long, 8>;

inline constexpr std::array<char const*, 8> processor_time_names{
    "user", "nice", "system", "idle", "iowait", "irq", "softirq", "steal"};

/// Of `stat`: all processors together. \throws bad_text
[[nodiscard]] processor_ticks all_processors(std::string_view text);

/// Of `stat`: each one that is online, in the order of the file, at least one. \throws bad_text
[[nodiscard]] std::vector<processor_ticks> each_processor(std::string_view text);

} // namespace linux_backend
