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
    /// Asks this host, which must outlive the query and its copies.
    explicit backend_query(host_interface& host) noexcept : host_(&host) {}

    /// The version of the backend that asks.
    [[nodiscard]] TAVI_IOAPI_API backend_version_info backend_version() const;

    /// \name Directories, as the exported interface gives them
    /// \{
    /// Where the backend keeps its own data.
    [[nodiscard]] TAVI_IOAPI_API utility::string p_backend_data_directory() const;
    /// Where the project lies that the host has open.
    [[nodiscard]] TAVI_IOAPI_API utility::string p_project_directory() const;
    /// Where the extensions lie that all users share.
    [[nodiscard]] TAVI_IOAPI_API utility::string p_shared_extension_directory() const;
    /// Where the extensions of this user lie.
    [[nodiscard]] TAVI_IOAPI_API utility::string p_private_extension_directory() const;
    /// \}

    /// \name The same as standard strings
    /// \{
    /// Where the backend keeps its own data.
    [[nodiscard]] std::string backend_data_directory() const {
        return p_backend_data_directory().str();
    }
    /// Where the project lies that the host has open.
    [[nodiscard]] std::string project_directory() const { return p_project_directory().str(); }
    /// Where the extensions lie that all users share.
    [[nodiscard]] std::string shared_extension_directory() const {
        return p_shared_extension_directory().str();
    }
    /// Where the extensions of this user lie.
    [[nodiscard]] std::string private_extension_directory() const {
        return p_private_extension_directory().str();
    }
    /// \}

    /// Hand a record to the host's log; the text need live for the call only.
    TAVI_IOAPI_API void push_log_record(log_severity_level level, utility::string_view text) const;
    /// Short for `push_log_record`.
    void log(log_severity_level level, utility::string_view text) const {
        push_log_record(level, text);
    }

    /// The data type that belongs to a name. \param[out] error  set by the host, as in all below
    [[nodiscard]] TAVI_IOAPI_API io_data_type lookup_data_type(plc_identifier const& name,
                                                               io_error& error) const;
    /// The structure that an object type names.
    [[nodiscard]] TAVI_IOAPI_API io_structure_type lookup_structure_type(io_data_type const& type,
                                                                         io_error& error) const;
    /// Make a structure known. \return the type that values of the structure carry from now on
    [[nodiscard]] TAVI_IOAPI_API io_data_type register_structure_type(plc_identifier const& name,
                                                                      io_structure_type structure,
                                                                      io_error& error);
    /// Put another structure in place of a known one.
    TAVI_IOAPI_API void replace_structure_type(io_data_type const& type,
                                               io_structure_type structure,
                                               io_error& error);
    /// Make a structure unknown again.
    TAVI_IOAPI_API void unregister_structure_type(io_data_type const& type, io_error& error);
    /// Make all structures unknown again.
    TAVI_IOAPI_API void clear_structure_types();

private:
    host_interface* host_;
};

static_assert(sizeof(backend_query) == sizeof(void*) && std::is_trivially_copyable_v<backend_query>,
              "a handle is one pointer");

} // namespace tavi::ioapi::v2
