#include "map_type.hpp"

#include "map_words.hpp"
#include "variable.hpp"

#include <string>

namespace modbus_backend {

namespace {

struct shape {
    value_type element;
    unsigned int width;
};

// A string states its width itself.
constexpr choice<shape> types[] = {
    {"boolean", {value_type::boolean, 1}}, {"u16", {value_type::u16, 1}},
    {"i16", {value_type::i16, 1}},         {"u32", {value_type::u32, 2}},
    {"i32", {value_type::i32, 2}},         {"u64", {value_type::u64, 4}},
    {"i64", {value_type::i64, 4}},         {"flt", {value_type::flt, 2}},
    {"dbl", {value_type::dbl, 4}},
};

variable_type type_of(shape const& found) {
    variable_type type;
    type.element = found.element;
    type.element_width = found.width;
    return type;
}

variable_type string_in(std::string_view word) {
    constexpr std::string_view head = "string(";
    std::string_view const size = word.substr(head.size(), word.size() - head.size() - 1);
    auto const width = number_in(size, most_in_a_request(register_kind::input));
    if (!width || *width == 0) {
        throw bad_line("string size " + in_quotes(size) + " is no number from 1 to 125");
    }
    return type_of({value_type::string, *width});
}

bad_line unknown_type(std::string_view word) {
    return bad_line("unknown type " + in_quotes(word) +
                    ", not boolean, u16, i16, u32, i32, u64, i64, flt, dbl, string(N), an array "
                    "of these as u16[N], or a structure that stands above");
}

variable_type element_in(std::string_view word, structure_list const& structures) {
    if (word.substr(0, 7) == "string(" && word.back() == ')') return string_in(word);
    if (auto const found = find(types, word)) return type_of(*found);
    for (auto const& described : structures) {
        if (described->name != word) continue;
        auto type = type_of({value_type::object, described->width});
        type.members = described;
        return type;
    }
    throw unknown_type(word);
}

} // namespace

variable_type type_in(std::string_view word, structure_list const& structures) {
    auto const bracket = word.find('[');
    variable_type type = element_in(word.substr(0, bracket), structures);
    if (bracket == std::string_view::npos) return type;

    if (word.back() != ']') throw unknown_type(word);
    if (type.members != nullptr) {
        throw bad_line(in_quotes(word) + " is an array of structures, which cannot be read");
    }
    std::string_view const size = word.substr(bracket + 1, word.size() - bracket - 2);
    auto const count = number_in(size, most_in_a_request(register_kind::coil));
    if (!count || *count == 0) {
        throw bad_line("array size " + in_quotes(size) + " is no number from 1 to 2000");
    }
    type.count = *count;
    return type;
}

void require_structure_name(std::string_view word) {
    if (find(types, word) || word.find_first_of("[]()") != std::string_view::npos) {
        throw bad_line(in_quotes(word) + " is no name for a structure, but for another type");
    }
}

} // namespace modbus_backend
