#include <gtest/gtest.h>
#include <iohost/printable.hpp>
#include <iohost/table.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using quality = v2::io_data_value::value_quality;

v2::read_result result_with(std::vector<v2::plc_identifier> const& identifiers) {
    return v2::read_result(identifiers);
}

bool print(std::ostream& out, v2::read_result const& result) {
    v2::io_structure_dictionary no_structures;
    return iohost::print_table(out, result, no_structures);
}

TEST(table, shows_values_and_errors_in_columns) {
    auto result = result_with({v2::plc_identifier("level"), v2::plc_identifier("x")});
    result.set(0U, v2::io_data_value(2.5, v2::io_timestamp(1), quality::good));
    result.set(1U, v2::io_error(v2::io_errc::not_found));
    std::ostringstream out;
    EXPECT_FALSE(print(out, result));
    EXPECT_EQ(out.str(), "identifier  type  value  time                          quality  error\n"
                         "level       dbl   2.5    1970-01-01T00:00:00.0000001Z  good     -\n"
                         "x           -     -      -                             -        "
                         "generic:1 not found\n");
}

TEST(table, is_all_well_when_no_entry_failed) {
    auto result = result_with({v2::plc_identifier("unit 4", "level")});
    result.set(0U, v2::io_data_value(true, quality::uncertain));
    std::ostringstream out;
    EXPECT_TRUE(print(out, result));
    EXPECT_NE(out.str().find("unit 4/level  boolean  true   -     uncertain  -\n"),
              std::string::npos)
        << out.str();
}

TEST(table, an_entry_that_was_never_answered_is_an_error) {
    std::ostringstream out;
    EXPECT_FALSE(print(out, result_with({v2::plc_identifier("a")})));
    EXPECT_NE(out.str().find("generic:5 no result"), std::string::npos);
}

TEST(table, shows_arrays_on_one_line) {
    auto result = result_with({v2::plc_identifier("a")});
    v2::io_value const numbers = v2::utility::array<int>{1, 2};
    result.set(0U, v2::io_data_value(numbers, quality::bad));
    std::ostringstream out;
    EXPECT_TRUE(print(out, result));
    EXPECT_NE(out.str().find("a           i32[]  [1, 2]  -     bad      -\n"), std::string::npos)
        << out.str();
}

TEST(table, names_the_structure_of_an_object) {
    v2::io_structure_dictionary structures;
    v2::io_error error;
    v2::io_structure_type const pump(
        "pump", {{"runs", v2::io_data_type::scalar(v2::io_data_type::basic_types::boolean)}});
    auto const type = structures.add_structure(pump, error);
    v2::io_object object(type, pump);
    object.set("runs", true);
    auto result = result_with({v2::plc_identifier("a")});
    result.set(0U, v2::io_data_value(object, quality::good));
    std::ostringstream out;
    EXPECT_TRUE(iohost::print_table(out, result, structures));
    EXPECT_NE(out.str().find("a           object<pump>  {runs: true}  -     good     -\n"),
              std::string::npos)
        << out.str();
}

TEST(table, of_nothing_is_its_head) {
    std::ostringstream out;
    EXPECT_TRUE(print(out, v2::read_result()));
    EXPECT_EQ(out.str(), "identifier  type  value  time  quality  error\n");
}

TEST(printable, replaces_what_controls_a_terminal) {
    EXPECT_EQ(iohost::printable("plain text"), "plain text");
    EXPECT_EQ(iohost::printable("a\nb\x1b[2J\x7f"), "a\\x0ab\\x1b[2J\\x7f");
    EXPECT_EQ(iohost::printable("\xC3\xA4"), "\xC3\xA4");
}

} // namespace
