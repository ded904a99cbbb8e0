#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace test_support {

/// How a process ended and what it wrote.
struct finished_process {
    int status = -1; ///< exit status, or 128 and the number of the signal that ended it
    std::string out;
    std::string err;
};

/// A program that was started here and does not outlive this object. Where it says nothing for a
/// minute, reading from it raises `std::runtime_error`.
class child_process {
public:
    explicit child_process(std::vector<std::string> const& command);
    child_process(child_process const&) = delete;
    child_process& operator=(child_process const&) = delete;
    ~child_process();

    /// The next line of its standard output, without the line feed.
    [[nodiscard]] std::string read_line();
    void send(int signal) const;
    /// Read on until its standard output ends, then wait for its own end.
    finished_process finish();
    /// Read on until its standard output ends, which other processes may still hold.
    [[nodiscard]] std::string read_rest();
    void wait();

private:
    bool read_more();

    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
    int status_ = -1;
    std::string unread_;
};

/// Run a program to its end.
[[nodiscard]] finished_process run(std::vector<std::string> const& command);

} // namespace test_support
