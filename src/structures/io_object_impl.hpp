#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tavi::ioapi::v2 {

/// What an object holds: its own type, the description of its members, and the members that are
/// set, ordered by key. A structure may declare members that are not set, and with free keys a
/// member may be set that the structure does not know.
class io_object_impl {
public:
    using members = std::map<std::string, io_value, std::less<>>;

    io_object_impl(io_data_type type, io_structure_type structure);

    TAVI_IOAPI_API io_data_type type() const noexcept;
    /// Whether only declared members may be touched.
    TAVI_IOAPI_API bool only_known_keys() const noexcept;
    TAVI_IOAPI_API bool is_valid_key(std::string_view key) const noexcept;
    /// Whether the key is set, in both modes.
    TAVI_IOAPI_API bool has(std::string_view key) const noexcept;
    TAVI_IOAPI_API io_value get(std::string_view key, io_error& error) const;
    TAVI_IOAPI_API io_data_type get_type(std::string_view key) const noexcept;
    TAVI_IOAPI_API void set(std::string key, io_value value, io_error& error);
    TAVI_IOAPI_API void remove(std::string_view key, io_error& error);
    TAVI_IOAPI_API members::const_iterator begin() const;
    TAVI_IOAPI_API members::const_iterator end() const;

private:
    io_data_type type_;
    io_structure_type structure_;
    members values_;
};

/// A position among the members that are set.
class io_object::const_iterator::impl {
public:
    explicit impl(io_object_impl::members::const_iterator position);

    TAVI_IOAPI_API value_type get() const;
    TAVI_IOAPI_API void increment();
    TAVI_IOAPI_API bool equal(impl const& other) const noexcept;

private:
    io_object_impl::members::const_iterator position_;
};

namespace detail {

struct object_access {
    static io_object_impl const& impl(io_object const& object) { return *object.impl_.get(); }
};

/// \return what `object`, which must not be null, holds: for readers that need no copies.
inline io_object_impl const& impl_of(io_object const& object) {
    return object_access::impl(object);
}

} // namespace detail

} // namespace tavi::ioapi::v2
