#pragma once

#include "api.hpp"
#include "io_data_type.hpp"
#include "io_error.hpp"
#include "io_structure_type.hpp"
#include "plc_identifier.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"

namespace tavi::ioapi::v2 {

/// How much a log record matters, from the least on. Other numbers are legal by cast.
enum class log_severity_level : unsigned int {
    trace = 0,
    debug = 1,
    information = 2,
    warning = 3,
    error = 4,
    fatal = 5
};

/// The version of a backend, as its host knows it.
struct backend_version_info {
    unsigned int major_version = 0; ///< the first number
    unsigned int minor_version = 0; ///< the second one
    unsigned int patch_version = 0; ///< the third one
    utility::string label; ///< what stands behind the numbers, such as `beta`; may be empty
};

/// What a host offers to its backends. A host derives from it and hands out a `backend_query` for
/// it; backends never see it themselves. Host and backends are built separately and meet at the
/// order of these operations, which therefore never changes.
///
/// Directories are paths without a separator at the end, and empty where the host has none. Whether
/// operations may be called from several threads is for the host to say, and so are the errors:
/// customary are `not_found` (1) for a name or a type that is not known, and `not_supported` (6)
/// for another structure under a known name, which a host may also take in place of the old one.
/// What is meant to change a structure is `replace_structure_type`.
class TAVI_IOAPI_API host_interface {
public:
    host_interface(host_interface const&) = delete;
    host_interface& operator=(host_interface const&) = delete;
    /// The library never ends a host.
    virtual ~host_interface();

    /// The version of the backend that asks.
    [[nodiscard]] virtual backend_version_info backend_version() const = 0;

    /// Where the backend keeps its own data.
    [[nodiscard]] virtual utility::string p_backend_data_directory() const = 0;
    /// Where the project lies that the host has open.
    [[nodiscard]] virtual utility::string p_project_directory() const = 0;
    /// Where the extensions lie that all users share.
    [[nodiscard]] virtual utility::string p_shared_extension_directory() const = 0;
    /// Where the extensions of this user lie.
    [[nodiscard]] virtual utility::string p_private_extension_directory() const = 0;

    /// Take a record for the log; the text lives for the call only.
    virtual void push_log_record(log_severity_level level, utility::string_view text) const = 0;

    /// The data type that belongs to a name. \param[out] error  set by the host: code 0 or why not
    [[nodiscard]] virtual io_data_type lookup_data_type(plc_identifier const& name,
                                                        io_error& error) const = 0;
    /// The structure that an object type names. \param[out] error  set by the host
    [[nodiscard]] virtual io_structure_type lookup_structure_type(io_data_type const& type,
                                                                  io_error& error) const = 0;

    /// Make a structure known under a name. \param structure  the host's to move from
    /// \param[out] error  set by the host \return the type by which it is known from now on
    [[nodiscard]] virtual io_data_type register_structure_type(plc_identifier const& name,
                                                               io_structure_type structure,
                                                               io_error& error) = 0;
    /// Put another structure in place of a known one. \param structure  the host's to move from
    /// \param[out] error  set by the host
    virtual void replace_structure_type(io_data_type const& type,
                                        io_structure_type structure,
                                        io_error& error) = 0;
    /// Make a structure unknown again. \param[out] error  set by the host
    virtual void unregister_structure_type(io_data_type const& type, io_error& error) = 0;
    /// Make all structures unknown again.
    virtual void clear_structure_types() = 0;

protected:
    host_interface() noexcept = default;
};

} // namespace tavi::ioapi::v2
