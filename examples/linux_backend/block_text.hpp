#pragma once

#include <string_view>

namespace linux_backend {

/// What a block device has done since it is there.
struct block_activity {
    unsigned long long reads = 0;
    unsigned long long read_bytes = 0;
    unsigned long long writes = 0;
    unsigned long long written_bytes = 0;
    unsigned long long busy_ms = 0; ///< how long it had something to do
};

/// Of `size`, which counts in sectors of 512, whatever the device has. \throws bad_text
[[nodiscard]] unsigned long long block_size(std::string_view text);

/// Of `stat`. \throws bad_text
[[nodiscard]] block_activity activity(std::string_view text);

} // namespace linux_backend
