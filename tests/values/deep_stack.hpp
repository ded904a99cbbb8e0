#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>

namespace values_test {

/// Run `action` on a stack of 64 MB: the code of tests is not optimised, and sanitizers need many
/// times the stack that the product does.
template <class Action>
void run_on_deep_stack(Action action) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{64} << 20), 0);
    pthread_t thread{};
    auto const start = [](void* argument) -> void* {
        (*static_cast<Action*>(argument))();
        return nullptr;
    };
    int const refused = pthread_create(&thread, &attributes, start, &action);
    EXPECT_EQ(pthread_attr_destroy(&attributes), 0);
    ASSERT_EQ(refused, 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
}

} // namespace values_test
