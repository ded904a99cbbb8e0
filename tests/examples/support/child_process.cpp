#include "child_process.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace test_support {

namespace {

constexpr int longest_silence_ms = 60'000;

void require(bool succeeded, char const* what, int error) {
    if (!succeeded) throw std::runtime_error(std::string(what) + ": " + std::strerror(error));
}

std::string contents_of(int file) {
    std::string text;
    std::array<char, 4096> buffer{};
    ::lseek(file, 0, SEEK_SET);
    for (ssize_t size = 0; (size = ::read(file, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return text;
}

pid_t spawn(std::vector<std::string> const& command, int out, int err) {
    std::vector<char*> arguments;
    for (auto const& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
    pid_t pid = -1;
    int const error =
        ::posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    require(error == 0, arguments[0], error);
    return pid;
}

} // namespace

// The errors go to a file, so that the one pipe can be read without minding the other.
child_process::child_process(std::vector<std::string> const& command)
    : err_(::memfd_create("errors", MFD_CLOEXEC)) {
    int ends[2] = {-1, -1};
    require(err_ >= 0 && ::pipe2(ends, O_CLOEXEC) == 0, "pipe", errno);
    out_ = ends[0];
    pid_ = spawn(command, ends[1], err_);
    ::close(ends[1]);
}

child_process::~child_process() {
    if (pid_ > 0) {
        send(SIGKILL);
        wait();
    }
    ::close(out_);
    ::close(err_);
}

bool child_process::read_more() {
    pollfd waiting{out_, POLLIN, 0};
    require(::poll(&waiting, 1, longest_silence_ms) > 0, "silent process", ETIMEDOUT);
    std::array<char, 4096> buffer{};
    ssize_t const size = ::read(out_, buffer.data(), buffer.size());
    require(size >= 0, "read", errno);
    unread_.append(buffer.data(), static_cast<std::size_t>(size));
    return size > 0;
}

std::string child_process::read_line() {
    while (unread_.find('\n') == std::string::npos) {
        if (!read_more()) throw std::runtime_error("no line, but " + contents_of(err_));
    }
    auto const end = unread_.find('\n');
    std::string line = unread_.substr(0, end);
    unread_.erase(0, end + 1);
    return line;
}

std::string child_process::read_rest() {
    while (read_more()) {
    }
    return unread_;
}

void child_process::send(int signal) const {
    ::kill(pid_, signal);
}

void child_process::wait() {
    int status = 0;
    require(::waitpid(pid_, &status, 0) == pid_, "waitpid", errno);
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    pid_ = -1;
}

finished_process child_process::finish() {
    finished_process finished;
    finished.out = read_rest();
    wait();
    finished.status = status_;
    finished.err = contents_of(err_);
    return finished;
}

finished_process run(std::vector<std::string> const& command) {
    return child_process(command).finish();
}

} // namespace test_support
