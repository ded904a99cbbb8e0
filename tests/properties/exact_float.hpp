#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

namespace properties_test {

/// A number of 32 bits in floating point, taken apart by its bits alone: mantissa times a power of
/// two, in integers.
class exact_float {
public:
    explicit constexpr exact_float(std::uint32_t bits) noexcept : bits_(bits) {}

    [[nodiscard]] float value() const noexcept {
        float result = 0;
        std::memcpy(&result, &bits_, sizeof result);
        return result;
    }

    [[nodiscard]] constexpr bool negative() const noexcept { return (bits_ >> 31U) != 0; }
    [[nodiscard]] constexpr bool zero() const noexcept { return (bits_ << 1U) == 0; }
    [[nodiscard]] constexpr bool finite() const noexcept { return biased() != 255; }
    [[nodiscard]] constexpr bool nan() const noexcept { return !finite() && fraction() != 0; }

    /// Whether it is a whole number of at most 2^24 - 1, the most that the format is trusted with.
    [[nodiscard]] constexpr bool trusted() const noexcept {
        if (zero()) return true;
        if (!finite() || exponent() > 0) return false; // from 2^24 on
        if (exponent() <= -24) return false;           // below 1
        return mantissa() % (1U << static_cast<unsigned int>(-exponent())) == 0;
    }

    /// The number, of one that is trusted.
    [[nodiscard]] constexpr std::int32_t whole() const noexcept {
        if (zero()) return 0;
        auto const magnitude = mantissa() >> static_cast<unsigned int>(-exponent());
        return negative() ? -static_cast<std::int32_t>(magnitude)
                          : static_cast<std::int32_t>(magnitude);
    }

    /// The number in a wider format, of one that is finite.
    template <class Real>
    [[nodiscard]] Real widened() const noexcept {
        Real const magnitude = std::ldexp(static_cast<Real>(mantissa()), exponent());
        return negative() ? -magnitude : magnitude;
    }

private:
    [[nodiscard]] constexpr std::uint32_t biased() const noexcept { return (bits_ >> 23U) & 255U; }
    [[nodiscard]] constexpr std::uint32_t fraction() const noexcept { return bits_ & 0x7FFFFFU; }
    [[nodiscard]] constexpr std::uint32_t mantissa() const noexcept {
        return biased() == 0 ? fraction() : fraction() | 0x800000U;
    }
    /// Of two, for the mantissa as an integer.
    [[nodiscard]] constexpr int exponent() const noexcept {
        return (biased() == 0 ? 1 : static_cast<int>(biased())) - 150;
    }

    std::uint32_t bits_;
};

} // namespace properties_test
