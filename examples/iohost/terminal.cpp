#include "terminal.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace iohost {

bool is_terminal(int descriptor) noexcept {
    return ::isatty(descriptor) == 1;
}

void open_standard_streams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) >= 0) continue;
        // The lowest free number is this one, for those below it are open by now. Opened for what
        // the stream is not used for, so that its use fails as that of a closed one does.
        int const mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::open("/dev/null", mode) != descriptor) {
            throw std::system_error(errno, std::generic_category(), "cannot open /dev/null");
        }
    }
}

bool has_lost_its_reader(int descriptor) noexcept {
    pollfd asked{descriptor, 0, 0};
    return ::poll(&asked, 1, 0) > 0 && (asked.revents & POLLERR) != 0;
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
