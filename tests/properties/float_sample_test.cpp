#include "float_conversions.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

/// \file
/// A sample of what every_float judges whole.

namespace properties_test {
namespace {

void expect_all_hold(std::uint32_t bits) {
    char const* const failed = failed_conversion_of(bits);
    ASSERT_EQ(failed, nullptr) << failed << " of " << std::hex << bits;
}

// The exact numbers are judged by the compiler's, which knows nothing of bits.
TEST(ExactFloat, IsWhatTheBitsSay) {
    for (float const number : {0.0F, 1.0F, 1.5F, 2.0F, 0.1F, 16777215.0F, 16777216.0F, 3.4e38F,
                               1e-45F, 8388607.5F, 12345678.0F, 1e-38F}) {
        for (float const each : {number, -number}) {
            exact_float const exact(std::bit_cast<std::uint32_t>(each));
            EXPECT_EQ(exact.widened<double>(), double{each});
            bool const trusted = std::fabs(each) <= 16777215.0F && std::trunc(each) == each;
            EXPECT_EQ(exact.trusted(), trusted) << each;
            if (trusted) {
                EXPECT_EQ(exact.whole(), static_cast<std::int32_t>(each));
            }
        }
    }
}

// Coprime to 2^32, so that all low bits are met with all high ones.
TEST(SampledFloats, ConvertAsTheirBitsSay) {
    constexpr std::uint32_t stride = 30011;
    for (std::uint64_t bits = 0; bits < 0x100000000ULL; bits += stride) {
        expect_all_hold(static_cast<std::uint32_t>(bits));
        if (HasFatalFailure()) return;
    }
}

TEST(FloatsAtEveryExponentsBorders, ConvertAsTheirBitsSay) {
    for (std::uint32_t exponent = 0; exponent < 512; ++exponent) { // with the sign
        for (std::uint32_t step = 0; step < 16; ++step) {
            expect_all_hold((exponent << 23U) + step);
            expect_all_hold((exponent << 23U) + 0x7FFFFFU - step);
            if (HasFatalFailure()) return;
        }
    }
}

// One bit of each mantissa, at each exponent: where numbers begin to be whole.
TEST(FloatsOfASingleBit, ConvertAsTheirBitsSay) {
    for (std::uint32_t exponent = 0; exponent < 512; ++exponent) {
        for (std::uint32_t bit = 0; bit < 23; ++bit) {
            expect_all_hold((exponent << 23U) | (1U << bit));
            expect_all_hold((exponent << 23U) | (0x7FFFFFU & ~((1U << bit) - 1)));
            if (HasFatalFailure()) return;
        }
    }
}

} // namespace
} // namespace properties_test
