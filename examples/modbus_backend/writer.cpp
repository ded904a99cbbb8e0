#include "writer.hpp"

#include "diagnostics.hpp"
#include "encoding.hpp"
#include "error_category.hpp"
#include "structure_writer.hpp"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using v2::io_error;
using v2::io_value;

// A piece holds whole elements, so that none is half old and half new between two requests.
unsigned int piece_of(register_kind kind, unsigned int element_width) {
    unsigned int const most = most_in_a_write(kind);
    return element_width > most ? most : most - most % element_width;
}

/// Exchange piece after piece, up to the first that fails.
template <class Part, class Exchange>
io_error in_pieces(std::span<Part const> parts, unsigned int piece, Exchange exchange) {
    io_error error;
    for (std::size_t at = 0; at < parts.size() && error.ok(); at += piece) {
        auto const count = std::min<std::size_t>(piece, parts.size() - at);
        error = exchange(static_cast<unsigned int>(at), parts.subspan(at, count));
    }
    return error;
}

io_error write_bits(variable const& target,
                    std::span<std::uint8_t const> bits,
                    register_access& controller) {
    auto const exchange = [&](unsigned int at, std::span<std::uint8_t const> piece) {
        auto error = controller.write_coils(target.address + at, piece);
        return error ? failed_exchange(error, write_coils_function(piece.size()), target) : error;
    };
    return in_pieces(bits, piece_of(target.kind, 1), exchange);
}

/// \param offset  from the first register of the variable
io_error write_registers(variable const& target,
                         unsigned int offset,
                         std::span<std::uint16_t const> registers,
                         register_access& controller) {
    auto const exchange = [&](unsigned int at, std::span<std::uint16_t const> piece) {
        auto error = controller.write_holdings(target.address + offset + at, piece);
        return error ? failed_exchange(error, write_holdings_function(piece.size()), target)
                     : error;
    };
    bool const is_structure = target.type.members != nullptr;
    auto const piece = piece_of(target.kind, is_structure ? 1 : target.type.element_width);
    return in_pieces(registers, piece, exchange);
}

io_error write_members(variable const& whole,
                       std::span<member_value const> given,
                       register_access& controller) {
    if (!can_be_written(whole.kind)) {
        return refused_write(make_modbus_error(modbus_errc::read_only), whole);
    }
    std::vector<register_run> runs;
    auto error = set_members(whole, given, controller, runs);
    for (std::size_t i = 0; i < runs.size() && error.ok(); ++i) {
        error = write_registers(whole, runs[i].offset, runs[i].registers, controller);
    }
    return error;
}

io_error write_object(variable const& whole, io_value const& value, register_access& controller) {
    auto const* const given = value.get_if<v2::io_object>();
    if (given == nullptr) {
        return refused_value(v2::io_errc::incompatible_type, value.data_type(), whole);
    }
    std::vector<member_value> members;
    for (auto const& [name, member] : *given) members.push_back({name.str(), member});
    return write_members(whole, members, controller);
}

template <class Part>
io_error encoded(variable const& target, io_value const& value, std::vector<Part>& parts) {
    parts.resize(target.type.width());
    auto const error = encode(target.type, value, std::span(parts));
    return error ? refused_value(error, value.data_type(), target) : error;
}

} // namespace

io_error write_variable(variable const& target,
                        io_value const& value,
                        register_access& controller) {
    if (!can_be_written(target.kind)) {
        return refused_write(make_modbus_error(modbus_errc::read_only), target);
    }
    if (target.type.members != nullptr) return write_object(target, value, controller);
    if (holds_bits(target.kind)) {
        std::vector<std::uint8_t> bits;
        auto error = encoded(target, value, bits);
        return error ? error : write_bits(target, bits, controller);
    }
    std::vector<std::uint16_t> registers;
    auto error = encoded(target, value, registers);
    return error ? error : write_registers(target, 0, registers, controller);
}

io_error write_member(variable const& whole,
                      v2::utility::string_view name,
                      io_value const& value,
                      register_access& controller) {
    member_value const given{name.str(), value};
    return write_members(whole, std::span(&given, 1), controller);
}

} // namespace modbus_backend
