#pragma once

/// \file
/// What the mutated sources ask. Every place that has a mutant asks by its number whether that one
/// was chosen, and so leaves word that it was reached.

namespace iokern_mutants {

/// The number of the chosen mutant, from the variable IOKERN_MUTANT; 0, which no place has, where
/// none is chosen.
[[gnu::visibility("default")]] extern int chosen;

/// A byte for each place, which is 1 once it was reached. In a file that children share, if the
/// variable IOKERN_MUTANTS_REACHED names one.
[[gnu::visibility("default")]] extern unsigned char* reached;

/// Whether the mutant of a place was chosen. What the compiler computes stays as it was written.
constexpr bool on(int place) {
    if (__builtin_is_constant_evaluated()) return false;
    reached[place] = 1;
    return chosen == place;
}

} // namespace iokern_mutants
