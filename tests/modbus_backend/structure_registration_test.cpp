#include <examples/support/recording_host.hpp>
#include <gtest/gtest.h>
#include <modbus_backend/map_parser.hpp>
#include <modbus_backend/setup_error.hpp>
#include <modbus_backend/structure_registration.hpp>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using modbus_backend::register_structures;
using modbus_backend::setup_error;
using modbus_backend::structure_list;

structure_list three_structures() {
    std::istringstream text("structure a\nx 0 u16\nend\nstructure b\ny 0 flt[2]\nend\n"
                            "structure c\nz 0 string(4)\nend\n");
    return modbus_backend::parse_map(text).structures;
}

/// Takes structures up to a count, and remembers what it is asked to forget.
class choosy_host final : public v2::host_interface {
public:
    unsigned int room = 0;
    std::vector<unsigned long long> known;

    v2::backend_version_info backend_version() const override { return {}; }
    v2::utility::string p_backend_data_directory() const override { return {}; }
    v2::utility::string p_project_directory() const override { return {}; }
    v2::utility::string p_shared_extension_directory() const override { return {}; }
    v2::utility::string p_private_extension_directory() const override { return {}; }
    void push_log_record(v2::log_severity_level, v2::utility::string_view) const override {}
    v2::io_data_type lookup_data_type(v2::plc_identifier const&, v2::io_error&) const override {
        return {};
    }
    v2::io_structure_type lookup_structure_type(v2::io_data_type const&,
                                                v2::io_error&) const override {
        return {};
    }
    v2::io_data_type register_structure_type(v2::plc_identifier const&,
                                             v2::io_structure_type,
                                             v2::io_error& error) override {
        error.reset();
        if (known.size() >= room) {
            error = v2::io_errc::invalid_backend_context;
            return {};
        }
        known.push_back(known.size() + 1);
        return v2::io_data_type::object(known.size());
    }
    void replace_structure_type(v2::io_data_type const&,
                                v2::io_structure_type,
                                v2::io_error&) override {}
    void unregister_structure_type(v2::io_data_type const& type, v2::io_error& error) override {
        error.reset();
        std::erase(known, type.structure_id);
    }
    void clear_structure_types() override { known.clear(); }
};

TEST(structure_registration, tells_the_host_names_and_members) {
    test_support::recording_host host;
    auto const structures = three_structures();
    register_structures(structures, v2::backend_query(host));
    EXPECT_EQ(host.types().size(), 3U);
    v2::io_error error;
    auto const type = host.lookup_data_type(v2::plc_identifier("b"), error);
    ASSERT_TRUE(error.ok());
    EXPECT_EQ(structures[1]->blank->type(), type);
    auto const known = host.lookup_structure_type(type, error);
    EXPECT_EQ(known.name(), "b");
    EXPECT_EQ(known.get_member("y"), v2::io_data_type::array_of(v2::io_value::basic_types::flt));
}

TEST(structure_registration, gives_up_what_it_has_registered_where_the_host_takes_no_more) {
    choosy_host host;
    host.room = 2;
    auto const structures = three_structures();
    try {
        register_structures(structures, v2::backend_query(host));
        FAIL() << "registered";
    } catch (setup_error const& failure) {
        EXPECT_EQ(failure.error(), v2::io_error(v2::io_errc::invalid_backend_context));
        EXPECT_EQ(std::string(failure.what()).find("the host does not take the structure 'c': "),
                  0U);
    }
    EXPECT_TRUE(host.known.empty());
    for (auto const& described : structures) EXPECT_FALSE(described->blank.has_value());
}

} // namespace
