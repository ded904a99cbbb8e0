#pragma once

#include "conversion_rules.hpp"
#include "vector_kernels.hpp"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <utility>

/// \file
/// Runs of numbers under the rules of conversion: tested in blocks with one branch for each block,
/// by loops that take several elements at once.

namespace tavi::ioapi::v2::detail {

/// Whether the rule between two element kinds is tested over a block at once: no texts, no values.
template <class To, class From>
inline constexpr bool is_numeric_run = (number<To> || std::is_same_v<To, bool>)&&number<From>;

/// The elements that are tested together, before one branch: they stay in the nearest cache.
inline constexpr unsigned int block_size = 1024;

/// \param step  called with the start and the length of each block until one call gives false
/// \return the elements before that block, or `count`
template <class Step>
[[gnu::always_inline]] inline unsigned int for_each_block(unsigned int count, Step step) noexcept {
    unsigned int start = 0;
    while (start != count) {
        unsigned int const length = std::min(block_size, count - start);
        if (!step(start, length)) break;
        start += length;
    }
    return start;
}

// --- one block

/// Collects misfits: integers by their bits, floating point by choosing the misfit.
template <number T>
[[gnu::always_inline]] constexpr T worse(T worst, T misfit) noexcept {
    if constexpr (whole<T>) {
        return static_cast<T>(worst | misfit);
    } else {
        return misfit != 0 ? T(1) : worst; // as wide as the elements, or they would go one by one
    }
}

template <class To, class From>
[[nodiscard, gnu::always_inline]] inline bool block_fits(From const* from,
                                                         unsigned int count) noexcept {
    using applied = rule<To, From>;
    if constexpr (requires { applied::misfit(from[0]); }) {
        decltype(applied::misfit(from[0])) worst = 0;
        for (unsigned int i = 0; i < count; ++i) worst = worse(worst, applied::misfit(from[i]));
        return worst == 0;
    } else {
        unsigned int misfits = 0;
        for (unsigned int i = 0; i < count; ++i) misfits |= !applied::fits(from[i]);
        return misfits == 0;
    }
}

/// \return whether all fit; if not, what `to` then holds means nothing
template <class To, class From>
[[nodiscard, gnu::always_inline]] inline bool convert_block(From const* __restrict from,
                                                            To* __restrict to,
                                                            unsigned int count) noexcept {
    using applied = rule<To, From>;
    if constexpr (std::is_same_v<From, double> && std::is_same_v<To, int>) {
        if (convert_whole(from, to, count)) return true; // else some may have to be clamped
    }
    if constexpr (whole<From> && requires { applied::misfit(from[0]); }) {
        // What does not fit is cut and does no harm, so that one loop does both.
        decltype(applied::misfit(from[0])) worst = 0;
        for (unsigned int i = 0; i < count; ++i) {
            worst = worse(worst, applied::misfit(from[i]));
            to[i] = applied::make(from[i]);
        }
        return worst == 0;
    } else {
        if (!block_fits<To>(from, count)) return false;
        for (unsigned int i = 0; i < count; ++i) to[i] = applied::make(from[i]);
        return true;
    }
}

// --- all blocks, in the vectors that every processor has and in wide ones

/// Whether loops over elements of this kind are compiled for wide vectors as well: those that
/// controllers make arrays of.
template <class T>
inline constexpr bool has_wide_form =
    is_one_of<T, short, unsigned short, int, unsigned int, float, double>;

/// From this many elements on, to ask for wide vectors costs little beside the work.
inline constexpr unsigned int worth_asking = 64;

template <class To, class From>
[[gnu::always_inline]] inline bool convert_blocks(From const* from,
                                                  To* to,
                                                  unsigned int count) noexcept {
    return for_each_block(count, [=](unsigned int start, unsigned int length) {
               return convert_block(from + start, to + start, length);
           }) == count;
}

template <class To, class From>
TAVI_IOAPI_WIDE_VECTORS bool convert_blocks_wide(From const* from,
                                                 To* to,
                                                 unsigned int count) noexcept {
    return convert_blocks(from, to, count);
}

/// \return whether all fit; if not, what `to` then holds means nothing
template <class To, class From>
[[nodiscard]] bool convert_run(From const* from, To* to, unsigned int count) noexcept {
    if constexpr (has_wide_form<To> && has_wide_form<From>) {
        if (count >= worth_asking && has_wide_vectors())
            return convert_blocks_wide(from, to, count);
    }
    return convert_blocks(from, to, count);
}

template <class To, class From>
[[nodiscard]] bool run_fits(From const* from, unsigned int count) noexcept {
    return for_each_block(count, [=](unsigned int start, unsigned int length) {
               return block_fits<To>(from + start, length);
           }) == count;
}

// --- comparison

/// Whether a `From` that is the same number as an `Own` is equal to it by the rules, without a look
/// at them: it converts to `Own` whatever number it is, so that a mere comparison may say "equal".
template <class Own, class From>
constexpr bool agreement_is_equality() noexcept {
    if constexpr (!number<Own> || !number<From>) {
        return false;
    } else {
        constexpr int own_digits = std::numeric_limits<number_t<Own>>::digits;
        constexpr int other_digits = std::numeric_limits<number_t<From>>::digits;
        if constexpr (whole<Own>) {
            return whole<From> || own_digits <= other_digits;
        } else {
            return other_digits <= own_digits;
        }
    }
}

template <whole Own, whole From>
bool runs_agree(Own const* own, From const* other, unsigned int count) noexcept {
    bool differ = false;
    for (unsigned int i = 0; i < count; ++i) {
        differ |= !std::cmp_equal(static_cast<number_t<Own>>(own[i]),
                                  static_cast<number_t<From>>(other[i]));
    }
    return !differ;
}

template <number Own, number From>
requires(real<Own> || real<From>) bool runs_agree(Own const* own,
                                                  From const* other,
                                                  unsigned int count) noexcept {
    using wide = std::conditional_t<(std::numeric_limits<number_t<Own>>::digits >
                                     std::numeric_limits<number_t<From>>::digits),
                                    Own, From>; // the one in floating point, see above
    bool differ = false;
    for (unsigned int i = 0; i < count; ++i) {
        differ |= static_cast<wide>(static_cast<number_t<Own>>(own[i])) !=
                  static_cast<wide>(static_cast<number_t<From>>(other[i]));
    }
    return !differ;
}

inline bool runs_agree(double const* own, int const* other, unsigned int count) noexcept {
    return runs_agree(other, own, count);
}

/// \return how many elements from the start on agree, in whole blocks
template <class Own, class From>
[[nodiscard]] unsigned int agreeing_elements(Own const* own,
                                             From const* other,
                                             unsigned int count) noexcept {
    return for_each_block(count, [=](unsigned int start, unsigned int length) {
        return runs_agree(own + start, other + start, length);
    });
}

} // namespace tavi::ioapi::v2::detail
