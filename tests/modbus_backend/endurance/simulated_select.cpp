#include "simulated_controller.hpp"

#include <dlfcn.h>
#include <sys/select.h>

#include <cerrno>

// The library of the protocol finds this one before that of the system, for a program comes before
// its shared libraries.

namespace {

using endurance::simulated_controller;

int only_one_in(int count, fd_set const* set) {
    int found = -1;
    for (int i = 0; set != nullptr && i < count; ++i) {
        if (FD_ISSET(i, set)) found = i;
    }
    return found;
}

} // namespace

extern "C" [[gnu::visibility("default")]] int select(
    int count, fd_set* reading, fd_set* writing, fd_set* excepted, timeval* patience) {
    static auto const of_system =
        reinterpret_cast<decltype(&::select)>(::dlsym(RTLD_NEXT, "select"));
    auto* const controller = simulated_controller::present();
    int const reader = controller == nullptr ? -1 : only_one_in(count, reading);
    if (reader >= 0 && controller->is_reader(reader)) {
        bool const has_come = controller->wait_for_answer(reader, *patience);
        if (!has_come) FD_ZERO(reading);
        return has_come ? 1 : 0;
    }
    if (controller != nullptr && writing != nullptr && !controller->takes_connections()) {
        controller->wait_in_vain(*patience);
        FD_ZERO(writing);
        return 0;
    }
    return of_system(count, reading, writing, excepted, patience);
}
