#include <tavi/ioapi/v2/backend_query.hpp>

#include <utility>

namespace tavi::ioapi::v2 {

host_interface::~host_interface() = default;

backend_version_info backend_query::backend_version() const {
    return host_->backend_version();
}

utility::string backend_query::p_backend_data_directory() const {
    return host_->p_backend_data_directory();
}

utility::string backend_query::p_project_directory() const {
    return host_->p_project_directory();
}

utility::string backend_query::p_shared_extension_directory() const {
    return host_->p_shared_extension_directory();
}

utility::string backend_query::p_private_extension_directory() const {
    return host_->p_private_extension_directory();
}

void backend_query::push_log_record(log_severity_level level, utility::string_view text) const {
    host_->push_log_record(level, text);
}

io_data_type backend_query::lookup_data_type(plc_identifier const& name, io_error& error) const {
    return host_->lookup_data_type(name, error);
}

io_structure_type backend_query::lookup_structure_type(io_data_type const& type,
                                                       io_error& error) const {
    return host_->lookup_structure_type(type, error);
}

io_data_type backend_query::register_structure_type(plc_identifier const& name,
                                                    io_structure_type structure,
                                                    io_error& error) {
    return host_->register_structure_type(name, std::move(structure), error);
}

void backend_query::replace_structure_type(io_data_type const& type,
                                           io_structure_type structure,
                                           io_error& error) {
    host_->replace_structure_type(type, std::move(structure), error);
}

void backend_query::unregister_structure_type(io_data_type const& type, io_error& error) {
    host_->unregister_structure_type(type, error);
}

void backend_query::clear_structure_types() {
    host_->clear_structure_types();
}

} // namespace tavi::ioapi::v2
