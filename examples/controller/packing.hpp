#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// \file
/// How a value is laid into registers. A register travels with its high byte first; the protocol
/// says nothing of values that take several, hence the choice of order.

namespace station {

enum class order { high_first, low_first };

/// Splits a number into as many registers as it has words.
template <class Number>
void pack(std::span<std::uint16_t> registers, std::size_t at, Number number, order words) {
    constexpr std::size_t count = sizeof(Number) / sizeof(std::uint16_t);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const place = words == order::low_first ? i : count - 1 - i;
        registers[at + place] = static_cast<std::uint16_t>(number >> (16 * i));
    }
}

inline void pack(std::span<std::uint16_t> registers, std::size_t at, float number, order words) {
    pack(registers, at, std::bit_cast<std::uint32_t>(number), words);
}

inline void pack(std::span<std::uint16_t> registers, std::size_t at, double number, order words) {
    pack(registers, at, std::bit_cast<std::uint64_t>(number), words);
}

[[nodiscard]] constexpr std::uint16_t swapped(std::uint16_t word) noexcept {
    return static_cast<std::uint16_t>(word << 8 | word >> 8);
}

/// Two characters to a register, the rest of `size` registers zero. Too long a text is cut.
inline void pack_text(std::span<std::uint16_t> registers,
                      std::size_t at,
                      std::size_t size,
                      std::string_view text,
                      order bytes) {
    for (std::size_t i = 0; i < size; ++i) {
        auto const byte = [&](std::size_t place) {
            return static_cast<unsigned char>(place < text.size() ? text[place] : '\0');
        };
        auto const word = static_cast<std::uint16_t>(byte(2 * i) << 8 | byte(2 * i + 1));
        registers[at + i] = bytes == order::high_first ? word : swapped(word);
    }
}

} // namespace station
