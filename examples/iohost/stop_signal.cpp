#include "stop_signal.hpp"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace iohost {

namespace {

timespec span_until(stop_signal::clock::time_point deadline) {
    using std::chrono::nanoseconds;
    auto const left =
        std::max(std::chrono::duration_cast<nanoseconds>(deadline - stop_signal::clock::now()),
                 nanoseconds(0));
    auto const seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    timespec span{};
    span.tv_sec = static_cast<time_t>(seconds.count());
    span.tv_nsec = static_cast<long>((left - seconds).count());
    return span;
}

} // namespace

stop_signal::stop_signal() : descriptor_(-1) {
    ::sigemptyset(&awaited_);
    ::sigaddset(&awaited_, SIGINT);
    ::sigaddset(&awaited_, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &awaited_, &before_);
    descriptor_ = ::signalfd(-1, &awaited_, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "signalfd");
}

stop_signal::~stop_signal() {
    // Who presses the keys again while the end is being prepared means no more by that.
    timespec const at_once{};
    while (::sigtimedwait(&awaited_, nullptr, &at_once) > 0) {
    }
    ::close(descriptor_);
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool stop_signal::came_before(clock::time_point deadline) {
    while (!came_) {
        pollfd waiting{descriptor_, POLLIN, 0};
        auto const span = span_until(deadline);
        int const ready = ::ppoll(&waiting, 1, &span, nullptr);
        if (ready == 0) return false;
        if (ready < 0 && errno == EINTR) continue;
        signalfd_siginfo about{};
        came_ = ready < 0 || ::read(descriptor_, &about, sizeof(about)) > 0;
    }
    return true;
}

} // namespace iohost
