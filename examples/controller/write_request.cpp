#include "write_request.hpp"

#include "station.hpp"

#include <modbus/modbus.h>

#include <cstddef>

namespace station {

namespace {

unsigned int word(std::span<std::uint8_t const> request, std::size_t at) {
    if (request.size() < at + 2) return 0xFFFF;
    return static_cast<unsigned int>(request[at] << 8 | request[at + 1]);
}

} // namespace

bool may_be_answered(std::span<std::uint8_t const> request) {
    if (request.empty()) return false;
    switch (request[0]) {
    case MODBUS_FC_WRITE_SINGLE_REGISTER: return word(request, 1) == step;
    case MODBUS_FC_WRITE_MULTIPLE_REGISTERS:
        return word(request, 1) == step && word(request, 3) == 1;
    case MODBUS_FC_WRITE_SINGLE_COIL:
    case MODBUS_FC_WRITE_MULTIPLE_COILS:
    case MODBUS_FC_MASK_WRITE_REGISTER:
    case MODBUS_FC_WRITE_AND_READ_REGISTERS: return false;
    default: return true;
    }
}

} // namespace station
