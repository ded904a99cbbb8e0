#include "vector_kernels.hpp"

#include <cstring>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>
#if __has_include(<sys/platform/x86.h>)
#if defined(__clang__)
#define _Bool bool // NOLINT(bugprone-reserved-identifier): the header is written for C
#endif
#include <sys/platform/x86.h>
#endif
#endif

namespace tavi::ioapi::v2::detail {

namespace {

template <class T>
T read(T const* place) noexcept {
    T element;
    std::memcpy(&element, place, sizeof(T));
    return element;
}

// --- for every platform, and for the last elements of a run

bool convert_whole_plain(double const* from, int* to, unsigned int count) noexcept {
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    bool differ = false;
    for (unsigned int i = 0; i < count; ++i) {
        double const bounded = from[i] >= least && from[i] <= most ? from[i] : 0.5;
        to[i] = static_cast<int>(bounded);
        differ |= to[i] != bounded;
    }
    return !differ;
}

template <class T>
bool agree_plain(T const* a, double const* b, unsigned int count) noexcept {
    bool differ = false;
    for (unsigned int i = 0; i < count; ++i) differ |= read(a + i) != read(b + i);
    return !differ;
}

#if defined(__x86_64__)

// --- four elements a step, in vectors of 128 bits; `count` is a multiple of 4
// Out of range, the conversion to integers gives the least one, which then differs.

bool convert_whole_narrow(double const* from, int* to, unsigned int count) noexcept {
    __m128d differ = _mm_setzero_pd();
    for (unsigned int i = 0; i < count; i += 4) {
        __m128d const low = _mm_loadu_pd(from + i);
        __m128d const high = _mm_loadu_pd(from + i + 2);
        __m128i const low_numbers = _mm_cvttpd_epi32(low);
        __m128i const high_numbers = _mm_cvttpd_epi32(high);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i),
                         _mm_unpacklo_epi64(low_numbers, high_numbers));
        differ = _mm_or_pd(differ, _mm_cmpneq_pd(_mm_cvtepi32_pd(low_numbers), low));
        differ = _mm_or_pd(differ, _mm_cmpneq_pd(_mm_cvtepi32_pd(high_numbers), high));
    }
    return _mm_movemask_pd(differ) == 0;
}

bool agree_narrow(double const* a, double const* b, unsigned int count) noexcept {
    __m128d differ = _mm_setzero_pd();
    for (unsigned int i = 0; i < count; i += 2) {
        differ = _mm_or_pd(differ, _mm_cmpneq_pd(_mm_loadu_pd(a + i), _mm_loadu_pd(b + i)));
    }
    return _mm_movemask_pd(differ) == 0;
}

bool agree_narrow(int const* a, double const* b, unsigned int count) noexcept {
    __m128d differ = _mm_setzero_pd();
    for (unsigned int i = 0; i < count; i += 4) {
        __m128i const low = _mm_loadu_si128(reinterpret_cast<__m128i const*>(a + i));
        __m128i const high = _mm_unpackhi_epi64(low, low);
        differ = _mm_or_pd(differ, _mm_cmpneq_pd(_mm_cvtepi32_pd(low), _mm_loadu_pd(b + i)));
        differ = _mm_or_pd(differ, _mm_cmpneq_pd(_mm_cvtepi32_pd(high), _mm_loadu_pd(b + i + 2)));
    }
    return _mm_movemask_pd(differ) == 0;
}

// --- the same in vectors of 256 bits

TAVI_IOAPI_WIDE_VECTORS bool convert_whole_wide(double const* from,
                                                int* to,
                                                unsigned int count) noexcept {
    __m256d differ = _mm256_setzero_pd();
    for (unsigned int i = 0; i < count; i += 4) {
        __m256d const four = _mm256_loadu_pd(from + i);
        __m128i const numbers = _mm256_cvttpd_epi32(four);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), numbers);
        differ =
            _mm256_or_pd(differ, _mm256_cmp_pd(_mm256_cvtepi32_pd(numbers), four, _CMP_NEQ_UQ));
    }
    return _mm256_movemask_pd(differ) == 0;
}

TAVI_IOAPI_WIDE_VECTORS bool agree_wide(double const* a,
                                        double const* b,
                                        unsigned int count) noexcept {
    __m256d differ = _mm256_setzero_pd();
    for (unsigned int i = 0; i < count; i += 4) {
        differ = _mm256_or_pd(
            differ, _mm256_cmp_pd(_mm256_loadu_pd(a + i), _mm256_loadu_pd(b + i), _CMP_NEQ_UQ));
    }
    return _mm256_movemask_pd(differ) == 0;
}

TAVI_IOAPI_WIDE_VECTORS bool agree_wide(int const* a,
                                        double const* b,
                                        unsigned int count) noexcept {
    __m256d differ = _mm256_setzero_pd();
    for (unsigned int i = 0; i < count; i += 4) {
        __m128i const four = _mm_loadu_si128(reinterpret_cast<__m128i const*>(a + i));
        differ = _mm256_or_pd(
            differ, _mm256_cmp_pd(_mm256_cvtepi32_pd(four), _mm256_loadu_pd(b + i), _CMP_NEQ_UQ));
    }
    return _mm256_movemask_pd(differ) == 0;
}

constexpr unsigned int whole_steps(unsigned int count) noexcept {
    return count - count % 4;
}

template <class T>
bool agree(T const* a, double const* b, unsigned int count) noexcept {
    unsigned int const many = whole_steps(count);
    bool const same = has_wide_vectors() ? agree_wide(a, b, many) : agree_narrow(a, b, many);
    return same && agree_plain(a + many, b + many, count - many);
}

#else

template <class T>
bool agree(T const* a, double const* b, unsigned int count) noexcept {
    return agree_plain(a, b, count);
}

#endif

} // namespace

bool has_wide_vectors() noexcept {
#if defined(CPU_FEATURE_ACTIVE)
    return CPU_FEATURE_ACTIVE(AVX2);
#elif defined(__x86_64__)
    return __builtin_cpu_supports("avx2");
#else
    return false;
#endif
}

bool convert_whole(double const* from, int* to, unsigned int count) noexcept {
#if defined(__x86_64__)
    unsigned int const many = whole_steps(count);
    bool const all = has_wide_vectors() ? convert_whole_wide(from, to, many)
                                        : convert_whole_narrow(from, to, many);
    return all && convert_whole_plain(from + many, to + many, count - many);
#else
    return convert_whole_plain(from, to, count);
#endif
}

bool runs_agree(double const* a, double const* b, unsigned int count) noexcept {
    return agree(a, b, count);
}

bool runs_agree(int const* a, double const* b, unsigned int count) noexcept {
    return agree(a, b, count);
}

} // namespace tavi::ioapi::v2::detail
