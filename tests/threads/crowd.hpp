#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

/// \file
/// What the tests of this folder have in common: several threads that set off together. Each test
/// bears the name of one line of the table in docs/threads.md and does what that line allows; the
/// thread sanitizer says whether it is true.

namespace threads_test {

inline constexpr int crowd_size = 4;
inline constexpr int rounds = 1000;

/// Runs `action(thread, round)` in all rounds on each of `size` threads, which begin at once.
/// \return how often it gave false
template <class Action>
int failures_of_crowd(Action action, int size = crowd_size) {
    std::atomic<int> missing{size};
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < size; ++thread) {
        threads.emplace_back([&, thread] {
            --missing;
            while (missing > 0) std::this_thread::yield();
            for (int round = 0; round < rounds; ++round) {
                if (!action(thread, round)) ++failures;
            }
        });
    }
    for (auto& each : threads) each.join();
    return failures;
}

/// All threads read one object: `reads_well` sees it as it is.
template <class T, class Reads>
void expect_shared_reads(T const& shared, Reads reads_well) {
    EXPECT_EQ(failures_of_crowd([&](int, int) { return reads_well(shared); }), 0);
}

/// All threads copy one object, and each changes its own copy, which the others do not see.
template <class T, class Reads, class Change>
void expect_independent_copies(T const& shared, Reads reads_well, Change change) {
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  T own(shared);
                  bool const copied = reads_well(own);
                  change(own);
                  return copied && !reads_well(own) && reads_well(shared);
              }),
              0);
}

/// All threads write one object, each under a lock that the caller has made: none sees half of
/// what another one wrote, since the object is always either as it was or as `change` makes it.
template <class T, class Reads, class Change>
void expect_locked_writes(T shared, Reads reads_well, Change change) {
    T const original(shared);
    std::mutex lock;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  std::lock_guard<std::mutex> const held(lock);
                  bool const intact = reads_well(shared);
                  change(shared);
                  bool const changed = !reads_well(shared);
                  shared = original;
                  return intact && changed;
              }),
              0);
}

/// What a plain class allows: reads of one object, copies of it, and writes under a lock.
template <class T, class Reads, class Change>
void expect_plain(T const& sample, Reads reads_well, Change change) {
    ASSERT_TRUE(reads_well(sample));
    expect_shared_reads(sample, reads_well);
    expect_independent_copies(sample, reads_well, change);
    expect_locked_writes(T(sample), reads_well, change);
}

} // namespace threads_test
