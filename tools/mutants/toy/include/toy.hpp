#pragma once

/// \file
/// What tools/mutants/ is tried on, and what its tests let pass.

namespace toy {

constexpr int larger(int a, int b) {
    return a < b ? b : a;
}

constexpr bool is_small(int number) {
    return number < 10;
}

// The compiler must go on seeing what was written.
static_assert(larger(2, 3) == 3 && !is_small(10));

/// \return the number that the first character is, 0 for no text
int first_digit(char const* text);

/// No test calls it.
int next(int number);

} // namespace toy
