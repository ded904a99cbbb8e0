#include "not_found.hpp"

#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

namespace backend_support {

namespace {

namespace v2 = tavi::ioapi::v2;

std::string text_of(v2::plc_identifier_part const& part) {
    switch (part.kind()) {
    case v2::plc_identifier_kind::text: return part.text().str();
    case v2::plc_identifier_kind::number: return std::to_string(part.number());
    default: return {};
    }
}

} // namespace

std::string name_of(v2::plc_identifier const& identifier) {
    auto name = text_of(identifier.primary());
    if (!identifier.secondary().is_none()) name += "/" + text_of(identifier.secondary());
    return name;
}

v2::io_error entry_error(v2::io_error error,
                         char const* operation,
                         v2::plc_identifier const& identifier) {
    v2::io_error_diagnostics_generic details;
    details.set(v2::diagnostics_key::operation, operation);
    details.set("variable", name_of(identifier));
    error.diagnostics(details);
    return error;
}

v2::io_error not_found(char const* operation, v2::plc_identifier const& identifier) {
    return entry_error(v2::io_errc::not_found, operation, identifier);
}

} // namespace backend_support
