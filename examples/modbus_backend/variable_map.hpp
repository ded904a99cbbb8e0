#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "map_parser.hpp"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace modbus_backend {

/// The variables of a controller by identifier, and their structures: the name of a variable is the
/// primary part, and the secondary one the name of a member where it is structured.
class variable_map {
public:
    explicit variable_map(map_contents contents);
    variable_map(variable_map const&) = delete;
    variable_map(variable_map&&) = default;
    variable_map& operator=(variable_map const&) = delete;
    variable_map& operator=(variable_map&&) = default;
    ~variable_map() = default;

    /// In the order of the file, without the members.
    [[nodiscard]] std::vector<variable> const& variables() const noexcept {
        return contents_.variables;
    }

    [[nodiscard]] structure_list const& structures() const noexcept { return contents_.structures; }

    /// \return the variable, which for a member stands for its place alone and is called as
    /// `pump1.state/speed`; or null.
    [[nodiscard]] variable const* find(tavi::ioapi::v2::plc_identifier const& identifier) const;

private:
    map_contents contents_;
    std::vector<variable> members_;
    std::unordered_map<tavi::ioapi::v2::plc_identifier, variable const*> places_;
};

/// \param orders  those of the lines that state none
/// \throws setup_error  for a file that cannot be read or does not parse; it names the file
[[nodiscard]] variable_map load_map(std::string const& path, part_orders orders);

} // namespace modbus_backend
