#pragma once

#include "variable.hpp"

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace modbus_backend {

/// A line that is no variable: `line 3: unknown kind 'coils'`.
class map_error : public std::runtime_error {
public:
    map_error(unsigned int line, std::string const& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

    /// Counted from 1.
    [[nodiscard]] unsigned int line() const noexcept { return line_; }

private:
    unsigned int line_;
};

/// Read the variables of a controller, one to a line:
///
///     NAME KIND ADDRESS TYPE [OPTION...]
///
/// The words stand between blanks; a word that starts with `#` ends the line, and empty lines
/// are skipped. Names are unique.
/// - KIND: `coil`, `discrete`, `holding` or `input`
/// - ADDRESS: 0 to 65535, of the first register
/// - TYPE: `boolean` for coils and discrete inputs; for registers `u16`, `i16`, `u32`, `i32`,
///   `u64`, `i64`, `flt`, `dbl`, or `string(N)` for a text in N registers, 1 to 125
/// - OPTION: `byte_order=` or `word_order=`, each `big` (the default) or `little`: whether the high
///   byte of a register, and the high register of a number, comes first. In texts the byte order
///   says which byte of a register holds the first of its two characters.
///
/// \throws map_error  for the first line that is wrong
[[nodiscard]] std::vector<variable> parse_map(std::istream& text);

} // namespace modbus_backend
