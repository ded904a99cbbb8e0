#include "members.hpp"

#include <string_view>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

// The part before the next dot, and the rest behind it.
std::string_view take_part(std::string_view& path) {
    auto const dot = path.find('.');
    auto const part = path.substr(0, dot);
    path.remove_prefix(dot == std::string_view::npos ? path.size() : dot + 1);
    return part;
}

} // namespace

bool has_member(v2::io_data_type const& type,
                v2::plc_identifier_part const& member,
                structures const& known) {
    if (member.is_none()) return true;
    if (member.kind() != v2::plc_identifier_kind::text) return false;
    std::string_view path = member.text();
    if (path.empty() || path.back() == '.') return false;
    auto at = type;
    while (!path.empty()) {
        auto const* const structure = at.is_array() ? nullptr : known.find(at);
        auto const part = take_part(path);
        if (structure == nullptr || !structure->has(part)) return false;
        at = structure->get_type(part);
    }
    return true;
}

v2::io_value member_of(v2::io_value value, v2::plc_identifier_part const& member) {
    std::string_view path = member.text();
    while (!path.empty()) {
        auto const* const object = value.get_if<v2::io_object>();
        if (object == nullptr) throw v2::io_exception(v2::io_errc::not_found);
        value = object->get(take_part(path));
    }
    return value;
}

} // namespace linux_backend
