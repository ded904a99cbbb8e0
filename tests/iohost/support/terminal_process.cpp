#include "terminal_process.hpp"

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>

namespace iohost_support {

terminal_process::terminal_process(std::vector<std::string> const& command,
                                   unsigned short rows,
                                   unsigned short columns) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (auto const& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    winsize const size{rows, columns, 0, 0};
    pid_ = ::forkpty(&terminal_, nullptr, nullptr, &size);
    if (pid_ < 0) throw std::runtime_error("forkpty");
    if (pid_ == 0) {
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
}

terminal_process::~terminal_process() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    ::close(terminal_);
}

void terminal_process::type(std::string const& keys) const {
    if (::write(terminal_, keys.data(), keys.size()) < 0) throw std::runtime_error("write");
}

bool terminal_process::read_more() {
    pollfd waiting{terminal_, POLLIN, 0};
    if (::poll(&waiting, 1, 60'000) <= 0) throw std::runtime_error("silent: " + shown_);
    std::array<char, 4096> buffer{};
    auto const size = ::read(terminal_, buffer.data(), buffer.size());
    // At the end of the other side there is an error, not an end.
    if (size <= 0) return false;
    shown_.append(buffer.data(), static_cast<std::size_t>(size));
    return true;
}

std::string const& terminal_process::read_until(std::string const& text) {
    while (shown_.find(text) == std::string::npos) {
        if (!read_more()) throw std::runtime_error("no '" + text + "' but " + shown_);
    }
    return shown_;
}

int terminal_process::finish() {
    while (read_more()) {
    }
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace iohost_support
