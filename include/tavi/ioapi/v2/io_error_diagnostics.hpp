#pragma once

#include "api.hpp"
#include "interfaces/io_error_diagnostics_impl.hpp"
#include "utility/string_view.hpp"

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

class io_error;

/// What an error can tell beyond its code: values under keys, in the order of the keys as unsigned
/// bytes, the shorter key first. This is the read view; `io_error_diagnostics_generic` makes such
/// lists, and other modules may implement their own.
///
/// One counted reference, or null, which reads as an empty list. Copies share the list and see its
/// changes; there is no move. Only the count is safe from several threads.
class io_error_diagnostics {
public:
    class const_iterator;

    /// Null.
    io_error_diagnostics() noexcept = default;

    /// Share `list`, or null: one reference is added, the caller keeps his.
    explicit io_error_diagnostics(interfaces::io_error_diagnostics_impl* list) noexcept
        : impl_(list) {
        add_ref();
    }

    io_error_diagnostics(io_error_diagnostics const& other) noexcept : impl_(other.impl_) {
        add_ref();
    }
    /// Drops the list held and shares that of `other`.
    io_error_diagnostics& operator=(io_error_diagnostics const& other) noexcept {
        io_error_diagnostics shared(other);
        std::swap(impl_, shared.impl_);
        return *this;
    }
    ~io_error_diagnostics() {
        if (impl_ != nullptr) impl_->release();
    }

    /// The number of entries.
    [[nodiscard]] TAVI_IOAPI_API unsigned int size() const;
    /// Whether there are no entries.
    [[nodiscard]] bool empty() const { return size() == 0; }

    /// **Not a test for presence**; that is `contains`. What the list itself answers: the
    /// library's own says true for a key that is absent and false for one that is present. A null
    /// list says false.
    [[nodiscard]] TAVI_IOAPI_API bool has(utility::string_view key) const;

    /// Whether there is an entry under `key`. Linear in the entries; allocates an iterator.
    /// \throws std::bad_alloc
    [[nodiscard]] inline bool contains(utility::string_view key) const;

    /// A copy of the value under `key`, or the empty value. \throws std::bad_alloc
    [[nodiscard]] TAVI_IOAPI_API io_value get(utility::string_view key) const;

    /// The entries in order; `begin` allocates. Iterators end with the next change of the list, and
    /// with the last handle or error that holds it: they do not keep it alive.
    /// \throws std::bad_alloc
    [[nodiscard]] TAVI_IOAPI_API const_iterator begin() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API const_iterator end() const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// The counted object behind this handle, or null. It stays this handle's.
    [[nodiscard]] interfaces::io_error_diagnostics_impl* list() const noexcept { return impl_; }

protected:
    struct adopted {};
    /// Take over the reference that the caller holds.
    io_error_diagnostics(adopted, interfaces::io_error_diagnostics_impl* list) noexcept
        : impl_(list) {}

private:
    friend class io_error;

    void add_ref() const noexcept {
        if (impl_ != nullptr) impl_->add_ref();
    }

    interfaces::io_error_diagnostics_impl* impl_ = nullptr;
};

/// Walks the entries. Owns its position, and the end is a null position; copies allocate.
class io_error_diagnostics::const_iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using difference_type = std::ptrdiff_t;
    using pointer = void;

    /// One entry; what it refers to lives until the list changes.
    struct reference {
        utility::string_view key; ///< of this entry
        io_value const& value;    ///< under that key
    };
    using value_type = reference;

    /// The end.
    const_iterator() noexcept = default;
    /// Takes over `position`, which must not stand at the end of its list; null is the end.
    explicit const_iterator(interfaces::io_error_diagnostics_impl::iterator_impl* position) noexcept
        : position_(position) {}

    const_iterator(const_iterator const& other)
        : position_(other.position_ != nullptr ? other.position_->clone() : nullptr) {}
    /// Leaves the end behind.
    const_iterator(const_iterator&& other) noexcept
        : position_(std::exchange(other.position_, nullptr)) {}
    const_iterator& operator=(const_iterator const& other) {
        const_iterator copy(other);
        std::swap(position_, copy.position_);
        return *this;
    }
    const_iterator& operator=(const_iterator&& other) noexcept {
        const_iterator taken(std::move(other));
        std::swap(position_, taken.position_);
        return *this;
    }
    ~const_iterator() { release(); }

    const_iterator& operator++() {
        if (!position_->advance()) release();
        return *this;
    }
    const_iterator operator++(int) {
        const_iterator before(*this);
        ++*this;
        return before;
    }

    /// The entry at this place, which must not be the end.
    [[nodiscard]] reference operator*() const {
        auto const entry = position_->get();
        return {entry.key, *entry.value};
    }

    /// Both at the end, or both at one place of one list.
    [[nodiscard]] bool operator==(const_iterator const& other) const {
        if (position_ == nullptr || other.position_ == nullptr) return position_ == other.position_;
        return position_->equal_to(*other.position_);
    }
    [[nodiscard]] bool operator!=(const_iterator const& other) const { return !(*this == other); }

private:
    void release() noexcept {
        if (position_ != nullptr) std::exchange(position_, nullptr)->release();
    }

    interfaces::io_error_diagnostics_impl::iterator_impl* position_ = nullptr;
};

inline bool io_error_diagnostics::contains(utility::string_view key) const {
    auto const last = end();
    for (auto at = begin(); at != last; ++at) {
        if ((*at).key == key) return true;
    }
    return false;
}

/// Keys that backends and hosts agree on where they fit; any other key is as good.
namespace diagnostics_key {

constexpr char const* operation = "operation";     ///< what was tried, a text
constexpr char const* address = "address";         ///< where on the controller
constexpr char const* index = "index";             ///< which of several, from 0
constexpr char const* source_type = "source_type"; ///< what was to be converted, a text
constexpr char const* target_type = "target_type"; ///< what to, a text
constexpr char const* device_code = "device_code"; ///< the controller's own number
constexpr char const* device_text = "device_text"; ///< the controller's own words

} // namespace diagnostics_key

static_assert(sizeof(io_error_diagnostics) == sizeof(void*), "a handle is one pointer");
static_assert(std::is_nothrow_copy_constructible_v<io_error_diagnostics>);

} // namespace tavi::ioapi::v2
