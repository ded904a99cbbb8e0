#pragma once

#include <stdexcept>
#include <string>

namespace test_support {

/// \return the text of the length error that `action` raises; empty where it raises none.
template <class Action>
[[nodiscard]] std::string length_error_of(Action action) {
    try {
        action();
    } catch (std::length_error const& error) {
        return error.what();
    }
    return {};
}

} // namespace test_support
