#include "entry_name.hpp"

#include "failures.hpp"
#include "printable.hpp"

#include <charconv>
#include <optional>
#include <sstream>
#include <system_error>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

constexpr std::string_view decimal_digits = "0123456789";

struct parts {
    std::string primary;
    std::optional<std::string> secondary;
};

[[noreturn]] void refuse(std::string_view name, std::string const& why) {
    throw setup_failure("'" + std::string(name) + "' is no name: " + why);
}

parts split(std::string_view name) {
    parts found;
    auto const current = [&found]() -> std::string& {
        return found.secondary ? *found.secondary : found.primary;
    };
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (name[at] != '/') {
            current() += name[at];
        } else if (name.substr(at + 1).starts_with('/')) {
            current() += name[at++];
        } else if (!found.secondary) {
            found.secondary.emplace();
        } else {
            refuse(name, "it names a member of a member; a slash that is meant is written //");
        }
    }
    return found;
}

v2::plc_identifier_part part_named(std::string_view name, std::string_view text) {
    if (!text.starts_with('#') || text == "#") return text;
    auto const rest = text.substr(1);
    if (rest.starts_with('#')) return rest;
    if (rest.find_first_not_of(decimal_digits) != std::string_view::npos) return text;
    unsigned long long number = 0;
    auto const [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc()) refuse(name, "a number has at most 64 bits");
    return number;
}

std::string name_of_part(v2::plc_identifier_part const& part) {
    if (part.kind() == v2::plc_identifier_kind::number) return "#" + std::to_string(part.number());
    std::string name;
    if (!part.text().empty() && part.text()[0] == '#') name = '#';
    for (char const letter : part.text()) name.append(letter == '/' ? 2U : 1U, letter);
    return name;
}

} // namespace

v2::plc_identifier identifier_named(std::string_view name) {
    auto const [primary, secondary] = split(name);
    if (primary.empty()) refuse(name, "it names no variable");
    auto variable = part_named(name, primary);
    if (!secondary) return v2::plc_identifier(std::move(variable));
    if (secondary->empty()) refuse(name, "nothing stands behind its slash");
    return v2::plc_identifier(std::move(variable), part_named(name, *secondary));
}

std::string given_name_of(v2::plc_identifier const& identifier) {
    if (identifier.primary().is_none()) {
        std::ostringstream text;
        text << identifier;
        return text.str();
    }
    std::string name = name_of_part(identifier.primary());
    if (!identifier.secondary().is_none()) name += '/' + name_of_part(identifier.secondary());
    return name;
}

std::string name_of(v2::plc_identifier const& identifier) {
    return printable(given_name_of(identifier));
}

} // namespace iohost
