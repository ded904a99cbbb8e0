#pragma once

#include <cstddef>
#include <cstdint>

/// \file
/// Loops over arrays by hand, the limits of what the library does with arrays. Each stands twice:
/// in `baseline` for every x86-64, in `avx2` for those with AVX2. A conversion tells whether every
/// element fits; the rest of the target is then unspecified.

#define BENCH_DECLARE_KERNELS(level)                                                               \
    namespace bench::level {                                                                       \
    bool i32_to_i16(std::int32_t const* source, std::int16_t* target, std::size_t count);          \
    bool i32_to_dbl(std::int32_t const* source, double* target, std::size_t count);                \
    bool dbl_to_i32(double const* source, std::int32_t* target, std::size_t count);                \
    bool i32_fit_i16(std::int32_t const* source, std::size_t count);                               \
    bool equal(double const* left, double const* right, std::size_t count);                        \
    bool equal(std::int32_t const* left, double const* right, std::size_t count);                  \
    }

BENCH_DECLARE_KERNELS(baseline)
BENCH_DECLARE_KERNELS(avx2)

#undef BENCH_DECLARE_KERNELS
