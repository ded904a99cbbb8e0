#pragma once

#include "polling.hpp"

#include <signal.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace iohost {

/// While it exists, SIGINT and SIGTERM end nothing but the waiting here: they are blocked, in this
/// thread and in those that it starts from now on, and are had from a descriptor, so that none is
/// lost between two looks at it. Made before the backend is opened, whose threads inherit that.
///
/// A call into the backend may take as long as its controller is waited for, and nothing in the
/// interface cuts it short. So a thread of its own waits for the signals, and where the call is not
/// back a second after the first one, or when a second one comes, it ends the process: no
/// destructor runs beside the call, and the system takes back what was held.
class stop_signal final : public poll_clock {
public:
    using clock = std::chrono::steady_clock;
    /// Says what is to be said when the process is ended in this way; `call` as in `outside`.
    using last_words = std::function<void(char const* call)>;

    /// What a call may still take after the first signal.
    static constexpr std::chrono::milliseconds patience{1000};

    /// \param status  of the process where it is ended in the midst of a call
    /// \throws std::system_error  where there is no descriptor or thread left
    explicit stop_signal(int status);
    ~stop_signal();

    /// They may look at what the thread of this object works with: they are spoken only while that
    /// is in a call, and it does not come back from there.
    void speak(last_words words) { words_ = std::move(words); }

    [[nodiscard]] clock::time_point now() const override { return clock::now(); }
    /// The end is one of the signals.
    [[nodiscard]] bool came_before(clock::time_point deadline) override;
    [[nodiscard]] bool came() const noexcept { return came_; }

    /// Make a call that may take its time. \param name  such as `poll`
    template <class Call>
    decltype(auto) outside(char const* name, Call call) {
        departure const gone(*this, name);
        return call();
    }

private:
    class departure {
    public:
        departure(stop_signal& from, char const* name) : from_(from) {
            from_.call_ = name;
            ++from_.steps_;
            from_.inside_.unlock();
        }
        departure(departure const&) = delete;
        departure& operator=(departure const&) = delete;
        ~departure() {
            from_.inside_.lock();
            ++from_.steps_;
        }

    private:
        stop_signal& from_;
    };

    void keep_watch();
    [[nodiscard]] bool signal_within(std::chrono::milliseconds span, bool& is_over);
    void speak_last() noexcept;
    void end_if_stuck(bool is_overdue);

    int const status_;
    sigset_t awaited_{};
    sigset_t before_{};
    int signals_ = -1;
    int over_ = -1; ///< readable when this object ends
    last_words words_;
    char const* call_ = "";
    std::mutex inside_; ///< held by the thread of this object but in a call
    std::atomic<unsigned long long> steps_ = 0;
    std::atomic<bool> came_ = false;
    std::mutex news_;
    std::condition_variable has_news_;
    std::thread watch_;
};

} // namespace iohost
