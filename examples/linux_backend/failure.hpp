#pragma once

#include "error_category.hpp"

#include <stdexcept>
#include <string>
#include <utility>

namespace linux_backend {

/// Why a text does not give a value. Which file it comes from the caller knows.
class bad_text : public std::runtime_error {
public:
    bad_text(linux_errc code, std::string const& reason)
        : std::runtime_error(reason), code_(code) {}
    explicit bad_text(std::string const& reason) : bad_text(linux_errc::file_malformed, reason) {}

    [[nodiscard]] linux_errc code() const noexcept { return code_; }

private:
    linux_errc code_;
};

/// Why a file does not give a value. It never leaves the module, but as an error in an entry.
class file_failure : public std::runtime_error {
public:
    file_failure(linux_errc code, std::string file, std::string const& reason, int system_code = 0)
        : std::runtime_error(reason),
          code_(code),
          file_(std::move(file)),
          system_code_(system_code) {}

    [[nodiscard]] linux_errc code() const noexcept { return code_; }
    /// The path of the file or folder.
    [[nodiscard]] std::string const& file() const noexcept { return file_; }
    /// What the system answered, an `errno`; 0 where the content is to blame.
    [[nodiscard]] int system_code() const noexcept { return system_code_; }

private:
    linux_errc code_;
    std::string file_;
    int system_code_;
};

} // namespace linux_backend
