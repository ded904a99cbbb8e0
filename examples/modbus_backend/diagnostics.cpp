#include "diagnostics.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "data_type.hpp"
#include "error_category.hpp"

#include <sstream>
#include <string>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace key = v2::diagnostics_key;

v2::io_error_diagnostics_generic facts(char const* operation, variable const& concerned) {
    v2::io_error_diagnostics_generic list;
    list.set(key::operation, operation);
    list.set(key::address, concerned.address);
    list.set(own_diagnostics_key::variable, concerned.name);
    return list;
}

void set_write_function(v2::io_error_diagnostics_generic& list, variable const& concerned) {
    auto const function = write_function(concerned.kind, concerned.type.width());
    list.set(own_diagnostics_key::function, static_cast<unsigned int>(function));
}

std::string text_of(v2::io_data_type const& type) {
    std::ostringstream text;
    text << type;
    return text.str();
}

} // namespace

v2::io_error failed_exchange(v2::io_error error,
                             function_code function,
                             variable const& concerned) {
    auto list = facts(name_of(function), concerned);
    list.set(own_diagnostics_key::function, static_cast<unsigned int>(function));
    if (int const exception = exception_in(error)) list.set(key::device_code, exception);
    error.diagnostics(list);
    return error;
}

v2::io_error refused(v2::io_error error, char const* operation, variable const& concerned) {
    error.diagnostics(facts(operation, concerned));
    return error;
}

v2::io_error refused_write(v2::io_error error, variable const& concerned) {
    auto list = facts("write", concerned);
    set_write_function(list, concerned);
    error.diagnostics(list);
    return error;
}

v2::io_error refused_value(v2::io_error error,
                           v2::io_data_type const& given,
                           variable const& concerned) {
    auto list = facts("convert", concerned);
    set_write_function(list, concerned);
    list.set(key::source_type, text_of(given));
    list.set(key::target_type, text_of(data_type_of(concerned.type)));
    error.diagnostics(list);
    return error;
}

} // namespace modbus_backend
