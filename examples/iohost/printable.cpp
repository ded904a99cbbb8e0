#include "printable.hpp"

namespace iohost {

std::string printable(std::string_view text) {
    constexpr char const* digits = "0123456789abcdef";
    std::string safe;
    for (char const letter : text) {
        auto const byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 && byte != 0x7F) {
            safe += letter;
        } else {
            safe += "\\x";
            safe += digits[byte >> 4];
            safe += digits[byte & 0x0F];
        }
    }
    return safe;
}

} // namespace iohost
