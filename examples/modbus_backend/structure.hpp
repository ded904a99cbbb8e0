#pragma once

#include <tavi/ioapi/v2/io_object.hpp>

#include "variable_type.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace modbus_backend {

/// A named place within a structure.
struct member {
    std::string name;
    unsigned int offset = 0; ///< in registers, from the first of the structure
    variable_type type;
};

/// What several variables may have in common: named members in registers.
struct structure {
    std::string name;
    std::string description;     ///< for people
    std::vector<member> members; ///< at least one
    unsigned int width = 0;      ///< how many registers it takes, gaps included
    /// An instance without values, under the type that the host gave. None before the structure is
    /// registered.
    std::optional<tavi::ioapi::v2::io_object> blank{};
};

using structure_list = std::vector<std::shared_ptr<structure>>;

} // namespace modbus_backend
