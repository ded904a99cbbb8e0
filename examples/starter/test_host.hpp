#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <iostream>

// The least that a host offers: its log is standard output, and it takes no structures.
class test_host final : public tavi::ioapi::v2::host_interface {
    using name = tavi::ioapi::v2::plc_identifier;
    using type = tavi::ioapi::v2::io_data_type;
    using structure = tavi::ioapi::v2::io_structure_type;
    using failure = tavi::ioapi::v2::io_error;
    using text = tavi::ioapi::v2::utility::string;
    static constexpr auto refused = tavi::ioapi::v2::io_errc::not_supported;

public:
    [[nodiscard]] tavi::ioapi::v2::backend_version_info backend_version() const override {
        return {1, 0, 0, "test"};
    }
    [[nodiscard]] text p_backend_data_directory() const override { return "."; }
    [[nodiscard]] text p_project_directory() const override { return "."; }
    [[nodiscard]] text p_shared_extension_directory() const override { return "."; }
    [[nodiscard]] text p_private_extension_directory() const override { return "."; }

    void push_log_record(tavi::ioapi::v2::log_severity_level,
                         tavi::ioapi::v2::utility::string_view record) const override {
        std::cout << record << '\n';
    }

    [[nodiscard]] type lookup_data_type(name const&, failure& error) const override {
        error = refused;
        return {};
    }
    [[nodiscard]] structure lookup_structure_type(type const&, failure& error) const override {
        error = refused;
        return {};
    }
    [[nodiscard]] type register_structure_type(name const&, structure, failure& error) override {
        error = refused;
        return {};
    }
    void replace_structure_type(type const&, structure, failure& error) override {
        error = refused;
    }
    void unregister_structure_type(type const&, failure& error) override { error = refused; }
    void clear_structure_types() override {}
};
