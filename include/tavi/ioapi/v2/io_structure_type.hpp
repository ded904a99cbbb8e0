#pragma once

#include "api.hpp"
#include "detail/deep_ptr.hpp"
#include "io_data_type.hpp"
#include "utility/pair.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"

#include <cstddef>
#include <initializer_list>
#include <iterator>

namespace tavi::ioapi::v2 {

/// The shape of a structured value: a name, and the type that each member must have. It holds no
/// values and no id; an id comes from registering it.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Members are
/// ordered by name, as unsigned bytes, the shorter name first. Not synchronised.
class TAVI_IOAPI_API io_structure_type {
public:
    class impl;
    class const_iterator;
    /// A name and the type of what stands under it.
    using member = utility::pair<utility::string, io_data_type>;

    /// No name, no members. \throws std::bad_alloc, as all constructors and copies
    io_structure_type();
    /// A name, no members.
    explicit io_structure_type(utility::string name);
    /// No name; `set_member` for each pair, in order.
    io_structure_type(std::initializer_list<member const> members);
    /// A name; `set_member` for each pair, in order.
    io_structure_type(utility::string name, std::initializer_list<member const> members);

    /// Copies are deep. Assignment is in place: when memory is exhausted the target may hold a part
    /// of each.
    io_structure_type(io_structure_type const&);
    io_structure_type(io_structure_type&&) noexcept;
    io_structure_type& operator=(io_structure_type const&);
    io_structure_type& operator=(io_structure_type&&) noexcept;
    ~io_structure_type();

    /// The name as given; it is never interpreted. Valid until the type is changed or destroyed.
    [[nodiscard]] utility::string_view name() const TAVI_IOAPI_LIFETIMEBOUND;

    /// Add a member, or replace the type of the member of that name. Every name, the empty one too,
    /// and every type is accepted. Logarithmic in the members. \throws std::bad_alloc
    void set_member(utility::string_view name, io_data_type const& type);

    /// Whether there is a member of exactly this name. Logarithmic, no allocation.
    [[nodiscard]] bool has_member(utility::string_view name) const noexcept;

    /// The type of a member; for an unknown name the type whose fields are all 0, which a member
    /// may also have been given: `has_member` tells them apart. Logarithmic, no allocation.
    [[nodiscard]] io_data_type get_member(utility::string_view name) const noexcept;

    /// Remove all members; the name stays.
    void clear() noexcept;

    /// The members in the order of their names. \throws std::bad_alloc
    [[nodiscard]] const_iterator begin() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] const_iterator end() const TAVI_IOAPI_LIFETIMEBOUND;
    /// Whether there are no members. Makes two iterators. \throws std::bad_alloc
    [[nodiscard]] inline bool empty() const;

private:
    detail::deep_ptr<impl> impl_;
};

/// Walks the members of a structure type in the order of their names and gives each as a copy,
/// which outlives the iterator. Owns its position; copies are deep and allocate. Valid until the
/// type is cleared, assigned to or destroyed; `set_member` leaves it valid. A moved-from iterator
/// may only be destroyed or assigned to.
class TAVI_IOAPI_API io_structure_type::const_iterator {
public:
    class impl;
    using iterator_category = std::input_iterator_tag;
    using value_type = utility::pair<utility::string, io_data_type>;
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
    /// A copy of the name and of the type. \throws std::bad_alloc
    [[nodiscard]] value_type operator*() const;
    /// Whether both stand at the same member.
    [[nodiscard]] bool operator==(const_iterator const& other) const noexcept;
    [[nodiscard]] bool operator!=(const_iterator const& other) const noexcept;

private:
    detail::deep_ptr<impl> impl_;
};

inline bool io_structure_type::empty() const {
    return begin() == end();
}

static_assert(sizeof(io_structure_type) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2
