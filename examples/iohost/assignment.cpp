#include "assignment.hpp"

#include "entry_name.hpp"
#include "failures.hpp"
#include "type_names.hpp"
#include "value_syntax.hpp"

#include <sstream>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using kinds = v2::io_data_type::basic_types;

v2::io_data_type stated_type(std::string const& text, std::string const& name) {
    if (auto const type = type_named(name)) return *type;
    throw setup_failure("'" + text + "': unknown type '" + name + "', not " + known_types() +
                        "; a name with a colon has its type stated: NAME:TYPE=VALUE");
}

/// Objects are looked at when the structure is known.
void insist_on_type(std::string const& text, std::string const& value, v2::io_data_type type) {
    if (type.basic_type == kinds::object || text_as(value, type)) return;
    std::ostringstream name;
    name << type;
    throw setup_failure("'" + text + "': the value '" + value + "' is no " + name.str());
}

} // namespace

std::pair<std::string, std::string> split_assignment(std::string const& what,
                                                     std::string const& text) {
    auto const sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw setup_failure(what + ": '" + text + "' is none, for it has no '=' behind a name");
    }
    return {text.substr(0, sign), text.substr(sign + 1)};
}

assignment parsed_assignment(std::string const& text) {
    auto [name, value] = split_assignment("NAME=VALUE", text);
    assignment made;
    if (auto const colon = name.rfind(':'); colon != std::string::npos) {
        made.type = stated_type(text, name.substr(colon + 1));
        name.resize(colon);
        insist_on_type(text, value, *made.type);
    }
    made.identifier = identifier_named(name);
    bool const is_text =
        made.type && *made.type == v2::io_data_type::scalar(kinds::string) && value[0] != '"';
    made.value = is_text ? json(value) : parsed_value(value);
    return made;
}

} // namespace iohost
