#include "panel_variable.hpp"

#include <controller/station.hpp>
#include <examples/support/running_station.hpp>

#include <stdexcept>

namespace endurance {

namespace {

namespace v2 = tavi::ioapi::v2;

struct description {
    char const* name;
    char const* type; ///< as a map states it
    std::size_t address;
    std::size_t size; ///< registers or coils
};

constexpr std::array<description, 4> descriptions{{
    {"word", "u16", station::panel, 1},
    {"number", "u32", station::panel + 1, 2},
    {"text", "string(6)", station::panel + 4, 6},
    {"lamps", "boolean[4]", station::lamps, station::lamp_count},
}};

description const& about(panel_variable which) {
    return descriptions[static_cast<std::size_t>(which)];
}

constexpr unsigned int bits_of_lamps(std::uint32_t number) {
    return number & 0xFU;
}

std::string text_of(std::uint32_t number) {
    return "no. " + std::to_string(number);
}

/// Two characters to a register, the first one high, and zeros behind the end.
std::vector<std::uint16_t> registers_of(std::string text, std::size_t size) {
    text.resize(2 * size);
    std::vector<std::uint16_t> registers;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        auto const high = static_cast<unsigned char>(text[i]);
        auto const low = static_cast<unsigned char>(text[i + 1]);
        registers.push_back(static_cast<std::uint16_t>(high << 8 | low));
    }
    return registers;
}

void require(int count, std::size_t expected, char const* what) {
    if (count != static_cast<int>(expected)) throw station::failure(what);
}

} // namespace

std::string map_of_panel() {
    std::string map;
    for (auto const which : all_panel_variables) {
        auto const& line = about(which);
        map += std::string(line.name) + (which == panel_variable::lamps ? " coil " : " holding ") +
               std::to_string(line.address) + ' ' + line.type + '\n';
    }
    return map;
}

char const* name_of(panel_variable which) {
    return about(which).name;
}

v2::io_value value_of(panel_variable which, std::uint32_t number) {
    switch (which) {
    case panel_variable::word: return static_cast<unsigned short>(number);
    case panel_variable::number: return static_cast<unsigned int>(number);
    case panel_variable::text: return v2::utility::string(text_of(number));
    case panel_variable::lamps: break;
    }
    v2::utility::array<bool> lamps(station::lamp_count);
    for (unsigned int i = 0; i < station::lamp_count; ++i) {
        lamps[i] = (bits_of_lamps(number) >> i & 1U) != 0;
    }
    return lamps;
}

std::vector<std::uint16_t> contents_of(panel_variable which, std::uint32_t number) {
    switch (which) {
    case panel_variable::word: return {static_cast<std::uint16_t>(number)};
    case panel_variable::number:
        return {static_cast<std::uint16_t>(number >> 16), static_cast<std::uint16_t>(number)};
    case panel_variable::text: return registers_of(text_of(number), about(which).size);
    case panel_variable::lamps: break;
    }
    std::vector<std::uint16_t> bits;
    for (unsigned int i = 0; i < station::lamp_count; ++i) {
        bits.push_back(static_cast<std::uint16_t>(bits_of_lamps(number) >> i & 1U));
    }
    return bits;
}

std::vector<std::uint16_t> contents_in(int port, panel_variable which) {
    test_support::modbus_client const client(port);
    auto const address = static_cast<int>(about(which).address);
    auto const size = about(which).size;
    std::vector<std::uint16_t> contents(size);
    if (which == panel_variable::lamps) {
        std::array<std::uint8_t, station::lamp_count> bits{};
        require(modbus_read_bits(client.get(), address, static_cast<int>(size), bits.data()), size,
                "cannot read the lamps");
        contents.assign(bits.begin(), bits.end());
    } else {
        require(
            modbus_read_registers(client.get(), address, static_cast<int>(size), contents.data()),
            size, "cannot read the panel");
    }
    return contents;
}

void set_by_hand(int port, panel_variable which, std::uint32_t number) {
    test_support::modbus_client const client(port);
    auto const address = static_cast<int>(about(which).address);
    auto const contents = contents_of(which, number);
    auto const size = static_cast<int>(contents.size());
    if (which == panel_variable::lamps) {
        std::vector<std::uint8_t> const bits(contents.begin(), contents.end());
        require(modbus_write_bits(client.get(), address, size, bits.data()), contents.size(),
                "cannot set the lamps");
    } else {
        require(modbus_write_registers(client.get(), address, size, contents.data()),
                contents.size(), "cannot set the panel");
    }
}

} // namespace endurance
