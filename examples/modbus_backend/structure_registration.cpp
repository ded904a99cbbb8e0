#include "structure_registration.hpp"

#include <cstddef>
#include <utility>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

v2::io_data_type data_type_of(variable_type const& type) {
    return type.count == 0 ? v2::io_data_type::scalar(type.element)
                           : v2::io_data_type::array_of(type.element);
}

v2::io_structure_type type_of(structure const& described) {
    v2::io_structure_type type(described.name);
    for (auto const& part : described.members) type.set_member(part.name, data_type_of(part.type));
    return type;
}

v2::io_object registered(structure const& described, v2::io_structure_dictionary& dictionary) {
    auto type = type_of(described);
    v2::io_error never_set;
    auto const id = dictionary.add_structure(type, never_set);
    return {id, std::move(type)};
}

} // namespace

void register_structures(structure_list const& structures,
                         v2::io_structure_dictionary& dictionary) {
    std::vector<v2::io_object> blanks;
    for (auto const& described : structures) blanks.push_back(registered(*described, dictionary));
    for (std::size_t i = 0; i < blanks.size(); ++i) structures[i]->blank = std::move(blanks[i]);
}

bool is_registered(variable_type const& type) noexcept {
    return type.members == nullptr || type.members->blank.has_value();
}

} // namespace modbus_backend
