#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include "value_image.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <utility>

/// \file
/// Values whose index is, or becomes, illegal. Their destruction raises, so they stand in storage
/// of their own and are destroyed only where a test says so.

namespace values_test {

/// A value that is never destroyed by itself. What it owns at the end must be given back by
/// `destroy`.
class raw_value {
public:
    template <class... Arguments>
    explicit raw_value(Arguments&&... arguments)
        : value_(::new (static_cast<void*>(storage_))
                     tavi::ioapi::v2::io_value(std::forward<Arguments>(arguments)...)) {}
    raw_value(raw_value const&) = delete;
    raw_value& operator=(raw_value const&) = delete;

    tavi::ioapi::v2::io_value& operator*() noexcept { return *value_; }
    tavi::ioapi::v2::io_value* operator->() noexcept { return value_; }
    void destroy() { value_->~io_value(); }

private:
    alignas(tavi::ioapi::v2::io_value) unsigned char storage_[sizeof(tavi::ioapi::v2::io_value)];
    tavi::ioapi::v2::io_value* value_;
};

/// Overwrite the index of a value, as corrupt memory would.
inline void corrupt_index(tavi::ioapi::v2::io_value& value, int index) {
    std::memcpy(reinterpret_cast<unsigned char*>(&value) + index_offset, &index, sizeof index);
}

/// Whether `action` raises a `char const*` that points to the empty text.
template <class Action>
::testing::AssertionResult raises_empty_text(Action action) {
    try {
        action();
    } catch (char const* text) {
        if (*text == '\0') return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "raised the text " << text;
    } catch (...) {
        return ::testing::AssertionFailure() << "raised something else";
    }
    return ::testing::AssertionFailure() << "raised nothing";
}

} // namespace values_test
