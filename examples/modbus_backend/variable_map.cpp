#include "variable_map.hpp"

#include "setup_error.hpp"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;

variable_map::variable_map(map_contents contents) : contents_(std::move(contents)) {
    for (std::size_t i = 0; i < contents_.variables.size(); ++i) {
        places_.emplace(v2::plc_identifier(contents_.variables[i].name), i);
    }
}

std::vector<v2::plc_identifier> variable_map::identifiers() const {
    std::vector<v2::plc_identifier> all;
    all.reserve(contents_.variables.size());
    for (auto const& described : contents_.variables) all.emplace_back(described.name);
    return all;
}

variable const* variable_map::find(v2::plc_identifier const& identifier) const {
    auto const place = places_.find(identifier);
    return place == places_.end() ? nullptr : &contents_.variables[place->second];
}

variable_map load_map(std::string const& path) {
    auto const unreadable = [&path] {
        return setup_error(modbus_errc::bad_map, "cannot read the map '" + path + "': " +
                                                     std::generic_category().message(errno));
    };
    std::ifstream file(path);
    if (!file) throw unreadable();
    try {
        variable_map map(parse_map(file));
        // A directory opens like a file and fails only here.
        if (file.bad()) throw unreadable();
        return map;
    } catch (map_error const& error) {
        throw setup_error(modbus_errc::bad_map, path + ": " + error.what());
    }
}

} // namespace modbus_backend
