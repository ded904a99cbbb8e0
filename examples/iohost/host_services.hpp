#pragma once

#include <tavi/ioapi/v2/host_interface.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace iohost {

/// What this host offers to the backend that it has loaded. All operations may be called from
/// several threads at a time.
///
/// A structure that is registered under the name of an equal one is that one, and gets its type: a
/// backend that is opened again and again makes the dictionary no longer. Another structure under a
/// known name is refused, `not_supported`; `replace_structure_type` is for that.
class host_services final : public tavi::ioapi::v2::host_interface {
public:
    using level = tavi::ioapi::v2::log_severity_level;
    /// Takes each record of the log; the text lives for the call only.
    using log_taker = std::function<void(level, std::string_view)>;

    /// \param take_record  may be called from any thread, but never by two at a time
    explicit host_services(log_taker take_record);

    /// Say what was loaded.
    /// \param name  of the module, which becomes a part of the directory for its data
    void serve(std::string const& name, tavi::ioapi::v2::backend_version_info version);

    /// Put another one in place of the taker of records, and give that.
    log_taker take_records_by(log_taker take_record);

    /// The structures that are registered, for looking up their names.
    [[nodiscard]] tavi::ioapi::v2::io_structure_dictionary& structures() noexcept {
        return structures_;
    }
    /// How many there are.
    [[nodiscard]] std::size_t structure_count() const;

    [[nodiscard]] tavi::ioapi::v2::backend_version_info backend_version() const override;

    /// Directories as is the custom below the home of a user; none of them is made here.
    /// \{
    [[nodiscard]] tavi::ioapi::v2::utility::string p_backend_data_directory() const override;
    /// The working directory.
    [[nodiscard]] tavi::ioapi::v2::utility::string p_project_directory() const override;
    [[nodiscard]] tavi::ioapi::v2::utility::string p_shared_extension_directory() const override;
    [[nodiscard]] tavi::ioapi::v2::utility::string p_private_extension_directory() const override;
    /// \}

    void push_log_record(level severity, tavi::ioapi::v2::utility::string_view text) const override;

    [[nodiscard]] tavi::ioapi::v2::io_data_type lookup_data_type(
        tavi::ioapi::v2::plc_identifier const& name,
        tavi::ioapi::v2::io_error& error) const override;
    [[nodiscard]] tavi::ioapi::v2::io_structure_type lookup_structure_type(
        tavi::ioapi::v2::io_data_type const& type, tavi::ioapi::v2::io_error& error) const override;
    [[nodiscard]] tavi::ioapi::v2::io_data_type register_structure_type(
        tavi::ioapi::v2::plc_identifier const& name,
        tavi::ioapi::v2::io_structure_type structure,
        tavi::ioapi::v2::io_error& error) override;
    void replace_structure_type(tavi::ioapi::v2::io_data_type const& type,
                                tavi::ioapi::v2::io_structure_type structure,
                                tavi::ioapi::v2::io_error& error) override;
    void unregister_structure_type(tavi::ioapi::v2::io_data_type const& type,
                                   tavi::ioapi::v2::io_error& error) override;
    void clear_structure_types() override;

private:
    using name_map =
        std::unordered_map<tavi::ioapi::v2::plc_identifier, tavi::ioapi::v2::io_data_type>;

    [[nodiscard]] name_map::const_iterator name_of(tavi::ioapi::v2::io_data_type const& type) const;

    mutable std::mutex records_;
    log_taker take_record_;

    mutable std::mutex guard_; ///< of all below
    std::string name_ = "backend";
    tavi::ioapi::v2::backend_version_info version_;
    name_map names_;
    mutable tavi::ioapi::v2::io_structure_dictionary structures_;
};

/// What a level is called, `warning` for one; `level 9` for a number that is none.
[[nodiscard]] std::string name_of(tavi::ioapi::v2::log_severity_level level);

} // namespace iohost
