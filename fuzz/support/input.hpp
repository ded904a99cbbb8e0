#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace fuzz {

/// The bytes of one input, read from the front as a script. Behind its end all is zero, so that
/// every prefix of a script is one, too.
class input {
public:
    input(std::uint8_t const* data, std::size_t size) noexcept : next_(data), rest_(size) {}

    [[nodiscard]] bool empty() const noexcept { return rest_ == 0; }

    unsigned int byte() noexcept {
        if (rest_ == 0) return 0;
        --rest_;
        return *next_++;
    }

    /// A number below `bound`, which is from 1 to 256.
    unsigned int below(unsigned int bound) noexcept { return byte() % bound; }

    bool flag() noexcept { return (byte() & 1U) != 0; }

    /// The next bytes as they are.
    template <class T>
    T raw() noexcept {
        static_assert(std::is_trivially_copyable_v<T>);
        unsigned char bytes[sizeof(T)];
        for (unsigned char& each : bytes) each = static_cast<unsigned char>(byte());
        T result;
        std::memcpy(&result, bytes, sizeof result);
        return result;
    }

    /// Up to `count` bytes.
    std::string bytes(std::size_t count) {
        std::size_t const taken = count < rest_ ? count : rest_;
        std::string result(reinterpret_cast<char const*>(next_), taken);
        next_ += taken;
        rest_ -= taken;
        return result;
    }

private:
    std::uint8_t const* next_;
    std::size_t rest_;
};

} // namespace fuzz
