#include "footprint.hpp"

#include <dlfcn.h>
#include <malloc.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

namespace iohost::conformance {

namespace {

namespace fs = std::filesystem;

std::size_t entries_of(char const* directory) {
    auto const all = fs::directory_iterator(directory);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

std::size_t allocated() {
    // Where a sanitizer has taken the place of the allocator, it keeps the count.
    using count = std::size_t (*)();
    static auto const of_sanitizer =
        reinterpret_cast<count>(::dlsym(RTLD_DEFAULT, "__sanitizer_get_current_allocated_bytes"));
    if (of_sanitizer != nullptr) return of_sanitizer();
    auto const state = ::mallinfo2();
    return state.uordblks + state.hblkhd;
}

footprint measured_now() {
    return {entries_of("/proc/self/fd"), entries_of("/proc/self/task"), allocated()};
}

} // namespace

footprint measured(footprint const& expected) {
    constexpr int attempts = 50;
    auto now = measured_now();
    for (int i = 0; i < attempts; ++i) {
        if (now.threads <= expected.threads && now.descriptors <= expected.descriptors) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        now = measured_now();
    }
    return now;
}

} // namespace iohost::conformance
