#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>

#include <cstddef>

namespace backend_test {

/// One operation of a query, how it is called, and its place in the table of a host.
struct operation_row {
    char const* name;
    std::size_t place; ///< from 0; the two destructors stand first
    void (*call)(tavi::ioapi::v2::backend_query&);
};

namespace detail {

using query = tavi::ioapi::v2::backend_query;

inline tavi::ioapi::v2::plc_identifier const name("pump");
inline tavi::ioapi::v2::io_data_type const type = tavi::ioapi::v2::io_data_type::object(7);

template <auto Method>
void without_arguments(query& asked) {
    (void)(asked.*Method)();
}
inline void log_record(query& asked) {
    asked.push_log_record(tavi::ioapi::v2::log_severity_level::warning, "text");
}
inline void look_up_type(query& asked) {
    tavi::ioapi::v2::io_error error;
    (void)asked.lookup_data_type(name, error);
}
inline void look_up_structure(query& asked) {
    tavi::ioapi::v2::io_error error;
    (void)asked.lookup_structure_type(type, error);
}
inline void enter_structure(query& asked) {
    tavi::ioapi::v2::io_error error;
    (void)asked.register_structure_type(name, tavi::ioapi::v2::io_structure_type("a"), error);
}
inline void exchange_structure(query& asked) {
    tavi::ioapi::v2::io_error error;
    asked.replace_structure_type(type, tavi::ioapi::v2::io_structure_type("a"), error);
}
inline void drop_structure(query& asked) {
    tavi::ioapi::v2::io_error error;
    asked.unregister_structure_type(type, error);
}

} // namespace detail

inline operation_row const every_operation[] = {
    {"backend_version", 2, detail::without_arguments<&detail::query::backend_version>},
    {"p_backend_data_directory", 3,
     detail::without_arguments<&detail::query::p_backend_data_directory>},
    {"p_project_directory", 4, detail::without_arguments<&detail::query::p_project_directory>},
    {"p_shared_extension_directory", 5,
     detail::without_arguments<&detail::query::p_shared_extension_directory>},
    {"p_private_extension_directory", 6,
     detail::without_arguments<&detail::query::p_private_extension_directory>},
    {"push_log_record", 7, detail::log_record},
    {"lookup_data_type", 8, detail::look_up_type},
    {"lookup_structure_type", 9, detail::look_up_structure},
    {"register_structure_type", 10, detail::enter_structure},
    {"replace_structure_type", 11, detail::exchange_structure},
    {"unregister_structure_type", 12, detail::drop_structure},
    {"clear_structure_types", 13, detail::without_arguments<&detail::query::clear_structure_types>},
};
inline constexpr std::size_t places = 14;

} // namespace backend_test
