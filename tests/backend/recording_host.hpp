#pragma once

#include <tavi/ioapi/v2/host_interface.hpp>

#include "support/object_bytes.hpp"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace backend_test {

using namespace tavi::ioapi::v2;

inline io_data_type const registered_type{io_data_type::basic_types::object, 11, 2, 3};
inline io_data_type const looked_up_type{io_data_type::basic_types::flt, 12, 4, 5};

/// What a host throws; no exception of the library's.
struct host_failure {
    int number;
};

/// One call as it came to the host.
struct host_call {
    std::string operation;
    void const* first = nullptr; ///< the first argument by its address, or the text's
    void const* error = nullptr; ///< the record by its address
    unsigned int number = 0;     ///< the level, and the length of the text
    unsigned int length = 0;
    std::string structure{};              ///< the name of the structure type
    void const* structure_impl = nullptr; ///< its private part

    friend bool operator==(host_call const&, host_call const&) = default;
};

/// A host that writes down each call, answers what the test expects, and fails on demand.
class recording_host final : public host_interface {
public:
    ~recording_host() override { ++destroyed; }

    backend_version_info backend_version() const override {
        note({"backend_version"});
        return {1, 22, 333, "beta"};
    }
    utility::string p_backend_data_directory() const override {
        note({"p_backend_data_directory"});
        return "/data";
    }
    utility::string p_project_directory() const override {
        note({"p_project_directory"});
        return "/project";
    }
    utility::string p_shared_extension_directory() const override {
        note({"p_shared_extension_directory"});
        return "/shared";
    }
    utility::string p_private_extension_directory() const override {
        note({"p_private_extension_directory"});
        return "/private";
    }
    void push_log_record(log_severity_level level, utility::string_view text) const override {
        note({"push_log_record", text.data(), nullptr, static_cast<unsigned int>(level),
              text.size()});
    }
    io_data_type lookup_data_type(plc_identifier const& name, io_error& error) const override {
        note({"lookup_data_type", &name, &error});
        set(error);
        return looked_up_type;
    }
    io_structure_type lookup_structure_type(io_data_type const& type,
                                            io_error& error) const override {
        note({"lookup_structure_type", &type, &error});
        set(error);
        return io_structure_type("looked up", {{"member", looked_up_type}});
    }
    io_data_type register_structure_type(plc_identifier const& name,
                                         io_structure_type structure,
                                         io_error& error) override {
        note({"register_structure_type", &name, &error}, &structure);
        set(error);
        return registered_type;
    }
    void replace_structure_type(io_data_type const& type,
                                io_structure_type structure,
                                io_error& error) override {
        note({"replace_structure_type", &type, &error}, &structure);
        set(error);
    }
    void unregister_structure_type(io_data_type const& type, io_error& error) override {
        note({"unregister_structure_type", &type, &error});
        set(error);
    }
    void clear_structure_types() override { note({"clear_structure_types"}); }

    /// The calls since the last asking.
    std::vector<host_call> take_calls() { return std::exchange(calls_, {}); }

    std::optional<io_error> outcome;              ///< stored in each error
    std::optional<host_failure> failure;          ///< thrown by each call
    io_structure_type* structure_taker = nullptr; ///< given the structure by a move
    inline static int destroyed = 0;

private:
    void note(host_call call, io_structure_type* structure = nullptr) const {
        if (structure != nullptr) {
            call.structure = structure->name().str();
            call.structure_impl = test_support::impl_of(*structure);
            if (structure_taker != nullptr) *structure_taker = std::move(*structure);
        }
        calls_.push_back(std::move(call));
        if (failure) throw *failure;
    }
    void set(io_error& error) const {
        if (outcome) error = *outcome;
    }

    mutable std::vector<host_call> calls_;
};

} // namespace backend_test
