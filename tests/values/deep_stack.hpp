#pragma once

#include <pthread.h>

#include <cstddef>

namespace values_test {

/// Unoptimised code and sanitizers need many times the stack that the product does.
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
inline constexpr bool needs_deep_stack = false;
#else
inline constexpr bool needs_deep_stack = true;
#endif

/// Run `action` on the stack of this thread, or on one of 64 MB where the build needs it.
template <class Action>
void run_on_deep_stack(Action action) {
    if constexpr (!needs_deep_stack) {
        action();
    } else {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstacksize(&attributes, std::size_t{64} << 20);
        pthread_t thread{};
        auto const start = [](void* argument) -> void* {
            (*static_cast<Action*>(argument))();
            return nullptr;
        };
        if (pthread_create(&thread, &attributes, start, &action) == 0) {
            pthread_join(thread, nullptr);
        }
        pthread_attr_destroy(&attributes);
    }
}

} // namespace values_test
