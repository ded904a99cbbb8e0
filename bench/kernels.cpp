#include "kernels.hpp"

#include <immintrin.h>

#include <algorithm>

namespace bench::BENCH_KERNELS {

namespace {

/// What is tested before one branch: no branch stands inside, so that the loop works on several
/// elements at once, and the block stays in the nearest cache.
constexpr std::size_t block = 1024;

/// Call `step` with each block until one fails.
template <class Step>
bool in_blocks(std::size_t count, Step step) {
    for (std::size_t first = 0; first < count; first += block) {
        if (!step(first, std::min(count, first + block))) return false;
    }
    return true;
}

/// Whether `differs(from, to)` is false everywhere. The flag is as wide as the lanes of the
/// comparison, or the compiler packs masks for each step.
template <class Flag, class Differs>
bool none(std::size_t first, std::size_t last, Differs differs) {
    Flag flag = 0;
    for (std::size_t i = first; i < last; ++i) flag |= differs(i) ? Flag(1) : Flag(0);
    return flag == 0;
}

} // namespace

bool i32_to_i16(std::int32_t const* __restrict source,
                std::int16_t* __restrict target,
                std::size_t count) {
    return in_blocks(count, [=](std::size_t first, std::size_t last) {
        std::int32_t differ = 0;
        for (std::size_t i = first; i < last; ++i) {
            target[i] = static_cast<std::int16_t>(source[i]);
            differ |= source[i] != target[i];
        }
        return differ == 0;
    });
}

bool i32_to_dbl(std::int32_t const* __restrict source,
                double* __restrict target,
                std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) target[i] = source[i];
    return true;
}

bool i32_fit_i16(std::int32_t const* source, std::size_t count) {
    return in_blocks(count, [=](std::size_t first, std::size_t last) {
        return none<std::int32_t>(first, last, [=](std::size_t i) {
            return source[i] != static_cast<std::int16_t>(source[i]);
        });
    });
}

// Floating point by hand: out of range the instruction gives the least number, which then differs.
// The compiler makes as much of a plain loop for comparisons with AVX2, and not without.
#ifdef __AVX2__

bool dbl_to_i32(double const* __restrict source,
                std::int32_t* __restrict target,
                std::size_t count) {
    std::size_t const whole = count - count % 4;
    bool const same = in_blocks(whole, [=](std::size_t first, std::size_t last) {
        __m256d different = _mm256_setzero_pd();
        for (std::size_t i = first; i < last; i += 4) {
            __m256d const four = _mm256_loadu_pd(source + i);
            __m128i const numbers = _mm256_cvttpd_epi32(four);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(target + i), numbers);
            __m256d const back = _mm256_cvtepi32_pd(numbers);
            different = _mm256_or_pd(different, _mm256_cmp_pd(back, four, _CMP_NEQ_UQ));
        }
        return _mm256_movemask_pd(different) == 0;
    });
    return same && none<std::int64_t>(whole, count, [=](std::size_t i) {
               target[i] = _mm_cvttsd_si32(_mm_set_sd(source[i]));
               return static_cast<double>(target[i]) != source[i];
           });
}

bool equal(double const* left, double const* right, std::size_t count) {
    return in_blocks(count, [=](std::size_t first, std::size_t last) {
        return none<std::int64_t>(first, last, [=](std::size_t i) { return left[i] != right[i]; });
    });
}

bool equal(std::int32_t const* left, double const* right, std::size_t count) {
    return in_blocks(count, [=](std::size_t first, std::size_t last) {
        return none<std::int64_t>(
            first, last, [=](std::size_t i) { return static_cast<double>(left[i]) != right[i]; });
    });
}

#else

namespace {

/// Four elements a step; `lanes(i)` gives where they differ, `differs(i)` tells it of the last few.
template <class Lanes, class Differs>
bool four_by_four(std::size_t count, Lanes lanes, Differs differs) {
    std::size_t const whole = count - count % 4;
    bool const same = in_blocks(whole, [=](std::size_t first, std::size_t last) {
        __m128d different = _mm_setzero_pd();
        for (std::size_t i = first; i < last; i += 4) different = _mm_or_pd(different, lanes(i));
        return _mm_movemask_pd(different) == 0;
    });
    return same && none<std::int64_t>(whole, count, differs);
}

} // namespace

bool dbl_to_i32(double const* __restrict source,
                std::int32_t* __restrict target,
                std::size_t count) {
    return four_by_four(
        count,
        [=](std::size_t i) {
            __m128d const a = _mm_loadu_pd(source + i);
            __m128d const b = _mm_loadu_pd(source + i + 2);
            __m128i const x = _mm_cvttpd_epi32(a);
            __m128i const y = _mm_cvttpd_epi32(b);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(target + i), _mm_unpacklo_epi64(x, y));
            return _mm_or_pd(_mm_cmpneq_pd(_mm_cvtepi32_pd(x), a),
                             _mm_cmpneq_pd(_mm_cvtepi32_pd(y), b));
        },
        [=](std::size_t i) {
            target[i] = _mm_cvttsd_si32(_mm_set_sd(source[i]));
            return static_cast<double>(target[i]) != source[i];
        });
}

bool equal(double const* left, double const* right, std::size_t count) {
    return four_by_four(
        count,
        [=](std::size_t i) {
            return _mm_or_pd(
                _mm_cmpneq_pd(_mm_loadu_pd(left + i), _mm_loadu_pd(right + i)),
                _mm_cmpneq_pd(_mm_loadu_pd(left + i + 2), _mm_loadu_pd(right + i + 2)));
        },
        [=](std::size_t i) { return left[i] != right[i]; });
}

bool equal(std::int32_t const* left, double const* right, std::size_t count) {
    return four_by_four(
        count,
        [=](std::size_t i) {
            __m128i const four = _mm_loadu_si128(reinterpret_cast<__m128i const*>(left + i));
            __m128i const upper = _mm_unpackhi_epi64(four, four);
            return _mm_or_pd(_mm_cmpneq_pd(_mm_cvtepi32_pd(four), _mm_loadu_pd(right + i)),
                             _mm_cmpneq_pd(_mm_cvtepi32_pd(upper), _mm_loadu_pd(right + i + 2)));
        },
        [=](std::size_t i) { return static_cast<double>(left[i]) != right[i]; });
}

#endif

} // namespace bench::BENCH_KERNELS
