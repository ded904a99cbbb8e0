#pragma once

#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include "structure.hpp"

namespace modbus_backend {

/// Add every structure to the dictionary and keep the id that it gives. Where this throws, every
/// structure keeps the id that it had.
void register_structures(structure_list const& structures,
                         tavi::ioapi::v2::io_structure_dictionary& dictionary);

/// Whether a variable of this type can be read: its structure, if it is one, is registered.
[[nodiscard]] bool is_registered(variable_type const& type) noexcept;

} // namespace modbus_backend
