#include "one_line.hpp"

#include "printable.hpp"

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

std::string quoted(std::string const& text) {
    std::string safe = "\"";
    for (char const letter : text) {
        if (letter == '"' || letter == '\\') safe += '\\';
        safe += letter;
    }
    return printable(safe + '"');
}

/// What stands within an array or object.
std::string inner(v2::io_value const& value) {
    if (value.empty()) return "empty";
    if (auto const* text = value.get_if<v2::utility::string>()) return quoted(text->str());
    return one_line(value);
}

// An array of characters is one of numbers, but not on its way to an array of values.
v2::utility::array<v2::io_value> elements_of(v2::io_value const& value) {
    using elements = v2::utility::array<v2::io_value>;
    if (value.get_if<v2::utility::array<char>>() == nullptr) return value.as<elements>();
    return v2::io_value(value.as<v2::utility::array<unsigned char>>()).as<elements>();
}

std::string line_of(v2::io_object const& object) {
    std::string line;
    for (auto const& [key, value] : object) {
        line += (line.empty() ? "" : ", ") + printable(key.str()) + ": " + inner(value);
    }
    return "{" + line + "}";
}

std::string line_of(v2::utility::array<v2::io_value> const& elements) {
    std::string line;
    for (auto const& value : elements) line += (line.empty() ? "" : ", ") + inner(value);
    return "[" + line + "]";
}

} // namespace

std::string one_line(v2::io_value const& value) {
    if (auto const* object = value.get_if<v2::io_object>()) return line_of(*object);
    if (value.is_array()) return line_of(elements_of(value));
    return printable(value.as<std::string>());
}

} // namespace iohost
