#include <gtest/gtest.h>
#include <iohost/entry_name.hpp>
#include <iohost/failures.hpp>

#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using iohost::identifier_named;
using iohost::name_of;
using v2::plc_identifier;

struct named_entry {
    char const* name;
    plc_identifier identifier;
};

std::vector<named_entry> const& named_entries() {
    static std::vector<named_entry> const all{
        {"tank.level", plc_identifier("tank.level")},
        {"pump1.state/speed", plc_identifier("pump1.state", "speed")},
        {"a//b", plc_identifier("a/b")},
        {"a//b/c//d", plc_identifier("a/b", "c/d")},
        {"a///m", plc_identifier("a/", "m")},
        {"#17", plc_identifier(17)},
        {"#18446744073709551615", plc_identifier(18446744073709551615ULL)},
        {"#17/speed", plc_identifier(17, "speed")},
        {"pump/#3", plc_identifier("pump", 3)},
        {"##17", plc_identifier("#17")},
        {"###", plc_identifier("##")},
        {"with blank", plc_identifier("with blank")},
        {"a=b:c", plc_identifier("a=b:c")},
    };
    return all;
}

TEST(entry_name, stands_for_an_identifier) {
    for (auto const& [name, identifier] : named_entries()) {
        EXPECT_EQ(identifier_named(name), identifier) << name;
    }
    EXPECT_EQ(identifier_named("#"), plc_identifier("#"));
    EXPECT_EQ(identifier_named("#abc"), plc_identifier("#abc"));
}

TEST(entry_name, is_shown_as_it_is_given) {
    for (auto const& [name, identifier] : named_entries()) {
        EXPECT_EQ(name_of(identifier), name);
    }
    EXPECT_EQ(name_of(plc_identifier("a\x1b")), "a\\x1b");
}

TEST(entry_name, of_no_variable_is_refused) {
    for (char const* const name : {"", "/", "/speed", "pump/", "a/b/c", "#18446744073709551616",
                                   "pump/#99999999999999999999"}) {
        EXPECT_THROW((void)identifier_named(name), iohost::setup_failure) << name;
    }
}

} // namespace
