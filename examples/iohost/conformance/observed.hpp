#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include "../host_services.hpp"

#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace iohost::conformance {

/// What is seen on the way, in whichever operation it was, and judged in the end.
class observed {
public:
    /// Call an operation with an error that says something else already. \return what it set
    template <class Operation>
    [[nodiscard]] tavi::ioapi::v2::io_error call(char const* name, Operation operation) {
        auto error = stale_error();
        operation(error);
        judge(name, error);
        return error;
    }

    /// Look at the error of an entry.
    void entry(char const* operation, tavi::ioapi::v2::io_error const& error);
    /// Look at a record of the log; from any thread.
    void record(host_services::level level, std::string_view text);

    [[nodiscard]] std::vector<std::string> const& uncleared() const noexcept { return uncleared_; }
    [[nodiscard]] std::vector<std::string> const& unexplained() const noexcept {
        return unexplained_;
    }
    [[nodiscard]] std::vector<std::string> odd_records() const;
    [[nodiscard]] std::size_t calls() const noexcept { return calls_; }
    [[nodiscard]] std::size_t errors() const noexcept { return errors_; }
    [[nodiscard]] std::size_t records() const;

private:
    [[nodiscard]] static tavi::ioapi::v2::io_error stale_error();
    void judge(char const* operation, tavi::ioapi::v2::io_error& error);

    std::vector<std::string> uncleared_;
    std::vector<std::string> unexplained_;
    std::size_t calls_ = 0;
    std::size_t errors_ = 0;

    mutable std::mutex records_guard_; ///< of the two below
    std::vector<std::string> odd_records_;
    std::size_t records_ = 0;
};

} // namespace iohost::conformance
