#include "variable_map.hpp"

#include "setup_error.hpp"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;

namespace {

variable place_of(member const& part, variable const& whole) {
    variable place = whole;
    place.name += "/" + part.name;
    place.address += part.offset;
    place.type = part.type;
    return place;
}

setup_error unreadable(std::string const& path, std::string const& reason) {
    return {modbus_errc::bad_map, "cannot read the map '" + path + "': " + reason};
}

// Reading from a pipe or a device might never end. A directory fails by itself.
void require_file(std::string const& path) {
    std::error_code ignored;
    auto const type = std::filesystem::status(path, ignored).type();
    using file_type = std::filesystem::file_type;
    bool const is_endless = type == file_type::fifo || type == file_type::character ||
                            type == file_type::block || type == file_type::socket;
    if (is_endless) throw unreadable(path, "it is no file");
}

} // namespace

// The members are numbered before they are found by address: a list that grows moves them.
variable_map::variable_map(map_contents contents) : contents_(std::move(contents)) {
    std::vector<v2::plc_identifier> names;
    for (auto const& whole : contents_.variables) {
        places_.emplace(v2::plc_identifier(whole.name), &whole);
        if (whole.type.members == nullptr) continue;
        for (auto const& part : whole.type.members->members) {
            members_.push_back(place_of(part, whole));
            names.emplace_back(whole.name, part.name);
        }
    }
    for (std::size_t i = 0; i < names.size(); ++i) places_.emplace(names[i], &members_[i]);
}

variable const* variable_map::find(v2::plc_identifier const& identifier) const {
    auto const place = places_.find(identifier);
    return place == places_.end() ? nullptr : place->second;
}

variable_map load_map(std::string const& path, part_orders orders) {
    require_file(path);
    auto const failed = [&path] {
        return unreadable(path, std::generic_category().message(errno));
    };
    std::ifstream file(path);
    if (!file) throw failed();
    try {
        variable_map map(parse_map(file, orders));
        // A directory opens like a file and fails only here.
        if (file.bad()) throw failed();
        return map;
    } catch (map_error const& error) {
        throw setup_error(modbus_errc::bad_map, path + ": " + error.what());
    }
}

} // namespace modbus_backend
