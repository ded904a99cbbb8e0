#pragma once

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

namespace test_support {

/// \return the protection of the page at `address`, such as "r--p"; empty where nothing is mapped.
[[nodiscard]] inline std::string protection_of(void const* address) {
    std::ifstream maps("/proc/self/maps");
    auto const wanted = reinterpret_cast<std::uintptr_t>(address);
    for (std::string line; std::getline(maps, line);) {
        unsigned long long first = 0;
        unsigned long long last = 0;
        char protection[5] = {};
        if (std::sscanf(line.c_str(), "%llx-%llx %4s", &first, &last, protection) != 3) continue;
        if (first <= wanted && wanted < last) return protection;
    }
    return {};
}

} // namespace test_support
