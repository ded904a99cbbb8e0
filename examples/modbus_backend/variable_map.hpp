#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "map_parser.hpp"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace modbus_backend {

/// The variables of a controller by identifier, and their structures: the name of a variable is the
/// primary part, and there is no secondary one.
class variable_map {
public:
    explicit variable_map(map_contents contents);

    /// In the order of the file.
    [[nodiscard]] std::vector<tavi::ioapi::v2::plc_identifier> identifiers() const;

    [[nodiscard]] structure_list const& structures() const noexcept { return contents_.structures; }

    /// \return the variable, or null.
    [[nodiscard]] variable const* find(tavi::ioapi::v2::plc_identifier const& identifier) const;

private:
    map_contents contents_;
    std::unordered_map<tavi::ioapi::v2::plc_identifier, std::size_t> places_;
};

/// \throws setup_error  for a file that cannot be read or does not parse; it names the file
[[nodiscard]] variable_map load_map(std::string const& path);

} // namespace modbus_backend
