#include "lifetime.hpp"

#include <sys/prctl.h>
#include <sys/signalfd.h>

#include <csignal>
#include <stdexcept>

namespace station {

descriptor end_of_life() {
    auto const parent = ::getppid();
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    descriptor end(::signalfd(-1, &signals, SFD_CLOEXEC));
    if (end.get() < 0 || ::sigprocmask(SIG_BLOCK, &signals, nullptr) != 0 ||
        ::prctl(PR_SET_PDEATHSIG, SIGTERM) != 0) {
        throw std::runtime_error("cannot take care of signals");
    }
    // The parent may have died before it was asked to say so.
    if (::getppid() != parent) static_cast<void>(std::raise(SIGTERM));
    return end;
}

} // namespace station
