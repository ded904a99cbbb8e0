#include <tavi/ioapi/v2/backend_query.hpp>

#include "asked_host.hpp"
#include "every_operation.hpp"
#include "recording_host.hpp"
#include "support/allocations.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using backend_test::every_operation;
using backend_test::host_call;
using backend_test::host_failure;
using backend_test::looked_up_type;
using backend_test::registered_type;
using test_support::live_blocks;
using host_calls = std::vector<host_call>;

class BackendQuery : public backend_test::asked_host {};

TEST_F(BackendQuery, GivesTheVersion) {
    auto const version = constant.backend_version();
    EXPECT_EQ(version.major_version, 1U);
    EXPECT_EQ(version.minor_version, 22U);
    EXPECT_EQ(version.patch_version, 333U);
    EXPECT_EQ(version.label, "beta");
    EXPECT_EQ(host.take_calls(), (host_calls{{"backend_version"}}));
}

TEST(BackendVersion, IsZeroWithoutALabelByDefault) {
    backend_version_info const version;
    EXPECT_EQ(version.major_version, 0U);
    EXPECT_EQ(version.minor_version, 0U);
    EXPECT_EQ(version.patch_version, 0U);
    EXPECT_TRUE(version.label.empty());
}

TEST_F(BackendQuery, GivesTheDirectories) {
    EXPECT_EQ(constant.p_backend_data_directory(), "/data");
    EXPECT_EQ(constant.p_project_directory(), "/project");
    EXPECT_EQ(constant.p_shared_extension_directory(), "/shared");
    EXPECT_EQ(constant.p_private_extension_directory(), "/private");
    EXPECT_EQ(host.take_calls(), (host_calls{{"p_backend_data_directory"},
                                             {"p_project_directory"},
                                             {"p_shared_extension_directory"},
                                             {"p_private_extension_directory"}}));
}

TEST_F(BackendQuery, GivesTheDirectoriesAsStandardStrings) {
    static_assert(std::is_same_v<decltype(constant.project_directory()), std::string>);
    EXPECT_EQ(constant.backend_data_directory(), "/data");
    EXPECT_EQ(constant.project_directory(), "/project");
    EXPECT_EQ(constant.shared_extension_directory(), "/shared");
    EXPECT_EQ(constant.private_extension_directory(), "/private");
    EXPECT_EQ(host.take_calls(), (host_calls{{"p_backend_data_directory"},
                                             {"p_project_directory"},
                                             {"p_shared_extension_directory"},
                                             {"p_private_extension_directory"}}));
}

TEST_F(BackendQuery, PassesLogRecordsOn) {
    char const text[] = "a text that goes on behind its end";
    for (unsigned int const level : {0U, 1U, 2U, 3U, 4U, 5U, 99U, 0xFFFFFFFFU}) {
        constant.push_log_record(log_severity_level{level}, {text, 6});
        EXPECT_EQ(host.take_calls(), (host_calls{{"push_log_record", text, nullptr, level, 6}}));
        constant.log(log_severity_level{level}, {text + 2, 4});
        EXPECT_EQ(host.take_calls(),
                  (host_calls{{"push_log_record", text + 2, nullptr, level, 4}}));
    }
    constant.push_log_record(log_severity_level::fatal, utility::string_view());
    EXPECT_EQ(host.take_calls(), (host_calls{{"push_log_record", nullptr, nullptr, 5, 0}}));
}

TEST(LogSeverityLevel, RisesFromTraceToFatal) {
    static_assert(sizeof(log_severity_level) == 4);
    EXPECT_EQ(log_severity_level::trace, log_severity_level{0});
    EXPECT_EQ(log_severity_level::debug, log_severity_level{1});
    EXPECT_EQ(log_severity_level::information, log_severity_level{2});
    EXPECT_EQ(log_severity_level::warning, log_severity_level{3});
    EXPECT_EQ(log_severity_level::error, log_severity_level{4});
    EXPECT_EQ(log_severity_level::fatal, log_severity_level{5});
}

TEST_F(BackendQuery, LooksUpADataType) {
    EXPECT_EQ(constant.lookup_data_type(name, error), looked_up_type);
    EXPECT_EQ(host.take_calls(), (host_calls{{"lookup_data_type", &name, &error}}));
}

TEST_F(BackendQuery, LooksUpAStructureType) {
    auto const found = constant.lookup_structure_type(type, error);
    EXPECT_EQ(found.name(), "looked up");
    EXPECT_EQ(found.get_member("member"), looked_up_type);
    EXPECT_EQ(host.take_calls(), (host_calls{{"lookup_structure_type", &type, &error}}));
}

TEST_F(BackendQuery, RegistersAStructureType) {
    EXPECT_EQ(query.register_structure_type(name, io_structure_type("a"), error), registered_type);
    auto const calls_made = host.take_calls();
    ASSERT_EQ(calls_made.size(), 1U);
    EXPECT_EQ(calls_made[0].operation, "register_structure_type");
    EXPECT_EQ(calls_made[0].first, &name);
    EXPECT_EQ(calls_made[0].error, &error);
    EXPECT_EQ(calls_made[0].structure, "a");
}

TEST_F(BackendQuery, ReplacesAStructureType) {
    query.replace_structure_type(type, io_structure_type("a"), error);
    auto const calls_made = host.take_calls();
    ASSERT_EQ(calls_made.size(), 1U);
    EXPECT_EQ(calls_made[0].operation, "replace_structure_type");
    EXPECT_EQ(calls_made[0].first, &type);
    EXPECT_EQ(calls_made[0].error, &error);
    EXPECT_EQ(calls_made[0].structure, "a");
}

TEST_F(BackendQuery, UnregistersAStructureType) {
    query.unregister_structure_type(type, error);
    EXPECT_EQ(host.take_calls(), (host_calls{{"unregister_structure_type", &type, &error}}));
}

TEST_F(BackendQuery, ClearsTheStructureTypes) {
    query.clear_structure_types();
    EXPECT_EQ(host.take_calls(), (host_calls{{"clear_structure_types"}}));
}

// Each operation that has a record to fill.
struct reporting_row {
    char const* operation;
    void (*call)(backend_query&, plc_identifier const&, io_data_type const&, io_error&);
};

reporting_row const reporting_operations[] = {
    {"lookup_data_type",
     [](backend_query& asked, plc_identifier const& name, io_data_type const&, io_error& error) {
         (void)asked.lookup_data_type(name, error);
     }},
    {"lookup_structure_type",
     [](backend_query& asked, plc_identifier const&, io_data_type const& type, io_error& error) {
         (void)asked.lookup_structure_type(type, error);
     }},
    {"register_structure_type",
     [](backend_query& asked, plc_identifier const& name, io_data_type const&, io_error& error) {
         (void)asked.register_structure_type(name, io_structure_type("a"), error);
     }},
    {"replace_structure_type",
     [](backend_query& asked, plc_identifier const&, io_data_type const& type, io_error& error) {
         asked.replace_structure_type(type, io_structure_type("a"), error);
     }},
    {"unregister_structure_type",
     [](backend_query& asked, plc_identifier const&, io_data_type const& type, io_error& error) {
         asked.unregister_structure_type(type, error);
     }},
};

TEST_F(BackendQuery, LeavesTheErrorToTheHost) {
    for (auto const& [operation, call] : reporting_operations) {
        host.outcome.reset();
        error = io_errc::todo;
        call(query, name, type, error);
        EXPECT_EQ(error, io_error(io_errc::todo)) << operation << " changes it by itself";
        host.outcome = io_errc::invalid_backend_context;
        call(query, name, type, error);
        EXPECT_EQ(error, io_error(io_errc::invalid_backend_context)) << operation;
        EXPECT_EQ(error.code(), 9);
        host.outcome = io_error();
        call(query, name, type, error);
        EXPECT_TRUE(error.ok()) << operation;
    }
}

TEST_F(BackendQuery, LetsExceptionsOfTheHostPass) {
    auto const before = live_blocks();
    for (auto const& [operation, place, call] : every_operation) {
        host.failure = host_failure{static_cast<int>(place)};
        bool caught = false;
        try {
            call(query);
        } catch (host_failure const& failure) {
            caught = true;
            EXPECT_EQ(failure.number, static_cast<int>(place));
        }
        EXPECT_TRUE(caught) << operation;
        {
            auto const calls_made = host.take_calls();
            ASSERT_EQ(calls_made.size(), 1U) << operation;
            EXPECT_EQ(calls_made[0].operation, operation);
        }
        EXPECT_EQ(live_blocks(), before) << operation;
    }
}

} // namespace
