#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <memory>
#include <utility>

namespace whole_values {

/// A constant value as a member of fixtures and test parameters: their destructors must not throw,
/// while that of a value may.
class held_value {
public:
    template <class T>
    held_value(T value)
        : value_(std::make_shared<tavi::ioapi::v2::io_value const>(std::move(value))) {}

    tavi::ioapi::v2::io_value const& operator*() const noexcept { return *value_; }
    tavi::ioapi::v2::io_value const* operator->() const noexcept { return value_.get(); }

private:
    std::shared_ptr<tavi::ioapi::v2::io_value const> value_;
};

} // namespace whole_values
