#pragma once

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <utility>

/// \file
/// How large a load is, and what it costs.

namespace tavi::ioapi::v2 {}

namespace load_test {

namespace v2 = tavi::ioapi::v2;

/// By how much the loads are divided: 50, unless the environment variable TAVI_IOAPI_LOAD_DIVISOR
/// has another number from 1 to 1,000,000; what is no such number ends the process with status 2. 1
/// is the full load.
[[nodiscard]] inline unsigned int divisor() {
    char const* const text = std::getenv("TAVI_IOAPI_LOAD_DIVISOR");
    if (text == nullptr) return 50;
    char* end = nullptr;
    unsigned long const given = std::strtoul(text, &end, 10);
    if (*end != '\0' || given == 0 || given > 1000000) {
        std::fprintf(stderr, "load: TAVI_IOAPI_LOAD_DIVISOR is no number from 1 on: '%s'\n", text);
        std::exit(2);
    }
    return static_cast<unsigned int>(given);
}

/// \return what is to be done of a full load of `count`, at least one.
[[nodiscard]] inline unsigned int share_of(unsigned int count) {
    return std::max(count / divisor(), 1U);
}

/// \return what the process holds on the heap, in bytes.
[[nodiscard]] inline std::size_t heap() {
    auto const state = ::mallinfo2();
    return state.uordblks + state.hblkhd;
}

/// \return the largest part of memory that this process has held since `forget_peak`, in MiB. Under
/// emulation that of the emulator is counted as well.
[[nodiscard]] inline unsigned long long peak() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        unsigned long long kibibytes = 0;
        if (std::sscanf(line.c_str(), "VmHWM: %llu", &kibibytes) == 1) return kibibytes / 1024;
    }
    return 0;
}

/// Gives back what is free, and counts anew.
inline void forget_peak() {
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

/// Prints at its end the seconds of a processor that were used since its start, which other
/// programs do not change, and the most memory that the process held meanwhile.
class measured {
public:
    explicit measured(std::string name) : name_(std::move(name)) {
        forget_peak();
        start_ = std::clock();
    }
    measured(measured const&) = delete;
    measured& operator=(measured const&) = delete;
    ~measured() {
        double const taken = static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC;
        std::printf("load: %s: %.2f s, %llu MiB\n", name_.c_str(), taken, peak());
        std::fflush(stdout);
    }

private:
    std::string name_;
    std::clock_t start_ = 0;
};

} // namespace load_test
