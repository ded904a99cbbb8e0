#include <tavi/ioapi/v2/ioapi.hpp>

#include <backend_support/not_found.hpp>
#include <gtest/gtest.h>

#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;

struct named_identifier {
    v2::plc_identifier identifier;
    char const* name;
};

TEST(not_found, names_identifiers_as_their_users_do) {
    named_identifier const cases[] = {
        {v2::plc_identifier("tank.level"), "tank.level"},
        {v2::plc_identifier("pump.state", "speed"), "pump.state/speed"},
        {v2::plc_identifier(17), "17"},
        {v2::plc_identifier(17, 2), "17/2"},
        {v2::plc_identifier("a/b\n"), "a/b\n"},
        {v2::plc_identifier(), ""},
    };
    for (auto const& each : cases) {
        EXPECT_EQ(backend_support::name_of(each.identifier), each.name);
    }
}

TEST(not_found, says_what_was_tried_with_which_variable) {
    auto const error = backend_support::not_found("write", v2::plc_identifier("tank", "level"));
    EXPECT_EQ(error, v2::io_error(v2::io_errc::not_found));
    EXPECT_EQ(error.diagnostics().size(), 2U);
    EXPECT_EQ(error.diagnostics().get(v2::diagnostics_key::operation), v2::io_value("write"));
    EXPECT_EQ(error.diagnostics().get("variable"), v2::io_value("tank/level"));
}

} // namespace
