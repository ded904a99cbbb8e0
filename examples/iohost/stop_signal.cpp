#include "stop_signal.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace iohost {

namespace {

constexpr std::chrono::milliseconds for_ever{-1};

int usable_descriptor(int descriptor, char const* what) {
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), what);
    return descriptor;
}

} // namespace

stop_signal::stop_signal(int status) : status_(status) {
    ::sigemptyset(&awaited_);
    ::sigaddset(&awaited_, SIGINT);
    ::sigaddset(&awaited_, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &awaited_, &before_);
    try {
        signals_ =
            usable_descriptor(::signalfd(-1, &awaited_, SFD_CLOEXEC | SFD_NONBLOCK), "signalfd");
        over_ = usable_descriptor(::eventfd(0, EFD_CLOEXEC), "eventfd");
        watch_ = std::thread([this] { keep_watch(); });
        inside_.lock();
    } catch (...) {
        if (signals_ >= 0) ::close(signals_);
        if (over_ >= 0) ::close(over_);
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        throw;
    }
}

stop_signal::~stop_signal() {
    ::eventfd_write(over_, 1);
    watch_.join();
    inside_.unlock();
    // Who presses the keys again while the end is being prepared means no more by that.
    timespec const at_once{};
    while (::sigtimedwait(&awaited_, nullptr, &at_once) > 0) {
    }
    ::close(over_);
    ::close(signals_);
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool stop_signal::came_before(clock::time_point deadline) {
    std::unique_lock lock(news_);
    return has_news_.wait_until(lock, deadline, [this] { return came_.load(); });
}

/// Wait for a signal. \return whether one came; nothing is to be waited for where `is_over`
bool stop_signal::signal_within(std::chrono::milliseconds span, bool& is_over) {
    pollfd waiting[] = {{signals_, POLLIN, 0}, {over_, POLLIN, 0}};
    if (::poll(waiting, 2, static_cast<int>(span.count())) <= 0) return false;
    is_over = waiting[1].revents != 0;
    signalfd_siginfo about{};
    return ::read(signals_, &about, sizeof(about)) > 0;
}

void stop_signal::keep_watch() {
    bool is_over = false;
    while (!is_over && !came_) {
        if (!signal_within(for_ever, is_over)) continue;
        std::lock_guard const lock(news_);
        came_ = true;
    }
    has_news_.notify_all();
    while (!is_over) {
        auto const before = steps_.load();
        bool const again = signal_within(patience, is_over);
        if (is_over) return;
        // What still moves comes to its end by itself.
        if (again || steps_ == before) end_if_stuck(!again);
    }
}

void stop_signal::speak_last() noexcept {
    try {
        if (words_) words_(call_);
    } catch (...) {
        return; // it ends all the same
    }
}

/// \param is_overdue  whether nothing has moved for long
void stop_signal::end_if_stuck(bool is_overdue) {
    if (inside_.try_lock()) {
        speak_last();
    } else if (!is_overdue) {
        return;
    }
    // The other thread may be anywhere in the backend: nothing of it is destroyed.
    ::_exit(status_);
}

} // namespace iohost
