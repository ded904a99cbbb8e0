#pragma once

#include "api.hpp"
#include "detail/data_model.hpp"
#include "io_data_type.hpp"
#include "io_error.hpp"
#include "plc_identifier.hpp"
#include "subscription_id.hpp"

#include <cstddef>
#include <iterator>
#include <utility>

namespace tavi::ioapi::v2 {

/// What a backend fills in when its host subscribes to variables: for each identifier a data type
/// and an id, or an error. It starts empty, and the backend sets what it has done.
///
/// A map in the order of `plc_identifier`, which reads the primary part alone: identifiers that
/// differ only in the secondary part share one entry, which shows the one that was set last.
///
/// A handle that owns its content alone; it can be moved but not copied. A moved-from result may
/// only be destroyed or assigned to. Lookups are logarithmic and allocate nothing. Not
/// synchronised.
class subscription_result {
public:
    class impl;
    class const_iterator;

    /// The answer for one variable.
    struct variable_result {
        plc_identifier identifier;  ///< as it was set last
        io_data_type data_type;     ///< of the variable; all 0 beside an error
        io_error error;             ///< the outcome of subscribing to it
        unsigned int aux_value = 0; ///< for backend and host to agree on; the library only keeps it
        subscription_id id;         ///< of kind `none` beside an error

        /// Whether the error is none. The record of `not_found` says so, too.
        [[nodiscard]] bool ok() const noexcept { return error.ok(); }
    };
    using value_type = variable_result;

    /// No entries. \throws std::bad_alloc
    TAVI_IOAPI_API subscription_result();
    subscription_result(subscription_result const&) = delete;
    subscription_result(subscription_result&& other) noexcept
        : impl_(std::exchange(other.impl_, nullptr)) {}
    subscription_result& operator=(subscription_result const&) = delete;
    subscription_result& operator=(subscription_result&& other) noexcept {
        subscription_result taken(std::move(other));
        std::swap(impl_, taken.impl_);
        return *this;
    }
    TAVI_IOAPI_API ~subscription_result();

    /// Store that a variable is subscribed to, in place of what was stored for it.
    /// \param id  taken over in every case
    /// \throws std::bad_alloc; then the result is as it was
    TAVI_IOAPI_API void set(plc_identifier const& identifier,
                            io_data_type data_type,
                            unsigned int aux_value,
                            subscription_id id);
    /// Store an error, in place of what was stored for the variable.
    /// \throws std::bad_alloc; then the result is as it was
    TAVI_IOAPI_API void set(plc_identifier const& identifier, io_error error);

    /// Remove an entry. \return how many there were, 0 or 1
    TAVI_IOAPI_API unsigned int remove(plc_identifier const& identifier);

    /// Whether there is an entry.
    [[nodiscard]] TAVI_IOAPI_API bool has(plc_identifier const& identifier) const;

    /// The entry, or `not_found()`. Valid until the entry is removed or the result destroyed; a
    /// `set` for the same variable changes it in place.
    [[nodiscard]] TAVI_IOAPI_API variable_result const& get(plc_identifier const& identifier) const
        TAVI_IOAPI_LIFETIMEBOUND;
    /// The same as `get`.
    [[nodiscard]] TAVI_IOAPI_API variable_result const& operator[](
        plc_identifier const& identifier) const TAVI_IOAPI_LIFETIMEBOUND;

    /// The one record that answers for every absent identifier. It has no identifier, and its
    /// **error says success**: tell it by `has` or `is_not_found`. It lives as long as the library.
    [[nodiscard]] TAVI_IOAPI_API static variable_result const& not_found() noexcept;
    /// Whether `result` is that record, by its address.
    [[nodiscard]] static bool is_not_found(variable_result const& result) noexcept {
        return &result == &not_found();
    }

    /// The entries in order; each call allocates. An iterator lives until its entry is removed or
    /// the result destroyed. \throws std::bad_alloc
    [[nodiscard]] TAVI_IOAPI_API const_iterator begin() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] TAVI_IOAPI_API const_iterator end() const TAVI_IOAPI_LIFETIMEBOUND;
    /// Whether there are no entries. \throws std::bad_alloc
    [[nodiscard]] inline bool empty() const;

private:
    impl* impl_;
};

/// Walks the entries in order. It owns its position. Step with `++at`, which allocates nothing.
///
/// **It departs from the other iterators on purpose, in both assignments:**
/// - a moved-from iterator may be destroyed or move-assigned, but copy-assigning a live one to it
///   reads a null pointer;
/// - move assignment drops the position that the target had without freeing it, one small block
///   each time. Declare a new iterator instead of moving to one.
class subscription_result::const_iterator {
public:
    class impl;
    using iterator_category = std::input_iterator_tag;
    using value_type = variable_result;
    using difference_type = std::ptrdiff_t;
    using pointer = variable_result const*;
    using reference = variable_result const&;

    /// Takes over `position`, made by the library.
    TAVI_IOAPI_API explicit const_iterator(impl* position) noexcept;
    /// \throws std::bad_alloc
    TAVI_IOAPI_API const_iterator(const_iterator const& other);
    TAVI_IOAPI_API const_iterator(const_iterator&& other) noexcept;
    /// Takes over the place, without an allocation; from a moved-from one, becomes such itself.
    TAVI_IOAPI_API const_iterator& operator=(const_iterator const& other);
    TAVI_IOAPI_API const_iterator& operator=(const_iterator&& other) noexcept;
    TAVI_IOAPI_API ~const_iterator();

    TAVI_IOAPI_API const_iterator& operator++();
    /// \throws std::bad_alloc
    TAVI_IOAPI_API const_iterator operator++(int);

    /// Whether both stand at the same entry, or both are moved-from.
    [[nodiscard]] TAVI_IOAPI_API bool operator==(const_iterator const& other) const;
    [[nodiscard]] TAVI_IOAPI_API bool operator!=(const_iterator const& other) const;

    /// The entry, not a pair of key and entry.
    [[nodiscard]] TAVI_IOAPI_API variable_result const& operator*() const;
    /// Its address.
    [[nodiscard]] TAVI_IOAPI_API variable_result const* operator->() const;

private:
    impl* impl_;
};

inline bool subscription_result::empty() const {
    return begin() == end();
}

static_assert(sizeof(subscription_result) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

template <>
struct layout_of<subscription_result::variable_result> {
    using entry = subscription_result::variable_result;
    static_assert(sizeof(entry) == by_data_model(104, 136));
    static_assert(offsetof(entry, identifier) == 0);
    static_assert(offsetof(entry, data_type) == by_data_model(48, 64));
    static_assert(offsetof(entry, error) == by_data_model(72, 88));
    static_assert(offsetof(entry, aux_value) == by_data_model(84, 112));
    static_assert(offsetof(entry, id) == by_data_model(88, 120));
};

} // namespace tavi::ioapi::v2::detail
