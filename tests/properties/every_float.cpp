#include "float_conversions.hpp"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>

/// \file
/// Judges every number of 32 bits in floating point from one pattern of bits to another, the second
/// excluded.

namespace {

using properties_test::exact_float;
using properties_test::failed_conversion_of;

constexpr std::uint64_t all = 0x100000000ULL;

/// Of a number with or without `0x` before it.
std::optional<std::uint64_t> pattern_of(char const* text) {
    bool const is_hexadecimal = std::strncmp(text, "0x", 2) == 0;
    char const* const first = is_hexadecimal ? text + 2 : text;
    char const* const last = text + std::strlen(text);
    std::uint64_t result = 0;
    auto const [end, error] = std::from_chars(first, last, result, is_hexadecimal ? 16 : 10);
    if (error != std::errc() || end != last || result > all) return std::nullopt;
    return result;
}

struct counts {
    std::uint64_t judged = 0;
    std::uint64_t whole = 0;
    std::uint64_t failed = 0;
};

constexpr std::uint64_t shown_failures = 20;

void judge(std::uint32_t bits, counts& result) {
    ++result.judged;
    if (exact_float(bits).trusted()) ++result.whole;
    char const* const failed = failed_conversion_of(bits);
    if (failed == nullptr) return;
    if (++result.failed <= shown_failures) {
        (void)std::printf("every_float: %#010x to %s\n", static_cast<unsigned int>(bits), failed);
    }
}

} // namespace

int main(int argc, char** argv) {
    auto const first = argc == 3 ? pattern_of(argv[1]) : std::nullopt;
    auto const last = argc == 3 ? pattern_of(argv[2]) : std::nullopt;
    if (!first || !last || *last < *first) {
        (void)std::fprintf(stderr,
                           "usage: every_float FIRST LAST, patterns from 0 to 0x100000000\n");
        return 2;
    }
    auto const start = std::chrono::steady_clock::now();
    counts result;
    for (std::uint64_t bits = *first; bits < *last; ++bits) {
        judge(static_cast<std::uint32_t>(bits), result);
    }
    std::chrono::duration<double> const taken = std::chrono::steady_clock::now() - start;
    (void)std::printf("every_float: %llu numbers from %#llx on, %llu of them whole and trusted, "
                      "%llu failed, %.0f s\n",
                      static_cast<unsigned long long>(result.judged),
                      static_cast<unsigned long long>(*first),
                      static_cast<unsigned long long>(result.whole),
                      static_cast<unsigned long long>(result.failed), taken.count());
    return result.failed == 0 ? 0 : 1;
}
