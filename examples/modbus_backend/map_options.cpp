#include "map_options.hpp"

#include "map_words.hpp"

#include <cstddef>
#include <string_view>

namespace modbus_backend {

namespace {

constexpr choice<part_order> order_choices[] = {
    {"big", part_order::big},
    {"little", part_order::little},
};

bool has_bytes(variable_type const& type) {
    return type.element != value_type::boolean && type.element != value_type::object;
}

bool has_words(variable_type const& type) {
    return has_bytes(type) && type.element != value_type::string && type.element_width > 1;
}

/// The order that an option sets, where the option has a meaning for the type.
part_order& target_of(std::string_view option, variable_type& type) {
    if (option == "byte_order") {
        if (has_bytes(type)) return type.bytes;
    } else if (option == "word_order") {
        if (has_words(type)) return type.words;
    } else {
        throw bad_line("unknown option " + in_quotes(option) + ", not byte_order or word_order");
    }
    throw bad_line(std::string(option) + " means nothing for this type");
}

void apply_option(std::string_view word, variable_type& type) {
    auto const equals = word.find('=');
    if (equals == std::string_view::npos) {
        throw bad_line("option " + in_quotes(word) + " is not NAME=VALUE");
    }
    std::string_view const value = word.substr(equals + 1);
    part_order& target = target_of(word.substr(0, equals), type);
    auto const order = find(order_choices, value);
    if (!order) throw bad_line("unknown order " + in_quotes(value) + ", not big or little");
    target = *order;
}

std::string_view name_of(std::string_view option) {
    return option.substr(0, option.find('='));
}

} // namespace

void apply_orders(std::span<std::string const> options, part_orders others, variable_type& type) {
    if (has_bytes(type)) type.bytes = others.bytes;
    if (has_words(type)) type.words = others.words;
    for (std::size_t i = 0; i < options.size(); ++i) {
        for (auto const& earlier : options.first(i)) {
            if (name_of(options[i]) == name_of(earlier)) {
                throw bad_line("option " + in_quotes(options[i]) + " comes a second time");
            }
        }
        apply_option(options[i], type);
    }
}

} // namespace modbus_backend
