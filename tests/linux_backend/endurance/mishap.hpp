#pragma once

#include <array>
#include <cstddef>

namespace endurance {

/// What may become of a file, or of what it stands in.
enum class mishap {
    none,
    vanished,  ///< there is no such file
    shrunk,    ///< the beginning of its text is left
    nonsense,  ///< no text of its kind
    too_large, ///< a number beyond 64 bits
    folder,    ///< a folder of its name, which cannot be read
    loop,      ///< a link to itself, which cannot be read either
    endless,   ///< a file without an end
    unplugged, ///< the folder of its device has gone
    unmounted, ///< all that is below `proc`, or below `sys`, has gone
};

inline constexpr std::array mishap_names{"none",   "vanished", "shrunk",  "nonsense",  "too_large",
                                         "folder", "loop",     "endless", "unplugged", "unmounted"};

inline constexpr std::size_t mishap_count = mishap_names.size();

} // namespace endurance
