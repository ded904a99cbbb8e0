#include <tavi/ioapi/v2/backend_query.hpp>

#include "every_operation.hpp"
#include "recording_host.hpp"
#include "support/allocations.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>

namespace {

using namespace tavi::ioapi::v2;
using backend_test::every_operation;
using backend_test::recording_host;

TEST(BackendQueryHandle, IsOnePointerToTheHost) {
    recording_host host;
    backend_query const query(host);
    EXPECT_EQ(test_support::field_at<host_interface const*>(query, 0), &host);
    static_assert(sizeof(backend_query) == sizeof(void*));
    static_assert(std::is_trivially_copyable_v<backend_query>);
    static_assert(!std::is_default_constructible_v<backend_query>);
    static_assert(!std::is_convertible_v<host_interface&, backend_query>);
}

TEST(BackendQueryHandle, IsCopiedToAskTheSameHost) {
    recording_host first;
    recording_host second;
    backend_query query(first);
    [[maybe_unused]] backend_query const copy(query);
    (void)copy.p_project_directory();
    EXPECT_EQ(first.take_calls().size(), 1U);
    query = backend_query(second);
    (void)query.p_project_directory();
    EXPECT_EQ(first.take_calls().size(), 0U);
    EXPECT_EQ(second.take_calls().size(), 1U);
}

TEST(BackendQueryHandle, NeverEndsTheHost) {
    recording_host::destroyed = 0;
    std::optional<recording_host> host(std::in_place);
    {
        backend_query query(*host);
        [[maybe_unused]] backend_query const copy(query);
        for (auto const& operation : every_operation) operation.call(query);
    }
    EXPECT_EQ(recording_host::destroyed, 0);
    host.reset();
    EXPECT_EQ(recording_host::destroyed, 1);
}

TEST(BackendQueryHandle, NeedsNoMemory) {
    recording_host host;
    test_support::allocation_counter const counter;
    backend_query const query(host);
    [[maybe_unused]] backend_query const copy(query);
    EXPECT_EQ(counter.allocations(), 0U);
}

// The directories for instance are for everybody; what changes structures is not.
TEST(BackendQueryHandle, AsksByConstantMethodsWhereTheHostDoes) {
    using query = backend_query;
    static_assert(
        std::is_same_v<decltype(&query::backend_version), backend_version_info (query::*)() const>);
    static_assert(std::is_same_v<decltype(&query::p_backend_data_directory),
                                 utility::string (query::*)() const>);
    static_assert(
        std::is_same_v<decltype(&query::p_project_directory), utility::string (query::*)() const>);
    static_assert(std::is_same_v<decltype(&query::p_shared_extension_directory),
                                 utility::string (query::*)() const>);
    static_assert(std::is_same_v<decltype(&query::p_private_extension_directory),
                                 utility::string (query::*)() const>);
    static_assert(std::is_same_v<decltype(&query::push_log_record),
                                 void (query::*)(log_severity_level, utility::string_view) const>);
    static_assert(std::is_same_v<decltype(&query::lookup_data_type),
                                 io_data_type (query::*)(plc_identifier const&, io_error&) const>);
    static_assert(
        std::is_same_v<decltype(&query::lookup_structure_type),
                       io_structure_type (query::*)(io_data_type const&, io_error&) const>);
    static_assert(std::is_same_v<decltype(&query::register_structure_type),
                                 io_data_type (query::*)(plc_identifier const&, io_structure_type,
                                                         io_error&)>);
    static_assert(
        std::is_same_v<decltype(&query::replace_structure_type),
                       void (query::*)(io_data_type const&, io_structure_type, io_error&)>);
    static_assert(std::is_same_v<decltype(&query::unregister_structure_type),
                                 void (query::*)(io_data_type const&, io_error&)>);
    static_assert(std::is_same_v<decltype(&query::clear_structure_types), void (query::*)()>);
}

} // namespace
