#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace iohost {

/// Whether a descriptor is a terminal, where lines may be drawn over.
[[nodiscard]] bool is_terminal(int descriptor) noexcept;

/// Open those of the descriptors 0 to 2 on nothing that are closed. Else the next file or socket
/// takes their number, and what is meant for people goes there. \throws std::runtime_error
void open_standard_streams();

/// Whether a descriptor is a pipe or a socket that nobody reads from any more.
[[nodiscard]] bool has_lost_its_reader(int descriptor) noexcept;

/// In characters.
struct terminal_size {
    std::size_t columns = 80;
    std::size_t rows = 24;
};

/// What the terminal says, or 80 by 24 where it says nothing.
[[nodiscard]] terminal_size size_of_terminal(int descriptor) noexcept;

/// \return the beginning of a line of UTF-8, at most `columns` characters of it.
[[nodiscard]] std::string_view cut(std::string_view line, std::size_t columns) noexcept;

/// Back to the first column, and whatever stands on the line away.
inline constexpr char const* clear_line = "\r\x1b[K";

} // namespace iohost
