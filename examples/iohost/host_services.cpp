#include "host_services.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "entry_name.hpp"
#include "module_path.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace fs = std::filesystem;

bool equal(v2::io_structure_type const& left, v2::io_structure_type const& right) {
    if (left.name() != right.name()) return false;
    auto at = right.begin();
    auto const end = right.end();
    for (auto const& [name, type] : left) {
        if (at == end) return false;
        auto const other = *at;
        if (other.first != name || other.second != type) return false;
        ++at;
    }
    return at == end;
}

/// `HOME/.local/share/iokern`, or where the user has his data instead.
fs::path user_directory() {
    fs::path base;
    if (char const* const data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
        base = data;
    } else if (char const* const home = std::getenv("HOME"); home != nullptr && *home == '/') {
        base = fs::path(home) / ".local" / "share";
    } else {
        base = fs::temp_directory_path();
    }
    return base / "iokern";
}

v2::utility::string text_of(fs::path const& directory) {
    std::string text = directory.string();
    while (text.size() > 1 && text.back() == '/') text.pop_back();
    return text;
}

v2::io_error name_is_taken(v2::plc_identifier const& name) {
    v2::io_error_diagnostics_generic details;
    details.set(v2::diagnostics_key::operation, "register a structure under a name that is taken");
    details.set("name", name_of(name));
    v2::io_error error(v2::io_errc::not_supported);
    error.diagnostics(details);
    return error;
}

} // namespace

host_services::host_services(log_taker take_record) : take_record_(std::move(take_record)) {}

void host_services::serve(std::string const& name, v2::backend_version_info version) {
    std::lock_guard const lock(guard_);
    name_ = name;
    version_ = std::move(version);
}

host_services::log_taker host_services::take_records_by(log_taker take_record) {
    std::lock_guard const lock(records_);
    return std::exchange(take_record_, std::move(take_record));
}

std::size_t host_services::structure_count() const {
    std::lock_guard const lock(guard_);
    return names_.size();
}

v2::backend_version_info host_services::backend_version() const {
    std::lock_guard const lock(guard_);
    return version_;
}

v2::utility::string host_services::p_backend_data_directory() const {
    std::lock_guard const lock(guard_);
    return text_of(user_directory() / "backends" / name_);
}

v2::utility::string host_services::p_project_directory() const {
    return text_of(fs::current_path());
}

v2::utility::string host_services::p_shared_extension_directory() const {
    return text_of(program_directory().parent_path() / "lib" / "iokern");
}

v2::utility::string host_services::p_private_extension_directory() const {
    return text_of(user_directory() / "extensions");
}

void host_services::push_log_record(level severity, v2::utility::string_view text) const {
    std::lock_guard const lock(records_);
    take_record_(severity, text);
}

v2::io_data_type host_services::lookup_data_type(v2::plc_identifier const& name,
                                                 v2::io_error& error) const {
    error.reset();
    std::lock_guard const lock(guard_);
    auto const found = names_.find(name);
    if (found != names_.end()) return found->second;
    error = v2::io_errc::not_found;
    return {};
}

v2::io_structure_type host_services::lookup_structure_type(v2::io_data_type const& type,
                                                           v2::io_error& error) const {
    return structures_.get_structure(type.structure_id, error);
}

v2::io_data_type host_services::register_structure_type(v2::plc_identifier const& name,
                                                        v2::io_structure_type structure,
                                                        v2::io_error& error) {
    error.reset();
    std::lock_guard const lock(guard_);
    if (auto const found = names_.find(name); found != names_.end()) {
        auto const known = structures_.get_structure(found->second.structure_id, error);
        if (!error && equal(known, structure)) return found->second;
        error = name_is_taken(name);
        return {};
    }
    auto const type = structures_.add_structure(std::move(structure), error);
    if (!error) names_.emplace(name, type);
    return type;
}

void host_services::replace_structure_type(v2::io_data_type const& type,
                                           v2::io_structure_type structure,
                                           v2::io_error& error) {
    error.reset();
    std::lock_guard const lock(guard_);
    if (name_of(type) == names_.end()) {
        error = v2::io_errc::not_found;
    } else {
        structures_.replace_structure(type.structure_id, std::move(structure), error);
    }
}

void host_services::unregister_structure_type(v2::io_data_type const& type, v2::io_error& error) {
    error.reset();
    std::lock_guard const lock(guard_);
    auto const found = name_of(type);
    if (found == names_.end()) {
        error = v2::io_errc::not_found;
        return;
    }
    structures_.remove_structure(type.structure_id, error);
    names_.erase(found);
}

void host_services::clear_structure_types() {
    std::lock_guard const lock(guard_);
    v2::io_error ignored; // all of them are there
    for (auto const& [name, type] : names_) {
        structures_.remove_structure(type.structure_id, ignored);
    }
    names_.clear();
}

host_services::name_map::const_iterator host_services::name_of(v2::io_data_type const& type) const {
    return std::find_if(names_.begin(), names_.end(), [&](auto const& known) {
        return known.second.structure_id == type.structure_id;
    });
}

std::string name_of(v2::log_severity_level level) {
    switch (level) {
    case v2::log_severity_level::trace: return "trace";
    case v2::log_severity_level::debug: return "debug";
    case v2::log_severity_level::information: return "information";
    case v2::log_severity_level::warning: return "warning";
    case v2::log_severity_level::error: return "error";
    case v2::log_severity_level::fatal: return "fatal";
    }
    return "level " + std::to_string(static_cast<unsigned int>(level));
}

} // namespace iohost
