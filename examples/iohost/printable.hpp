#pragma once

#include <string>
#include <string_view>

namespace iohost {

/// \return `text` with its control characters as `\x0a`: what comes from a controller must break
/// neither the lines of a table nor the terminal.
[[nodiscard]] std::string printable(std::string_view text);

} // namespace iohost
