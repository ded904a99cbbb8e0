#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>

#include "structure.hpp"

namespace modbus_backend {

/// Register every structure with the host, under its name, and keep the type that it gives. They
/// stay registered, for values may outlive the backend.
/// \throws setup_error  with the error of a host that refuses one; then none is registered
void register_structures(structure_list const& structures, tavi::ioapi::v2::backend_query host);

} // namespace modbus_backend
