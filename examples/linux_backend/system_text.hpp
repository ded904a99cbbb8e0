#pragma once

#include <string_view>

namespace linux_backend {

/// What the texts of load, uptime, memory and scheduling say. All raise `bad_text`.

/// Of `loadavg`, as `0.42 0.36 0.30 2/345 6789`. \param which  0 to 2: over 1, 5 and 15 minutes
[[nodiscard]] double load_average(std::string_view text, unsigned int which);

struct task_count {
    unsigned long long running = 0;
    unsigned long long total = 0;
};
/// Of `loadavg`, behind the averages.
[[nodiscard]] task_count tasks(std::string_view text);

/// Of `uptime`, in seconds. \param which  0: since the start, 1: idle, of all processors together
[[nodiscard]] double uptime(std::string_view text, unsigned int which);

/// Of `meminfo`, which counts in units of 1024. \param key  such as `MemTotal` \return bytes
[[nodiscard]] unsigned long long memory(std::string_view text, std::string_view key);

/// Of `stat`: the number behind a word that begins a line, such as `ctxt`.
[[nodiscard]] unsigned long long counter(std::string_view text, std::string_view key);

} // namespace linux_backend
