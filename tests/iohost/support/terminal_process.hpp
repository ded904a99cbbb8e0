#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace iohost_support {

/// A program on a terminal of its own, which is made here and has this size. Where it says nothing
/// for a minute, reading from it raises `std::runtime_error`.
class terminal_process {
public:
    explicit terminal_process(std::vector<std::string> const& command,
                              unsigned short rows = 24,
                              unsigned short columns = 200);
    terminal_process(terminal_process const&) = delete;
    terminal_process& operator=(terminal_process const&) = delete;
    ~terminal_process();

    /// Press keys, as `\x03` for Ctrl-C.
    void type(std::string const& keys) const;
    /// Read on until the terminal has shown this text. \return all that it has shown
    std::string const& read_until(std::string const& text);
    /// Read on to the end. \return the exit status, or 128 and the number of the signal
    int finish();
    /// All that the terminal has shown.
    [[nodiscard]] std::string const& shown() const noexcept { return shown_; }

private:
    bool read_more();

    pid_t pid_ = -1;
    int terminal_ = -1;
    std::string shown_;
};

} // namespace iohost_support
