#pragma once

#include <tavi/ioapi/v2/host_interface.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace test_support {

struct log_record {
    tavi::ioapi::v2::log_severity_level level;
    std::string text;

    friend bool operator==(log_record const&, log_record const&) = default;
};

/// A host that keeps what a backend gives it: log records, and structure types by name and by id.
/// A name that is registered again stands for the new type from then on; the old type stays known.
class recording_host final : public tavi::ioapi::v2::host_interface {
public:
    recording_host() = default;

    [[nodiscard]] std::vector<log_record> const& log() const noexcept { return log_; }
    /// The types by the names under which they were registered last.
    [[nodiscard]] auto const& types() const noexcept { return types_; }

    tavi::ioapi::v2::backend_version_info backend_version() const override {
        return {1, 2, 3, "test"};
    }
    tavi::ioapi::v2::utility::string p_backend_data_directory() const override { return "/data"; }
    tavi::ioapi::v2::utility::string p_project_directory() const override { return "/project"; }
    tavi::ioapi::v2::utility::string p_shared_extension_directory() const override {
        return "/shared";
    }
    tavi::ioapi::v2::utility::string p_private_extension_directory() const override {
        return "/private";
    }

    void push_log_record(tavi::ioapi::v2::log_severity_level level,
                         tavi::ioapi::v2::utility::string_view text) const override {
        log_.push_back({level, text.str()});
    }

    tavi::ioapi::v2::io_data_type lookup_data_type(
        tavi::ioapi::v2::plc_identifier const& name,
        tavi::ioapi::v2::io_error& error) const override {
        error.reset();
        auto const found = types_.find(name);
        if (found != types_.end()) return found->second;
        error = tavi::ioapi::v2::io_errc::not_found;
        return {};
    }
    tavi::ioapi::v2::io_structure_type lookup_structure_type(
        tavi::ioapi::v2::io_data_type const& type,
        tavi::ioapi::v2::io_error& error) const override {
        return structures_.get_structure(type.structure_id, error);
    }
    tavi::ioapi::v2::io_data_type register_structure_type(
        tavi::ioapi::v2::plc_identifier const& name,
        tavi::ioapi::v2::io_structure_type structure,
        tavi::ioapi::v2::io_error& error) override {
        auto const type = structures_.add_structure(std::move(structure), error);
        types_[name] = type;
        ids_.push_back(type.structure_id);
        return type;
    }
    void replace_structure_type(tavi::ioapi::v2::io_data_type const& type,
                                tavi::ioapi::v2::io_structure_type structure,
                                tavi::ioapi::v2::io_error& error) override {
        // The dictionary would add what it does not know.
        static_cast<void>(structures_.get_structure(type.structure_id, error));
        if (error) return;
        structures_.replace_structure(type.structure_id, std::move(structure), error);
    }
    void unregister_structure_type(tavi::ioapi::v2::io_data_type const& type,
                                   tavi::ioapi::v2::io_error& error) override {
        structures_.remove_structure(type.structure_id, error);
        if (error) return;
        std::erase_if(types_, [&](auto const& known) { return known.second == type; });
        std::erase(ids_, type.structure_id);
    }
    void clear_structure_types() override {
        tavi::ioapi::v2::io_error ignored;
        for (auto const id : ids_) structures_.remove_structure(id, ignored);
        ids_.clear();
        types_.clear();
    }

private:
    mutable std::vector<log_record> log_;
    mutable tavi::ioapi::v2::io_structure_dictionary structures_; ///< a look-up takes its lock
    std::unordered_map<tavi::ioapi::v2::plc_identifier, tavi::ioapi::v2::io_data_type> types_;
    std::vector<unsigned long long> ids_;
};

} // namespace test_support
