#pragma once

#include "structure.hpp"
#include "variable.hpp"

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace modbus_backend {

/// A line that says nothing sensible: `line 3: unknown kind 'coils'`.
class map_error : public std::runtime_error {
public:
    map_error(unsigned int line, std::string const& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

    /// Counted from 1.
    [[nodiscard]] unsigned int line() const noexcept { return line_; }

private:
    unsigned int line_;
};

/// What stands in a map, in its order.
struct map_contents {
    structure_list structures;
    std::vector<variable> variables;
};

/// Read the variables of a controller, one to a line, and the structures that they are of:
///
///     NAME KIND ADDRESS TYPE [OPTION...]
///
///     structure NAME
///       MEMBER OFFSET TYPE [OPTION...]
///       ...
///     end
///
/// The words stand between blanks, and empty lines are skipped. A word that starts with `#` ends
/// the line; what follows it is the description of the variable or structure of that line. Names of
/// variables, of structures, and of the members of one structure are unique; no variable is called
/// `structure` or `end`.
/// - KIND: `coil`, `discrete`, `holding` or `input`
/// - ADDRESS: 0 to 65535, of the first register
/// - OFFSET: 0 to 124, counted from the first register of the structure
/// - TYPE: `boolean` for coils and discrete inputs; for registers `u16`, `i16`, `u32`, `i32`,
///   `u64`, `i64`, `flt`, `dbl`, or `string(N)` for a text in N registers, 1 to 125; each of these
///   with `[N]` for an array, whose elements follow one another; or for registers the name of a
///   structure from above, but not within a structure. A variable is no wider than one request,
///   125 registers or 2000 bits.
/// - OPTION: `byte_order=` or `word_order=`, each `big` or `little`: whether the high byte of a
///   register, and the high register of a number, comes first. In texts the byte order says which
///   byte of a register holds the first of its two characters. Arrays have the orders of their
///   elements; those of a structure stand at its members.
///
/// \param orders  those of the lines that state none
/// \throws map_error  for the first line that is wrong
[[nodiscard]] map_contents parse_map(std::istream& text, part_orders orders = {});

} // namespace modbus_backend
