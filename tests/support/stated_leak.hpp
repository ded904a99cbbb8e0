#pragma once

extern "C" {
void __lsan_disable() __attribute__((weak));
void __lsan_enable() __attribute__((weak));
}

namespace test_support {

/// What is allocated while it lives may stay behind, as is intended in a few places: where the leak
/// sanitizer is linked in, it does not count these blocks.
class stated_leak {
public:
    stated_leak() noexcept {
        if (__lsan_disable != nullptr) __lsan_disable();
    }
    ~stated_leak() {
        if (__lsan_enable != nullptr) __lsan_enable();
    }
    stated_leak(stated_leak const&) = delete;
    stated_leak& operator=(stated_leak const&) = delete;
};

} // namespace test_support
