#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

/// `count` different texts of 24 characters that differ in the last ones, as those of a controller.
[[nodiscard]] inline std::vector<std::string> identifier_texts(int count) {
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        char text[40];
        (void)std::snprintf(text, sizeof(text), "PLC01.AREA10.Drv.%07d", i);
        result.emplace_back(text);
    }
    return result;
}

} // namespace bench
