#pragma once

#include <cstddef>
#include <new>

/// \file
/// The test programs replace the global operators `new` and `delete`, which then also serve the
/// library's calls. They check that each block is released by the form, the size and the alignment
/// that it was made with (a mismatch ends the program), count per thread, and fail on demand.

namespace test_support {

/// What the library or a test asked of the global operators on this thread.
struct allocation_counts {
    std::size_t allocations = 0;
    std::size_t releases = 0; ///< of non-null blocks
    std::size_t null_releases = 0;
};

/// One call of an aligned operator.
struct aligned_call {
    void* block = nullptr;
    std::size_t size = 0;
    std::size_t alignment = 0;
};

/// The counts of this thread since it started.
[[nodiscard]] allocation_counts counts() noexcept;

/// Blocks of all threads that are alive now.
[[nodiscard]] long long live_blocks() noexcept;

/// The last aligned allocation and the last aligned release on this thread.
[[nodiscard]] aligned_call last_aligned_allocation() noexcept;
[[nodiscard]] aligned_call last_aligned_release() noexcept;

/// Counts from its construction on.
class allocation_counter {
public:
    allocation_counter() noexcept : start_(counts()) {}
    [[nodiscard]] std::size_t allocations() const noexcept {
        return counts().allocations - start_.allocations;
    }
    [[nodiscard]] std::size_t releases() const noexcept {
        return counts().releases - start_.releases;
    }
    [[nodiscard]] std::size_t null_releases() const noexcept {
        return counts().null_releases - start_.null_releases;
    }

private:
    allocation_counts start_;
};

/// How long memory stays exhausted: for one allocation, or for all that come after it as well.
enum class shortage { once, lasting };

/// Makes the n-th allocation of this thread from now on fail (1 is the next one).
class allocation_failure {
public:
    explicit allocation_failure(std::size_t n, shortage kind = shortage::once) noexcept;
    ~allocation_failure();
    allocation_failure(allocation_failure const&) = delete;
    allocation_failure& operator=(allocation_failure const&) = delete;
    /// Whether it has come to that allocation.
    [[nodiscard]] bool hit() const noexcept;
};

/// Run `scenario` with its 1st, 2nd, 3rd ... allocation failing until it passes untouched.
/// `scenario` catches nothing; after each failure all its blocks must be gone.
/// \return how many allocations failed, or -1 where blocks leaked or an exception other than
/// `std::bad_alloc` came out
template <class Scenario>
[[nodiscard]] int count_survived_failures(Scenario scenario) {
    for (int failures = 0;; ++failures) {
        long long const before = live_blocks();
        bool hit = false;
        bool raised = false;
        bool other = false;
        try {
            allocation_failure const failure(static_cast<std::size_t>(failures) + 1);
            try {
                scenario();
            } catch (std::bad_alloc const&) {
                raised = true;
            } catch (...) {
                other = true;
            }
            hit = failure.hit();
        } catch (...) {
            other = true;
        }
        if (other || live_blocks() != before || (raised && !hit)) return -1;
        if (!hit) return failures;
    }
}

} // namespace test_support
