#include "terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

namespace iohost {

bool is_terminal(int descriptor) noexcept {
    return ::isatty(descriptor) == 1;
}

terminal_size size_of_terminal(int descriptor) noexcept {
    winsize told{};
    terminal_size size;
    if (::ioctl(descriptor, TIOCGWINSZ, &told) == 0 && told.ws_col > 0 && told.ws_row > 0) {
        size = {told.ws_col, told.ws_row};
    }
    return size;
}

std::string_view cut(std::string_view line, std::size_t columns) noexcept {
    std::size_t characters = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        bool const begins = (static_cast<unsigned char>(line[at]) & 0xC0U) != 0x80U;
        if (begins && ++characters > columns) return line.substr(0, at);
    }
    return line;
}

} // namespace iohost
