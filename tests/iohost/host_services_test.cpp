#include "support/host_process.hpp"

#include <gtest/gtest.h>
#include <iohost/host_services.hpp>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using declared = v2::io_data_type;
using kinds = declared::basic_types;
using iohost_support::environment_variable;

class host_services : public testing::Test {
protected:
    static v2::io_structure_type structure(kinds member) {
        return {"pump", {{"runs", declared::scalar(member)}}};
    }

    iohost::host_services host_{[](auto, std::string_view) {}};
    v2::backend_query query_{host_};
    v2::io_error error_ = v2::io_errc::todo;
};

TEST_F(host_services, know_a_structure_by_its_name_and_its_type) {
    v2::plc_identifier const name("pump");
    auto const type = query_.register_structure_type(name, structure(kinds::u16), error_);
    EXPECT_FALSE(error_);
    EXPECT_EQ(type.basic_type, kinds::object);
    EXPECT_NE(type.structure_id, 0U);
    EXPECT_EQ(query_.lookup_data_type(name, error_), type);
    EXPECT_FALSE(error_);
    auto const known = query_.lookup_structure_type(type, error_);
    EXPECT_FALSE(error_);
    EXPECT_EQ(known.get_member("runs"), declared::scalar(kinds::u16));
}

TEST_F(host_services, give_an_equal_structure_of_the_same_name_the_same_type) {
    v2::plc_identifier const name("pump");
    auto const first = query_.register_structure_type(name, structure(kinds::u16), error_);
    auto const again = query_.register_structure_type(name, structure(kinds::u16), error_);
    EXPECT_FALSE(error_);
    EXPECT_EQ(again, first);
    EXPECT_EQ(host_.structure_count(), 1U);
}

TEST_F(host_services, refuse_another_structure_under_a_known_name) {
    v2::plc_identifier const name("pump");
    auto const first = query_.register_structure_type(name, structure(kinds::u16), error_);
    (void)query_.register_structure_type(name, structure(kinds::u32), error_);
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::not_supported));
    EXPECT_EQ(error_.diagnostics().get("name"), "pump");
    EXPECT_EQ(query_.lookup_data_type(name, error_), first);
}

TEST_F(host_services, replace_a_known_structure_alone) {
    auto const type =
        query_.register_structure_type(v2::plc_identifier("pump"), structure(kinds::u16), error_);
    query_.replace_structure_type(type, structure(kinds::u32), error_);
    EXPECT_FALSE(error_);
    auto const known = query_.lookup_structure_type(type, error_);
    EXPECT_EQ(known.get_member("runs"), declared::scalar(kinds::u32));
    query_.replace_structure_type(declared::object(7), structure(kinds::u32), error_);
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::not_found));
}

TEST_F(host_services, forget_structures) {
    v2::plc_identifier const name("pump");
    auto const type = query_.register_structure_type(name, structure(kinds::u16), error_);
    query_.unregister_structure_type(type, error_);
    EXPECT_FALSE(error_);
    query_.unregister_structure_type(type, error_);
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::not_found));
    (void)query_.lookup_data_type(name, error_);
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::not_found));
    (void)query_.register_structure_type(name, structure(kinds::u16), error_);
    query_.clear_structure_types();
    EXPECT_EQ(host_.structure_count(), 0U);
    (void)query_.lookup_data_type(name, error_);
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::not_found));
}

TEST_F(host_services, tell_the_version_of_the_module) {
    host_.serve("modbus", {1, 2, 3, "beta"});
    auto const version = query_.backend_version();
    EXPECT_EQ(version.major_version, 1U);
    EXPECT_EQ(version.minor_version, 2U);
    EXPECT_EQ(version.patch_version, 3U);
    EXPECT_EQ(version.label, "beta");
}

TEST_F(host_services, name_directories_without_a_separator_at_the_end) {
    environment_variable const data("XDG_DATA_HOME", "/home/me/data/");
    host_.serve("modbus", {});
    EXPECT_EQ(query_.backend_data_directory(), "/home/me/data/iokern/backends/modbus");
    EXPECT_EQ(query_.private_extension_directory(), "/home/me/data/iokern/extensions");
    EXPECT_EQ(query_.project_directory(), std::filesystem::current_path().string());
    EXPECT_TRUE(query_.shared_extension_directory().ends_with("/lib/iokern"));
}

TEST_F(host_services, give_records_to_their_taker) {
    std::vector<std::pair<v2::log_severity_level, std::string>> taken;
    host_.take_records_by(
        [&](auto level, std::string_view text) { taken.emplace_back(level, text); });
    query_.log(v2::log_severity_level::warning, "valve stuck");
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_EQ(taken[0].first, v2::log_severity_level::warning);
    EXPECT_EQ(taken[0].second, "valve stuck");
    EXPECT_EQ(iohost::name_of(v2::log_severity_level::warning), "warning");
    EXPECT_EQ(iohost::name_of(static_cast<v2::log_severity_level>(9)), "level 9");
}

} // namespace
