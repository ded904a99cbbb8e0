#include "structure_writer.hpp"

#include "decoding.hpp"
#include "diagnostics.hpp"
#include "encoding.hpp"
#include "structure.hpp"

#include <algorithm>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

/// The registers of a structure, and which of them are to be written.
struct image {
    std::vector<std::uint16_t> registers;
    std::vector<bool> is_set;
};

member const* find_member(structure const& described, std::string const& name) {
    auto const& members = described.members;
    auto const found = std::find_if(members.begin(), members.end(),
                                    [&name](member const& part) { return part.name == name; });
    return found == members.end() ? nullptr : &*found;
}

/// The variable that stands for a member in diagnostics.
variable place_of(variable const& whole, std::string const& name, member const* part) {
    variable place;
    place.name = whole.name + "/" + name;
    place.kind = whole.kind;
    place.address = whole.address + (part == nullptr ? 0 : part->offset);
    place.type = part == nullptr ? whole.type : part->type;
    return place;
}

v2::io_error set_member(variable const& whole,
                        member_value const& given,
                        v2::io_object& object,
                        image& shown) {
    member const* const part = find_member(*whole.type.members, given.name);
    auto const place = place_of(whole, given.name, part);
    v2::io_error error;
    object.set(given.name, given.value, error);
    if (part == nullptr) return refused_write(v2::io_errc::invalid_property, place);
    if (error.ok()) {
        auto const registers = std::span(shown.registers).subspan(part->offset, part->type.width());
        error = encode(part->type, given.value, registers);
    }
    if (error) return refused_value(error, given.value.data_type(), place);
    std::fill_n(shown.is_set.begin() + part->offset, part->type.width(), true);
    return {};
}

std::vector<register_run> runs_of(image const& shown) {
    std::vector<register_run> runs;
    for (unsigned int at = 0; at < shown.registers.size(); ++at) {
        if (!shown.is_set[at]) continue;
        if (at == 0 || !shown.is_set[at - 1]) runs.push_back({at, {}});
        runs.back().registers.push_back(shown.registers[at]);
    }
    return runs;
}

} // namespace

v2::io_error set_members(variable const& whole,
                         std::span<member_value const> given,
                         register_access& controller,
                         std::vector<register_run>& runs) {
    unsigned int const width = whole.type.width();
    image shown{std::vector<std::uint16_t>(width), std::vector<bool>(width)};
    auto error = controller.read_registers(whole.kind, whole.address, shown.registers);
    if (error) return failed_exchange(error, read_function(whole.kind), whole);

    auto const held = decode(whole.type, std::span<std::uint16_t const>(shown.registers));
    v2::io_object object = *held.get_if<v2::io_object>();
    for (auto const& one : given) {
        error = set_member(whole, one, object, shown);
        if (error) return error;
    }
    runs = runs_of(shown);
    return error;
}

} // namespace modbus_backend
