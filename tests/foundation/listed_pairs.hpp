#pragma once

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <string>
#include <utility>
#include <vector>

namespace foundation_test {

using number_pairs = std::vector<std::pair<std::string, int>>;

/// The entries of a list of numbers, in the order in which it is walked.
[[nodiscard]] inline number_pairs pairs_in(
    tavi::ioapi::v2::io_error_diagnostics const& diagnostics) {
    number_pairs found;
    for (auto const& [key, value] : diagnostics) {
        int const* const number = value.get_if<int>();
        found.emplace_back(key.str(), number != nullptr ? *number : -1);
    }
    return found;
}

/// A list of numbers under these keys.
[[nodiscard]] inline tavi::ioapi::v2::io_error_diagnostics_generic list_of(
    number_pairs const& pairs) {
    tavi::ioapi::v2::io_error_diagnostics_generic list;
    for (auto const& [key, number] : pairs) list.set(key, number);
    return list;
}

/// The counted object behind a handle. A handle that is known as one of the library's own lists
/// names its private class where the base names this.
[[nodiscard]] inline tavi::ioapi::v2::interfaces::io_error_diagnostics_impl* impl_behind(
    tavi::ioapi::v2::io_error_diagnostics const& handle) {
    return handle.list();
}

/// The references on the list behind a handle, which must not be null.
[[nodiscard]] inline unsigned int references_of(
    tavi::ioapi::v2::io_error_diagnostics const& handle) {
    handle.list()->add_ref();
    return handle.list()->release();
}

} // namespace foundation_test
