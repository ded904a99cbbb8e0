#include "map_line.hpp"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

namespace modbus_backend {

namespace {

using words = std::vector<std::string>;

template <class Value>
struct choice {
    std::string_view name;
    Value value;
};

constexpr choice<register_kind> kinds[] = {
    {"coil", register_kind::coil},
    {"discrete", register_kind::discrete},
    {"holding", register_kind::holding},
    {"input", register_kind::input},
};

struct shape {
    value_type type;
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

constexpr choice<part_order> orders[] = {
    {"big", part_order::big},
    {"little", part_order::little},
};

template <class Value, std::size_t Count>
std::optional<Value> find(choice<Value> const (&choices)[Count], std::string_view name) {
    for (auto const& choice : choices) {
        if (choice.name == name) return choice.value;
    }
    return std::nullopt;
}

std::string quoted(std::string_view word) {
    return "'" + std::string(word) + "'";
}

/// Decimal digits and nothing else, up to `most`.
std::optional<unsigned int> number_in(std::string_view word, unsigned int most) {
    unsigned int number = 0;
    char const* const end = word.data() + word.size();
    auto const [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end || number > most) return std::nullopt;
    return number;
}

register_kind kind_in(std::string_view word) {
    auto const kind = find(kinds, word);
    if (!kind) {
        throw bad_line("unknown kind " + quoted(word) + ", not coil, discrete, holding or input");
    }
    return *kind;
}

unsigned int address_in(std::string_view word) {
    auto const address = number_in(word, address_end - 1);
    if (!address) throw bad_line("address " + quoted(word) + " is no number from 0 to 65535");
    return *address;
}

shape string_in(std::string_view word) {
    constexpr std::string_view head = "string(";
    std::string_view const size = word.substr(head.size(), word.size() - head.size() - 1);
    auto const width = number_in(size, most_in_a_request(register_kind::input));
    if (!width || *width == 0) {
        throw bad_line("string size " + quoted(size) + " is no number from 1 to 125");
    }
    return {value_type::string, *width};
}

shape type_in(std::string_view word) {
    if (word.substr(0, 7) == "string(" && word.back() == ')') return string_in(word);
    auto const type = find(types, word);
    if (!type) {
        throw bad_line("unknown type " + quoted(word) +
                       ", not boolean, u16, i16, u32, i32, u64, i64, flt, dbl or string(N)");
    }
    return *type;
}

/// The order that an option sets, where the option has a meaning for the variable.
part_order& target_of(std::string_view option, variable& described) {
    bool const is_text = described.type == value_type::string;
    if (option == "byte_order") {
        if (!holds_bits(described.kind)) return described.bytes;
    } else if (option == "word_order") {
        if (described.width > 1 && !is_text) return described.words;
    } else {
        throw bad_line("unknown option " + quoted(option) + ", not byte_order or word_order");
    }
    throw bad_line(std::string(option) + " means nothing for this type");
}

void apply_option(std::string_view word, variable& described) {
    auto const equals = word.find('=');
    if (equals == std::string_view::npos) {
        throw bad_line("option " + quoted(word) + " is not NAME=VALUE");
    }
    std::string_view const value = word.substr(equals + 1);
    part_order& target = target_of(word.substr(0, equals), described);
    auto const order = find(orders, value);
    if (!order) throw bad_line("unknown order " + quoted(value) + ", not big or little");
    target = *order;
}

void apply_options(words const& line, variable& described) {
    for (std::size_t i = 4; i < line.size(); ++i) {
        for (std::size_t earlier = 4; earlier < i; ++earlier) {
            if (line[i].substr(0, line[i].find('=')) ==
                line[earlier].substr(0, line[earlier].find('='))) {
                throw bad_line("option " + quoted(line[i]) + " comes a second time");
            }
        }
        apply_option(line[i], described);
    }
}

} // namespace

variable variable_in(std::vector<std::string> const& line) {
    if (line.size() < 4) throw bad_line("expected NAME KIND ADDRESS TYPE [OPTION...]");
    variable described;
    described.name = line[0];
    described.kind = kind_in(line[1]);
    described.address = address_in(line[2]);
    auto const [type, width] = type_in(line[3]);
    described.type = type;
    described.width = width;
    if (holds_bits(described.kind) != (type == value_type::boolean)) {
        throw bad_line(quoted(line[3]) + " does not fit into kind " + quoted(line[1]));
    }
    if (described.address + width > address_end) {
        throw bad_line("reaches beyond the last address, 65535");
    }
    apply_options(line, described);
    return described;
}

} // namespace modbus_backend
