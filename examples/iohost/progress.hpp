#pragma once

#include <cstddef>
#include <string>

namespace iohost {

/// How far a long work has come: one line on standard error, drawn over again and again, and gone
/// when the work is done. Nothing is shown where standard error is no terminal.
class progress {
public:
    /// \param what  such as `variables read`
    explicit progress(std::string what);
    progress(progress const&) = delete;
    progress& operator=(progress const&) = delete;
    ~progress();

    /// Show `done`, and `of` how many where that is not 0.
    void show(std::size_t done, std::size_t of = 0);

private:
    std::string what_;
    bool on_terminal_;
    bool shown_ = false;
};

} // namespace iohost
