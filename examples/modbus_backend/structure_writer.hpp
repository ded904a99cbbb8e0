#pragma once

#include <tavi/ioapi/v2/io_object.hpp>

#include "register_access.hpp"
#include "variable.hpp"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace modbus_backend {

/// A member and the value that it is to have.
struct member_value {
    std::string name;
    tavi::ioapi::v2::io_value value;
};

/// Consecutive registers that are to be written.
struct register_run {
    unsigned int offset; ///< from the first of the structure
    std::vector<std::uint16_t> registers;
};

/// Set members of a structured variable in the object that it holds now, which is read first.
/// \param[out] runs  the registers of these members and no others, by ascending offset
/// \return code 0; else, with diagnostics, why the structure could not be read, what
/// `io_object::set` says of a member (`invalid_property` where there is none of its name), or why
/// `encode` refuses a value
[[nodiscard]] tavi::ioapi::v2::io_error set_members(variable const& whole,
                                                    std::span<member_value const> given,
                                                    register_access& controller,
                                                    std::vector<register_run>& runs);

} // namespace modbus_backend
