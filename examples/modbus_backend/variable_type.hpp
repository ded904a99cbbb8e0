#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>

#include <memory>

namespace modbus_backend {

struct structure;

/// `object` stands for a structure.
using value_type = tavi::ioapi::v2::io_data_type::basic_types;

/// Which part comes first. On the wire a register has its high byte first, so `big` is the
/// default for bytes; values of several registers follow no standard, and `big` is the most usual.
enum class part_order { big, little };

/// The orders of one value, or those of a whole map where its lines state none.
struct part_orders {
    part_order bytes = part_order::big;
    part_order words = part_order::big;
};

/// What stands at a place: one value, an array of values, or a structure.
struct variable_type {
    value_type element = value_type::u16; ///< of the value, or of each element
    unsigned int element_width = 1;       ///< how many bits or registers each takes
    unsigned int count = 0;               ///< of elements; 0 for what is no array
    part_order bytes = part_order::big;
    part_order words = part_order::big;         ///< within each element
    std::shared_ptr<structure const> members{}; ///< null for what is no structure

    /// How many bits or registers it takes.
    [[nodiscard]] unsigned int width() const noexcept {
        return count == 0 ? element_width : count * element_width;
    }
};

} // namespace modbus_backend
