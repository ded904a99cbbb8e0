#include "write_request.hpp"

#include "station.hpp"

#include <modbus/modbus.h>

#include <cstddef>

namespace station {

namespace {

struct range {
    std::size_t first;
    std::size_t count;
};

bool is_within(range part, range whole) {
    return part.count > 0 && part.first >= whole.first &&
           part.first + part.count <= whole.first + whole.count;
}

bool is_free(range registers) {
    return is_within(registers, {step, 1}) || is_within(registers, {panel, panel_size});
}

unsigned int word(std::span<std::uint8_t const> request, std::size_t at) {
    if (request.size() < at + 2) return 0xFFFF;
    return static_cast<unsigned int>(request[at] << 8 | request[at + 1]);
}

} // namespace

bool may_be_answered(std::span<std::uint8_t const> request) {
    if (request.empty()) return false;
    switch (request[0]) {
    case MODBUS_FC_WRITE_SINGLE_REGISTER: return is_free({word(request, 1), 1});
    case MODBUS_FC_WRITE_MULTIPLE_REGISTERS: return is_free({word(request, 1), word(request, 3)});
    case MODBUS_FC_WRITE_SINGLE_COIL: return is_within({word(request, 1), 1}, {lamps, lamp_count});
    case MODBUS_FC_WRITE_MULTIPLE_COILS:
        return is_within({word(request, 1), word(request, 3)}, {lamps, lamp_count});
    case MODBUS_FC_MASK_WRITE_REGISTER:
    case MODBUS_FC_WRITE_AND_READ_REGISTERS: return false;
    default: return true;
    }
}

} // namespace station
