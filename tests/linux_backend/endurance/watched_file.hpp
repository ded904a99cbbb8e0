#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace endurance {

/// What the Linux backend says of a variable: a value, an error by its number in the category of
/// the backend, or that there is no such variable.
enum class answer : int {
    value = 0,
    absent = 1,
    unreadable = 2,
    malformed = 3,
    value_absent = 4,
    not_found = 5,
};

/// A member of a value, or the whole of it.
struct member {
    /// Names, and numbers of elements, with dots between them; empty for the whole value. `#`
    /// stands for the number of elements.
    std::string path;
    tavi::ioapi::v2::io_value value;
};

/// Lengths that a text may shrink to, from the first to the last, and what is said of it then.
struct shorter {
    std::size_t first;
    std::size_t last;
    answer said;
};

/// A made-up file that shows a number, and the variable that shows it to a host.
struct watched_file {
    char const* name; ///< below the folder of the machine
    char const* variable;
    char const* device; ///< folder without which there is no such variable, or null
    std::string (*text)(std::uint32_t number);
    /// With more than 64 bits for a number; null where the variable can hold it.
    std::string (*too_large)();
    std::vector<member> (*contents)(std::uint32_t number);
    /// Without the lengths that leave another value. \param text  such as `text` gives
    std::vector<shorter> (*cuts)(std::string const& text);
    answer of_nonsense = answer::malformed;
    bool takes_any_text = false; ///< so that any line but an empty one is a value
    std::uint32_t lengths = 1;   ///< the value is of one of so many lengths, by the number in turn
};

/// One for each kind of file that the backend reads.
[[nodiscard]] std::span<watched_file const> watched_files();

/// \return whether the value is what the file shows with that number in it.
[[nodiscard]] bool shows(watched_file const& file,
                         tavi::ioapi::v2::io_value const& value,
                         std::uint32_t number);

} // namespace endurance
