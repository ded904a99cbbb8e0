#include "map_line.hpp"

#include "map_options.hpp"
#include "map_type.hpp"
#include "map_words.hpp"

#include <span>
#include <string_view>

namespace modbus_backend {

namespace {

constexpr choice<register_kind> kinds[] = {
    {"coil", register_kind::coil},
    {"discrete", register_kind::discrete},
    {"holding", register_kind::holding},
    {"input", register_kind::input},
};

constexpr unsigned int most_registers = most_in_a_request(register_kind::holding);

register_kind kind_in(std::string_view word) {
    auto const kind = find(kinds, word);
    if (!kind) {
        throw bad_line("unknown kind " + in_quotes(word) +
                       ", not coil, discrete, holding or input");
    }
    return *kind;
}

unsigned int address_in(std::string_view word) {
    auto const address = number_in(word, address_end - 1);
    if (!address) throw bad_line("address " + in_quotes(word) + " is no number from 0 to 65535");
    return *address;
}

unsigned int offset_in(std::string_view word) {
    auto const offset = number_in(word, most_registers - 1);
    if (!offset) throw bad_line("offset " + in_quotes(word) + " is no number from 0 to 124");
    return *offset;
}

// An array of bits cannot be stated too wide.
void require_one_request(std::string const& what, register_kind kind, unsigned int width) {
    if (width > most_in_a_request(kind)) {
        throw bad_line(what + " takes " + std::to_string(width) +
                       " registers, and one request gives no more than 125");
    }
}

} // namespace

variable variable_in(map_line const& line, line_context const& context) {
    auto const& words = line.words;
    if (words.size() < 4) throw bad_line("expected NAME KIND ADDRESS TYPE [OPTION...]");
    variable described;
    described.name = words[0];
    described.description = line.comment;
    described.kind = kind_in(words[1]);
    described.address = address_in(words[2]);
    described.type = type_in(words[3], context.structures);
    if (holds_bits(described.kind) != (described.type.element == value_type::boolean)) {
        throw bad_line(in_quotes(words[3]) + " does not fit into kind " + in_quotes(words[1]));
    }
    require_one_request(in_quotes(words[3]), described.kind, described.type.width());
    if (described.address + described.type.width() > address_end) {
        throw bad_line("reaches beyond the last address, 65535");
    }
    apply_orders(std::span(words).subspan(4), context.orders, described.type);
    return described;
}

member member_in(map_line const& line, line_context const& context) {
    auto const& words = line.words;
    if (words.size() < 3) throw bad_line("expected MEMBER OFFSET TYPE [OPTION...]");
    member described;
    described.name = words[0];
    described.offset = offset_in(words[1]);
    described.type = type_in(words[2], context.structures);
    if (described.type.element == value_type::boolean || described.type.members != nullptr) {
        throw bad_line(in_quotes(words[2]) + " does not fit into a structure");
    }
    require_one_request("the structure", register_kind::holding,
                        described.offset + described.type.width());
    apply_orders(std::span(words).subspan(3), context.orders, described.type);
    return described;
}

} // namespace modbus_backend
