#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <string>
#include <utility>
#include <vector>

namespace boundary {

namespace v2 = tavi::ioapi::v2;

/// A host that knows the structures that were registered with it. The test program and the module
/// each have one of their own.
class own_host final : public v2::host_interface {
public:
    v2::backend_version_info backend_version() const override { return {1, 2, 3, "beta"}; }
    v2::utility::string p_backend_data_directory() const override { return "/data"; }
    v2::utility::string p_project_directory() const override { return "/project"; }
    v2::utility::string p_shared_extension_directory() const override { return "/shared"; }
    v2::utility::string p_private_extension_directory() const override { return "/private"; }

    void push_log_record(v2::log_severity_level level,
                         v2::utility::string_view text) const override {
        log.emplace_back(level, text.str());
    }

    v2::io_data_type lookup_data_type(v2::plc_identifier const& name,
                                      v2::io_error& error) const override {
        error.reset();
        for (auto const& [known, structure] : structures) {
            if (known == name) return v2::io_data_type::object(1);
        }
        error = v2::io_errc::not_found;
        v2::io_error_diagnostics_generic diagnostics;
        diagnostics.set(v2::diagnostics_key::operation, "lookup");
        error.diagnostics(diagnostics);
        return {};
    }
    v2::io_structure_type lookup_structure_type(v2::io_data_type const& type,
                                                v2::io_error& error) const override {
        error.reset();
        if (type.structure_id != 0 && type.structure_id <= structures.size()) {
            return structures[static_cast<std::size_t>(type.structure_id) - 1].second;
        }
        error = v2::io_errc::invalid_backend_context;
        return {};
    }
    v2::io_data_type register_structure_type(v2::plc_identifier const& name,
                                             v2::io_structure_type structure,
                                             v2::io_error& error) override {
        error.reset();
        structures.emplace_back(name, std::move(structure));
        return v2::io_data_type::object(structures.size());
    }
    void replace_structure_type(v2::io_data_type const& type,
                                v2::io_structure_type structure,
                                v2::io_error& error) override {
        error.reset();
        structures.at(static_cast<std::size_t>(type.structure_id) - 1).second =
            std::move(structure);
    }
    void unregister_structure_type(v2::io_data_type const&, v2::io_error& error) override {
        error.reset();
        structures.pop_back();
    }
    void clear_structure_types() override {
        structures = decltype(structures)();
        log = decltype(log)();
    }

    mutable std::vector<std::pair<v2::log_severity_level, std::string>> log;
    std::vector<std::pair<v2::plc_identifier, v2::io_structure_type>> structures;
};

} // namespace boundary
