#pragma once

/// \file
/// Loops over doubles that take several elements at once, and whether the processor has wider
/// vectors, for conversions between the kinds that controllers make arrays of. Everything here
/// gives the same results on every processor.

/// Compiles a function for vectors of 256 bits where the platform may have them, with all that is
/// inlined into it. Call it only where `has_wide_vectors()`.
#if defined(__x86_64__)
#define TAVI_IOAPI_WIDE_VECTORS [[gnu::target("avx2")]]
#else
#define TAVI_IOAPI_WIDE_VECTORS
#endif

namespace tavi::ioapi::v2::detail {

/// Whether this processor has vectors of 256 bits. Where the C library can be asked, as it sees it,
/// so that `GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2` holds both to what every processor has. A call:
/// for runs that are worth it.
[[nodiscard]] bool has_wide_vectors() noexcept;

/// Convert doubles that are whole numbers of 32 bits.
/// \return whether all are; if not, what `to` then holds means nothing
[[nodiscard]] bool convert_whole(double const* from, int* to, unsigned int count) noexcept;

/// Whether both runs hold the same numbers. A NaN is none. Neither run need be aligned.
[[nodiscard]] bool runs_agree(double const* a, double const* b, unsigned int count) noexcept;
[[nodiscard]] bool runs_agree(int const* a, double const* b, unsigned int count) noexcept;

} // namespace tavi::ioapi::v2::detail
