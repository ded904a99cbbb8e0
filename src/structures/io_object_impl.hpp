#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <functional>
#include <map>
#include <string>

namespace tavi::ioapi::v2 {

/// What an object holds: its own type, the description of its members, and the members that are
/// set, ordered by key. A structure may declare members that are not set, and with free keys a
/// member may be set that the structure does not know.
class io_object_impl {
public:
    io_object_impl(io_data_type type, io_structure_type structure);

    TAVI_IOAPI_API io_data_type type() const noexcept;

private:
    io_data_type type_;
    io_structure_type structure_;
    std::map<std::string, io_value, std::less<>> values_;
};

} // namespace tavi::ioapi::v2
