#pragma once

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/make_object_implementation.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavi::ioapi::v2 {

/// The list: a vector sorted by key, each key once. Exported whole, with its table.
class TAVI_IOAPI_API io_error_diagnostics_generic::impl final
    : public make_object_implementation<interfaces::io_error_diagnostics_impl> {
public:
    using diagnostic_entry = std::pair<std::string, io_value>;
    using entries = std::vector<diagnostic_entry>;
    class iterator_impl;

    impl() = default;

    /// By halving; the end where the key is absent.
    entries::iterator find(std::string_view key);
    entries::const_iterator find(std::string_view key) const;

    unsigned int size() const override;
    /// True for a key that is **absent**: what other modules rely on.
    bool has(utility::string_view key) const override;
    io_value get(utility::string_view key) const override;
    interfaces::io_error_diagnostics_impl::iterator_impl* make_iterator() const override;

    void set(std::string_view key, io_value value);
    void remove(std::string_view key);

private:
    entries entries_;
};

/// A position in the list, which it neither owns nor keeps alive.
class TAVI_IOAPI_API io_error_diagnostics_generic::impl::iterator_impl final
    : public interfaces::io_error_diagnostics_impl::iterator_impl {
public:
    using position = entries::const_iterator;

    iterator_impl(position current, position end) noexcept : current_(current), end_(end) {}

    bool advance() override;
    bool equal_to(interfaces::io_error_diagnostics_impl::iterator_impl const& other) const override;
    entry get() const override;
    interfaces::io_error_diagnostics_impl::iterator_impl* clone() const override;
    void release() override;

private:
    position current_;
    position end_;
};

} // namespace tavi::ioapi::v2
