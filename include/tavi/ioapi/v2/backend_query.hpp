#pragma once

#include "api.hpp"
#include "host_interface.hpp"

#include <string>
#include <type_traits>

namespace tavi::ioapi::v2 {

/// How a backend asks its host: each operation is the one of the same name of `host_interface`,
/// called directly. Exceptions of the host pass through, errors are the host's, and nothing is
/// added.
///
/// One pointer, which may be copied freely and does not own the host: a query must not outlive it.
class backend_query {
public:
    explicit backend_query(host_interface& host) noexcept : host_(&host) {}

    [[nodiscard]] TAVI_IOAPI_API backend_version_info backend_version() const;

    /// \name Directories, as the exported interface gives them
    /// \{
    [[nodiscard]] TAVI_IOAPI_API utility::string p_backend_data_directory() const;
    [[nodiscard]] TAVI_IOAPI_API utility::string p_project_directory() const;
    [[nodiscard]] TAVI_IOAPI_API utility::string p_shared_extension_directory() const;
    [[nodiscard]] TAVI_IOAPI_API utility::string p_private_extension_directory() const;
    /// \}

    /// \name The same as standard strings
    /// \{
    [[nodiscard]] std::string backend_data_directory() const {
        return p_backend_data_directory().str();
    }
    [[nodiscard]] std::string project_directory() const { return p_project_directory().str(); }
    [[nodiscard]] std::string shared_extension_directory() const {
        return p_shared_extension_directory().str();
    }
    [[nodiscard]] std::string private_extension_directory() const {
        return p_private_extension_directory().str();
    }
    /// \}

    TAVI_IOAPI_API void push_log_record(log_severity_level level, utility::string_view text) const;
    /// Short for `push_log_record`.
    void log(log_severity_level level, utility::string_view text) const {
        push_log_record(level, text);
    }

    /// Lookups and changes leave their outcome in `error`, which the host sets.
    [[nodiscard]] TAVI_IOAPI_API io_data_type lookup_data_type(plc_identifier const& name,
                                                               io_error& error) const;
    [[nodiscard]] TAVI_IOAPI_API io_structure_type lookup_structure_type(io_data_type const& type,
                                                                         io_error& error) const;
    /// \return the type that values of the structure carry from now on
    [[nodiscard]] TAVI_IOAPI_API io_data_type register_structure_type(plc_identifier const& name,
                                                                      io_structure_type structure,
                                                                      io_error& error);
    TAVI_IOAPI_API void replace_structure_type(io_data_type const& type,
                                               io_structure_type structure,
                                               io_error& error);
    TAVI_IOAPI_API void unregister_structure_type(io_data_type const& type, io_error& error);
    TAVI_IOAPI_API void clear_structure_types();

private:
    host_interface* host_;
};

static_assert(sizeof(backend_query) == sizeof(void*) && std::is_trivially_copyable_v<backend_query>,
              "a handle is one pointer");

} // namespace tavi::ioapi::v2
