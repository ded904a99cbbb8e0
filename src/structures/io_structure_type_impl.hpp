#pragma once

#include <tavi/ioapi/v2/io_structure_type.hpp>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tavi::ioapi::v2 {

/// What a structure type holds: the name and the members, ordered by name. The transparent
/// comparator lets a lookup do without a string of its own.
class io_structure_type::impl {
public:
    using members = std::map<std::string, io_data_type, std::less<>>;

    impl() = default;
    explicit impl(std::string name);

    TAVI_IOAPI_API std::string_view name() const;
    TAVI_IOAPI_API void set_member(std::string_view name, io_data_type const& type);
    TAVI_IOAPI_API bool has_member(std::string_view name) const noexcept;
    TAVI_IOAPI_API io_data_type get_member(std::string_view name) const noexcept;
    TAVI_IOAPI_API void clear() noexcept;
    TAVI_IOAPI_API members::const_iterator begin() const;
    TAVI_IOAPI_API members::const_iterator end() const;

private:
    std::string name_;
    members members_;
};

/// A position among the members.
class io_structure_type::const_iterator::impl {
public:
    explicit impl(io_structure_type::impl::members::const_iterator position);

    TAVI_IOAPI_API value_type get() const;
    TAVI_IOAPI_API void increment();
    TAVI_IOAPI_API bool equal(impl const& other) const noexcept;

private:
    io_structure_type::impl::members::const_iterator position_;
};

} // namespace tavi::ioapi::v2
