#include "data_type.hpp"

#include "structure.hpp"

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;

v2::io_data_type data_type_of(variable_type const& type) {
    if (type.members != nullptr) {
        auto const& blank = type.members->blank;
        return blank ? blank->type() : v2::io_data_type::object(0);
    }
    return type.count == 0 ? v2::io_data_type::scalar(type.element)
                           : v2::io_data_type::array_of(type.element);
}

} // namespace modbus_backend
