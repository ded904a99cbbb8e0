#pragma once

#include "api.hpp"
#include "detail/deep_ptr.hpp"
#include "io_data_type.hpp"
#include "io_structure_type.hpp"
#include "utility/pair.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"

#include <cstddef>
#include <iterator>

namespace tavi::ioapi::v2 {

class io_error;
class io_object_impl;
class io_value;

namespace detail {
struct object_access;
}

/// A structured value: named members, each an `io_value`, described by an `io_structure_type` of
/// its own. The structure id chooses between two modes:
///
/// - **Known keys** (not 0): only members that the structure declares may be touched, and one that
///   was never set reads as the empty value.
/// - **Free keys** (0): every key is taken, and one that is absent is an error.
///
/// In both, a value set under a key that the structure declares is converted to the declared type
/// first, or refused. Lookups are logarithmic in the members and allocate nothing for the key.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API io_object {
public:
    class const_iterator;

    /// Free keys, an empty structure: type `object` with the id 0. \throws std::bad_alloc, as all
    /// constructors and copies
    io_object();
    /// An instance of the structure that is registered under `structure_id`.
    io_object(unsigned long long structure_id, io_structure_type structure);
    /// An object of a type as given, unchecked.
    io_object(io_data_type type, io_structure_type structure);

    /// Copies are deep. Assignment is in place: when memory is exhausted the target may hold a part
    /// of each.
    io_object(io_object const&);
    io_object(io_object&&) noexcept;
    io_object& operator=(io_object const&);
    io_object& operator=(io_object&&) noexcept;
    ~io_object();

    /// The object's own type, whose `structure_id` says which keys it takes.
    [[nodiscard]] io_data_type type() const noexcept;

    /// With known keys whether the structure declares `key`, set or not; with free keys whether it
    /// is set.
    [[nodiscard]] bool has(utility::string_view key) const noexcept;

    /// A copy of the member under `key`.
    /// \param[out] error  cleared, or `invalid_property` (2): known keys, not declared;
    ///     `not_found` (1): free keys, not set
    /// \return the empty value also for a declared member that is not set, with success
    /// \throws std::bad_alloc
    [[nodiscard]] io_value get(utility::string_view key, io_error& error) const;
    /// \throws io_exception  with the error that the other form reports
    [[nodiscard]] inline io_value get(utility::string_view key) const;

    /// With known keys the declared type of `key`, set or not; with free keys the type of the value
    /// set. The type whose fields are all 0 where there is none.
    [[nodiscard]] io_data_type get_type(utility::string_view key) const noexcept;

    /// Set a member. Where the structure declares `key` and the value is of another type, it is
    /// converted; a value of the declared type goes in as it is stored. After an error nothing has
    /// changed.
    /// \param[out] error  cleared, or `invalid_property` (2): known keys, not declared;
    ///     `incompatible_type` (3): the value does not convert to the declared type, for whatever
    ///     reason: a number out of range too, for which `to_variant` says 4. The empty value is
    ///     refused unless `empty` is declared; `remove` takes back what was set. As everywhere, a
    ///     whole number in floating point is clamped and cut (70000.0 in a `u16` is 4464) and an
    ///     empty text is the number 0
    /// \throws std::bad_alloc, and then nothing has changed
    void set(utility::string_view key, io_value value, io_error& error);
    /// \throws io_exception  with the error that the other form reports
    inline void set(utility::string_view key, io_value value);

    /// Remove a member. A declared one that is not set is removed with success.
    /// \param[out] error  cleared, or `invalid_property` (2): known keys, not declared;
    ///     `not_found` (1): free keys, not set
    void remove(utility::string_view key, io_error& error);

    /// The members that are set, in the order of their keys, as unsigned bytes:
    /// `for (auto const& [key, value] : object)`. \throws std::bad_alloc
    [[nodiscard]] const_iterator begin() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] const_iterator end() const TAVI_IOAPI_LIFETIMEBOUND;
    /// Whether no member is set. Makes two iterators. \throws std::bad_alloc
    [[nodiscard]] inline bool empty() const;

private:
    friend struct detail::object_access;

    detail::deep_ptr<io_object_impl> impl_;
};

/// Walks the members of an object that are set in the order of their keys and gives each as a copy,
/// which outlives the iterator. Owns its position; copies are deep and allocate. Valid until the
/// member is removed or the object cleared, assigned to or destroyed. A moved-from iterator may
/// only be destroyed or assigned to.
class TAVI_IOAPI_API io_object::const_iterator {
public:
    class impl;
    using iterator_category = std::input_iterator_tag;
    using value_type = utility::pair<utility::string, io_value>;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = value_type;

    explicit const_iterator(impl const& position);
    const_iterator(const_iterator const&);
    const_iterator(const_iterator&&) noexcept;
    const_iterator& operator=(const_iterator const&);
    const_iterator& operator=(const_iterator&&) noexcept;
    ~const_iterator();

    const_iterator& operator++();
    const_iterator operator++(int);
    /// A copy of the key and of the value. \throws std::bad_alloc
    [[nodiscard]] value_type operator*() const;
    /// Whether both stand at the same member.
    [[nodiscard]] bool operator==(const_iterator const& other) const noexcept;
    [[nodiscard]] bool operator!=(const_iterator const& other) const noexcept;

private:
    detail::deep_ptr<impl> impl_;
};

inline bool io_object::empty() const {
    return begin() == end();
}

static_assert(sizeof(io_object) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2

// Members are values, and a value can be an object: either header brings the other, and what needs
// both complete stands behind the second.
#include "io_value.hpp" // IWYU pragma: keep
