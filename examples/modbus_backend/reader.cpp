#include "reader.hpp"

#include "decoding.hpp"
#include "diagnostics.hpp"
#include "error_category.hpp"

#include <array>
#include <cstdint>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using quality = v2::io_data_value::value_quality;

void store(wanted_variable const& member,
           v2::io_value value,
           v2::io_timestamp time,
           v2::read_result& result) {
    result.set(static_cast<unsigned int>(member.where),
               v2::io_data_value(std::move(value), time, quality::good));
}

/// What belongs to one member of the answer to a request.
template <class Part>
std::span<Part const> part_of(std::span<Part> answer,
                              request const& wanted,
                              wanted_variable const& member) {
    return answer.subspan(member.what->address - wanted.first, member.what->type.width());
}

v2::io_error read_bits(request const& wanted,
                       register_access& source,
                       backend_support::clock const& time,
                       v2::read_result& result) {
    std::array<std::uint8_t, most_in_a_request(register_kind::coil)> buffer{};
    auto const bits = std::span(buffer).first(wanted.count);
    auto error = source.read_bits(wanted.kind, wanted.first, bits);
    if (error) return error;

    auto const answered = time.now();
    for (auto const& member : wanted.members) {
        store(member, decode(member.what->type, part_of(bits, wanted, member)), answered, result);
    }
    return error;
}

v2::io_error read_registers(request const& wanted,
                            register_access& source,
                            backend_support::clock const& time,
                            v2::read_result& result) {
    std::array<std::uint16_t, most_in_a_request(register_kind::input)> buffer{};
    auto const registers = std::span(buffer).first(wanted.count);
    auto error = source.read_registers(wanted.kind, wanted.first, registers);
    if (error) return error;

    auto const answered = time.now();
    for (auto const& member : wanted.members) {
        store(member, decode(member.what->type, part_of(registers, wanted, member)), answered,
              result);
    }
    return error;
}

/// Whether another range might be answered where this one was refused.
bool depends_on_range(v2::io_error const& error) {
    if (&error.category() != &modbus_error_category()) return false;
    switch (static_cast<modbus_errc>(error.code())) {
    case modbus_errc::illegal_data_address:
    case modbus_errc::illegal_data_value:
    case modbus_errc::device_failure:
    case modbus_errc::memory_parity_error: return true;
    default: return false;
    }
}

} // namespace

void carry_out(request const& wanted,
               register_access& source,
               refusal_log& refusals,
               backend_support::clock const& time,
               v2::read_result& result) {
    auto const error = holds_bits(wanted.kind) ? read_bits(wanted, source, time, result)
                                               : read_registers(wanted, source, time, result);
    if (error.ok()) {
        refusals.answered(wanted);
        return;
    }
    if (wanted.members.size() > 1 && depends_on_range(error)) {
        auto const [lower, upper] = split(wanted);
        carry_out(lower, source, refusals, time, result);
        carry_out(upper, source, refusals, time, result);
        return;
    }
    if (exception_in(error) != 0) refusals.refused(wanted, error);
    for (auto const& member : wanted.members) {
        result.set(static_cast<unsigned int>(member.where),
                   failed_exchange(error, read_function(wanted.kind), *member.what));
    }
}

} // namespace modbus_backend
