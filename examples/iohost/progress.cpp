#include "progress.hpp"

#include "terminal.hpp"

#include <unistd.h>

#include <iostream>
#include <utility>

namespace iohost {

progress::progress(std::string what)
    : what_(std::move(what)), on_terminal_(is_terminal(STDERR_FILENO)) {}

progress::~progress() {
    if (shown_) std::cerr << clear_line << std::flush;
}

void progress::show(std::size_t done, std::size_t of) {
    if (!on_terminal_) return;
    std::cerr << clear_line << done;
    if (of != 0) std::cerr << " of " << of;
    std::cerr << ' ' << what_ << std::flush;
    shown_ = true;
}

} // namespace iohost
