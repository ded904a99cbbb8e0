#pragma once

#include <tavi/ioapi/v2/detail/iokern_allocator.hpp>

#include <new>

/// \file
/// Where memory ends: by the 32 bits of a size where addresses are wider, else by the addresses.

namespace load_test {

inline constexpr bool has_wide_addresses = sizeof(void*) == 8;

/// \return the largest number up to 4294967295 for which `fits` holds, which holds for all below.
template <class Fits>
[[nodiscard]] unsigned int largest_that(Fits fits) {
    unsigned int low = 0;
    unsigned int high = 0xFFFFFFFF;
    while (low < high) {
        unsigned int const middle = high - (high - low) / 2;
        if (fits(middle)) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return low;
}

/// Whether the gateway gives a block of that many bytes, which it gets back.
[[nodiscard]] inline bool gateway_gives(unsigned int bytes) {
    using gateway = tavi::ioapi::v2::detail::iokern_allocator_base;
    void* const block = gateway::allocate(bytes, 32);
    if (block == nullptr) return false;
    gateway::deallocate(block, bytes, 32);
    return true;
}

/// \return the bytes of the largest block that can be had at this moment.
[[nodiscard]] inline unsigned int largest_block() {
    return largest_that(gateway_gives);
}

/// How an attempt to get memory ended.
enum class outcome { given, no_memory, no_such_count };

template <class Action>
[[nodiscard]] outcome outcome_of(Action action) {
    try {
        action();
    } catch (std::bad_array_new_length const&) {
        return outcome::no_such_count;
    } catch (std::bad_alloc const&) {
        return outcome::no_memory;
    }
    return outcome::given;
}

/// Calls `action` with `first`, `last` and some numbers between, ever farther apart.
template <class Action>
void for_some_from_to(unsigned int first, unsigned int last, Action action) {
    for (unsigned int step = 1; first < last && last - first > step; step *= 2) {
        action(first);
        first += step;
    }
    action(last);
}

} // namespace load_test
