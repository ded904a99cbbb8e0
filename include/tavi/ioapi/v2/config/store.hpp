#pragma once

#include "../api.hpp"
#include "../detail/deep_ptr.hpp"
#include "../io_value.hpp"
#include "../utility/array.hpp"
#include "../utility/string_view.hpp"
#include "option.hpp"

namespace tavi::ioapi::v2::config {

/// The values of a backend's configuration, each under the key of its option. It knows nothing of
/// options: neither keys nor types are checked. Keys are ordered as unsigned bytes, the shorter key
/// first. Lookups are logarithmic.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API store {
public:
    class impl;

    /// No values. \throws std::bad_alloc
    store();

    store(store const&);
    store(store&&) noexcept;
    /// When memory is exhausted the target is left with a part of the values or none.
    store& operator=(store const&);
    store& operator=(store&&) noexcept;
    ~store();

    /// Put a value, be it empty, under a key, in place of the one that may be there.
    /// \throws std::bad_alloc; then the store is as it was
    void set(utility::string_view key, io_value value);

    /// Whether there is a value, be it empty, under the key.
    [[nodiscard]] bool has(utility::string_view key) const noexcept;

    /// A copy of the value under the key, or the empty value. \throws std::bad_alloc
    [[nodiscard]] io_value get(utility::string_view key) const;
    /// A copy of the value under the key, or of `default_value`. \throws std::bad_alloc
    [[nodiscard]] io_value get(utility::string_view key, io_value const& default_value) const;

    /// Remove the value under the key. \return whether there was one
    bool remove(utility::string_view key);

    /// All keys in order. The views live until their entry is removed, or the store assigned to or
    /// destroyed. \throws std::bad_alloc
    [[nodiscard]] utility::array<utility::string_view> keys() const TAVI_IOAPI_LIFETIMEBOUND;

private:
    detail::deep_ptr<impl> impl_;
};

/// \return the value that a store holds for an option, be it empty, or the option's default, or the
/// empty value. \throws std::bad_alloc
[[nodiscard]] inline io_value get_or_default(store const& values, option const& option) {
    return values.get(option.key(), option.default_value());
}

static_assert(sizeof(store) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2::config
