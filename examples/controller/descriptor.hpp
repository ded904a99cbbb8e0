#pragma once

#include <unistd.h>

#include <utility>

namespace station {

/// Owns a file descriptor.
class descriptor {
public:
    descriptor() noexcept = default;
    explicit descriptor(int number) noexcept : number_(number) {}
    descriptor(descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    descriptor& operator=(descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~descriptor() {
        if (number_ >= 0) ::close(number_);
    }

    [[nodiscard]] int get() const noexcept { return number_; }

private:
    int number_ = -1;
};

} // namespace station
