#include "tables.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::backend_query;
using v2::io_data_type;
using v2::io_error;
using v2::io_structure_type;

/// A host whose answers take memory, and which keeps nothing of what fails.
class short_host final : public v2::host_interface {
public:
    v2::backend_version_info backend_version() const override { return {1, 2, 3, long_text}; }
    v2::utility::string p_backend_data_directory() const override { return long_text; }
    v2::utility::string p_project_directory() const override { return long_text; }
    v2::utility::string p_shared_extension_directory() const override { return long_text; }
    v2::utility::string p_private_extension_directory() const override { return long_text; }
    void push_log_record(v2::log_severity_level, v2::utility::string_view text) const override {
        log = text;
    }
    io_data_type lookup_data_type(v2::plc_identifier const& name, io_error& error) const override {
        v2::plc_identifier const remembered(name);
        error.reset();
        return io_data_type::object(7);
    }
    io_structure_type lookup_structure_type(io_data_type const&, io_error& error) const override {
        io_structure_type found(known);
        error.reset();
        return found;
    }
    io_data_type register_structure_type(v2::plc_identifier const&,
                                         io_structure_type structure,
                                         io_error& error) override {
        io_structure_type copy(structure);
        known = std::move(copy);
        error.reset();
        return io_data_type::object(8);
    }
    void replace_structure_type(io_data_type const&,
                                io_structure_type structure,
                                io_error& error) override {
        known = std::move(structure);
        error.reset();
    }
    void unregister_structure_type(io_data_type const&, io_error& error) override {
        known = io_structure_type();
        error.reset();
    }
    void clear_structure_types() override { known = io_structure_type(); }

    friend std::string text_of(short_host const& host) {
        return text_of(host.log) + text_of(host.known);
    }

    mutable v2::utility::string log{"old"};
    io_structure_type known{long_text, {{long_text, io_data_type()}}};
};

} // namespace

std::vector<operation> service_operations() {
    std::vector<operation> rows;
    auto const row = [&rows](std::string const& name, promise kept, std::vector<std::string> tries,
                             auto run) {
        for (std::string& tried : tries) tried = "backend_query::" + tried;
        rows.push_back(operation_of(
            name, kept, std::move(tries), [] { return short_host(); },
            [run](short_host& host) {
                backend_query query(host);
                return run(query);
            }));
    };
    row("TheVersionOfABackend", promise::unchanged, {"backend_version"},
        [](backend_query& query) { return query.backend_version(); });
    row("TheDataDirectory", promise::unchanged, {"p_backend_data_directory"},
        [](backend_query& query) { return query.backend_data_directory(); });
    row("TheProjectDirectory", promise::unchanged, {"p_project_directory"},
        [](backend_query& query) { return query.project_directory(); });
    row("TheSharedDirectory", promise::unchanged, {"p_shared_extension_directory"},
        [](backend_query& query) { return query.shared_extension_directory(); });
    row("ThePrivateDirectory", promise::unchanged, {"p_private_extension_directory"},
        [](backend_query& query) { return query.private_extension_directory(); });
    row("ALogRecord", promise::unchanged, {"push_log_record"}, [](backend_query& query) {
        query.push_log_record(v2::log_severity_level::error, other_text);
    });
    row("ATypeThatIsLookedUp", promise::unchanged, {"lookup_data_type"}, [](backend_query& query) {
        io_error error;
        return query.lookup_data_type(v2::plc_identifier(long_text), error);
    });
    row("AStructureThatIsLookedUp", promise::unchanged, {"lookup_structure_type"},
        [](backend_query& query) {
            io_error error;
            return query.lookup_structure_type(io_data_type(), error);
        });
    row("AStructureThatIsRegistered", promise::unchanged, {"register_structure_type"},
        [](backend_query& query) {
            io_error error;
            return query.register_structure_type(v2::plc_identifier(long_text),
                                                 io_structure_type(other_text), error);
        });
    row("AStructureThatIsExchanged", promise::unchanged, {"replace_structure_type"},
        [](backend_query& query) {
            io_error error;
            query.replace_structure_type(io_data_type(), io_structure_type(other_text), error);
        });
    row("AStructureThatIsUnregistered", promise::unchanged, {"unregister_structure_type"},
        [](backend_query& query) {
            io_error error;
            query.unregister_structure_type(io_data_type(), error);
        });
    row("StructuresThatAreCleared", promise::unchanged, {"clear_structure_types"},
        [](backend_query& query) { query.clear_structure_types(); });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Services,
                         MemoryRunsOut,
                         ::testing::ValuesIn(service_operations()),
                         name_of_row());

} // namespace allocation_failure_test
