#include "support/played_controller.hpp"

#include <examples/support/recording_host.hpp>
#include <gtest/gtest.h>
#include <modbus_backend/map_parser.hpp>
#include <modbus_backend/structure_registration.hpp>
#include <modbus_backend/writer.hpp>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using modbus_backend::make_modbus_error;
using modbus_backend::modbus_errc;

/// Variables by their lines in a map, of which each test uses one.
class writer : public ::testing::Test {
protected:
    using texts = std::vector<std::string>;

    /// `pump` has a gap at its offset 3, and between its members `name` and `last` none.
    modbus_backend::variable variable_of(std::string const& line) {
        std::istringstream text("structure pump\n  runs 0 u16\n  speed 1 flt word_order=little\n"
                                "  name 4 string(2)\n  last 6 u16[2]\nend\n" +
                                line);
        auto contents = modbus_backend::parse_map(text);
        register_structures(contents.structures, v2::backend_query(host));
        return contents.variables.at(0);
    }

    v2::io_error write(std::string const& line, v2::io_value const& value) {
        return write_variable(variable_of(line), value, controller);
    }

    v2::io_error write_part(std::string const& line,
                            std::string const& member,
                            v2::io_value const& value) {
        return write_member(variable_of(line), v2::utility::string_view(member), value, controller);
    }

    static v2::io_value detail(v2::io_error const& error, char const* name) {
        return error.diagnostics().get(name);
    }

    test_support::recording_host host;
    test_support::played_controller controller;
};

constexpr char const* whole_pump = "p holding 20 pump";

TEST_F(writer, writes_one_register_or_several) {
    EXPECT_TRUE(write("a holding 7 u16", 1500).ok());
    EXPECT_TRUE(write("b holding 10 flt", 1.5F).ok());
    EXPECT_EQ(controller.asked, texts({"write 7+1", "write 10+2"}));
    EXPECT_EQ(controller.registers[7], 1500);
    EXPECT_EQ(controller.registers[10], 0x3FC0);
    EXPECT_EQ(controller.registers[11], 0);
}

TEST_F(writer, writes_one_coil_or_several) {
    EXPECT_TRUE(write("a coil 3 boolean", true).ok());
    EXPECT_TRUE(write("b coil 5 boolean[3]", v2::utility::array<bool>{true, false, true}).ok());
    EXPECT_EQ(controller.asked, texts({"write 3+1", "write 5+3"}));
    EXPECT_EQ(controller.bits[3], 1);
    EXPECT_EQ(controller.bits[5], 1);
    EXPECT_EQ(controller.bits[6], 0);
    EXPECT_EQ(controller.bits[7], 1);
}

TEST_F(writer, what_can_only_be_read_is_refused_before_anything_is_asked) {
    for (auto const* const line :
         {"a input 1 u16", "a discrete 1 boolean", "a input 20 pump", "a input 1 u16[3]"}) {
        auto const error = write(line, 1);
        EXPECT_EQ(error, make_modbus_error(modbus_errc::read_only)) << line;
        EXPECT_EQ(detail(error, "variable"), v2::io_value("a"));
    }
    EXPECT_EQ(write_part("a input 20 pump", "runs", 1), make_modbus_error(modbus_errc::read_only));
    EXPECT_TRUE(controller.asked.empty());
}

TEST_F(writer, a_value_that_does_not_convert_is_refused_before_anything_is_asked) {
    auto const error = write("a holding 7 u16", "high");
    EXPECT_EQ(error, v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_EQ(detail(error, v2::diagnostics_key::operation), v2::io_value("convert"));
    EXPECT_EQ(detail(error, v2::diagnostics_key::source_type), v2::io_value("string"));
    EXPECT_EQ(detail(error, v2::diagnostics_key::target_type), v2::io_value("u16"));
    EXPECT_EQ(detail(error, v2::diagnostics_key::address).as<int>(), 7);
    EXPECT_EQ(detail(error, "variable"), v2::io_value("a"));
    EXPECT_EQ(write("a holding 7 u16", 65536), v2::io_error(v2::io_errc::value_too_large));
    EXPECT_TRUE(controller.asked.empty());
}

TEST_F(writer, what_the_controller_answers_stands_in_the_error) {
    controller.write_error = make_modbus_error(modbus_errc::illegal_data_value);
    auto const error = write("a holding 7 u16", 1);
    EXPECT_EQ(error, controller.write_error);
    EXPECT_EQ(detail(error, v2::diagnostics_key::operation), v2::io_value("write single register"));
    EXPECT_EQ(detail(error, v2::diagnostics_key::device_code).as<int>(), 3);
    EXPECT_EQ(detail(error, v2::diagnostics_key::address).as<int>(), 7);
}

struct refused_write_case {
    char const* line;
    v2::io_value value;
    char const* operation;
    int function;
    int address;
};

TEST_F(writer, what_is_refused_before_anything_is_asked_names_function_address_and_variable) {
    refused_write_case const cases[] = {
        {"a holding 7 u16", "high", "convert", 6, 7},
        {"a holding 7 u32", v2::io_value(), "convert", 16, 7},
        {"a holding 7 u16[2]", 1, "convert", 16, 7},
        {"a holding 7 string(2)", "abcde", "convert", 16, 7},
        {"a coil 3 boolean", "maybe", "convert", 5, 3},
        {"a coil 3 boolean[2]", true, "convert", 15, 3},
        {"a holding 20 pump", 5, "convert", 16, 20},
        // What can only be read has no function that writes it.
        {"a input 9 u16", 1, "write", 4, 9},
        {"a discrete 2 boolean", true, "write", 2, 2},
        {"a input 20 pump", 1, "write", 4, 20},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(each.line);
        auto const error = write(each.line, each.value);
        ASSERT_TRUE(error.failed());
        EXPECT_EQ(detail(error, v2::diagnostics_key::operation), v2::io_value(each.operation));
        EXPECT_EQ(detail(error, "function").try_as<int>(), each.function);
        EXPECT_EQ(detail(error, v2::diagnostics_key::address).try_as<int>(), each.address);
        EXPECT_EQ(detail(error, "variable"), v2::io_value("a"));
    }
    EXPECT_TRUE(controller.asked.empty());
}

TEST_F(writer, a_member_that_is_refused_names_function_address_and_member) {
    auto const expect = [this](char const* member, v2::io_value const& value, int function,
                               int address) {
        auto const error = write_part("p holding 20 pump", member, value);
        ASSERT_TRUE(error.failed()) << member;
        EXPECT_EQ(detail(error, "function").try_as<int>(), function) << member;
        EXPECT_EQ(detail(error, v2::diagnostics_key::address).try_as<int>(), address) << member;
        EXPECT_EQ(detail(error, "variable"), v2::io_value(std::string("p/") + member));
    };
    expect("runs", "no number", 6, 20);
    expect("speed", "fast", 16, 21);
    expect("torque", 1, 16, 20);
}

TEST_F(writer, the_function_is_that_of_the_kind_and_the_count) {
    controller.write_error = make_modbus_error(modbus_errc::device_busy);
    auto const function = [this](char const* line, v2::io_value const& value) {
        return detail(write(line, value), "function").as<int>();
    };
    EXPECT_EQ(function("a coil 1 boolean", true), 5);
    EXPECT_EQ(function("a holding 1 u16", 1), 6);
    EXPECT_EQ(function("a coil 1 boolean[2]", v2::utility::array<bool>{true, true}), 15);
    EXPECT_EQ(function("a holding 1 u32", 1), 16);
}

TEST_F(writer, what_is_wider_than_a_request_goes_in_pieces_of_whole_elements) {
    EXPECT_TRUE(write("a holding 0 u16[125]", v2::utility::array<int>(125)).ok());
    EXPECT_TRUE(write("a holding 0 dbl[31]", v2::utility::array<double>(31)).ok());
    EXPECT_TRUE(write("a holding 0 string(125)", std::string(250, 'x')).ok());
    EXPECT_TRUE(write("a coil 0 boolean[2000]", v2::utility::array<bool>(2000)).ok());
    EXPECT_EQ(controller.asked,
              texts({"write 0+123", "write 123+2", "write 0+120", "write 120+4", "write 0+123",
                     "write 123+2", "write 0+1968", "write 1968+32"}));
    EXPECT_EQ(controller.registers[124], 0x7878);
}

TEST_F(writer, after_a_piece_that_fails_no_other_is_tried) {
    controller.write_error = make_modbus_error(modbus_errc::timeout);
    EXPECT_EQ(write("a holding 0 u16[125]", v2::utility::array<int>(125)), controller.write_error);
    EXPECT_EQ(controller.asked, texts({"write 0+123"}));
}

TEST_F(writer, of_a_structure_only_the_registers_of_the_member_are_written) {
    controller.registers.fill(0xAAAA);
    EXPECT_TRUE(write_part(whole_pump, "speed", 1.5F).ok());
    EXPECT_EQ(controller.asked, texts({"read 20+8", "write 21+2"}));
    EXPECT_EQ(controller.registers[20], 0xAAAA);
    EXPECT_EQ(controller.registers[21], 0); // low word first
    EXPECT_EQ(controller.registers[22], 0x3FC0);
    EXPECT_EQ(controller.registers[23], 0xAAAA);
}

TEST_F(writer, a_member_takes_what_converts_to_its_type) {
    EXPECT_TRUE(write_part(whole_pump, "last", v2::utility::array<double>{3, 4}).ok());
    EXPECT_TRUE(write_part(whole_pump, "name", 12).ok());
    EXPECT_EQ(controller.registers[26], 3);
    EXPECT_EQ(controller.registers[27], 4);
    EXPECT_EQ(controller.registers[24], 0x3132);
}

TEST_F(writer, a_member_that_is_unknown_or_unfit_is_refused_and_nothing_is_written) {
    auto const unknown = write_part(whole_pump, "torque", 1);
    EXPECT_EQ(unknown, v2::io_error(v2::io_errc::invalid_property));
    EXPECT_EQ(detail(unknown, "variable"), v2::io_value("p/torque"));
    auto const unfit = write_part(whole_pump, "runs", "no number");
    EXPECT_EQ(unfit, v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_EQ(detail(unfit, "variable"), v2::io_value("p/runs"));
    EXPECT_EQ(detail(unfit, v2::diagnostics_key::target_type), v2::io_value("u16"));
    EXPECT_EQ(write_part(whole_pump, "runs", 70000.0), v2::io_error(v2::io_errc::value_too_large));
    EXPECT_EQ(write_part(whole_pump, "last", v2::utility::array<int>{1}),
              make_modbus_error(modbus_errc::wrong_count));
    EXPECT_EQ(write_part(whole_pump, "name", "abcde"), make_modbus_error(modbus_errc::unfit_text));
    EXPECT_EQ(controller.asked, texts(5, "read 20+8"));
}

v2::io_object loose_object(std::vector<std::pair<std::string, v2::io_value>> const& members) {
    v2::io_object made;
    for (auto const& [name, value] : members) made.set(name, value);
    return made;
}

TEST_F(writer, a_whole_structure_leaves_its_gaps) {
    controller.registers.fill(0xAAAA);
    auto const last = v2::utility::array<unsigned short>{8, 9};
    EXPECT_TRUE(write(whole_pump,
                      loose_object({{"runs", 1}, {"speed", 1.5}, {"name", "abcd"}, {"last", last}}))
                    .ok());
    EXPECT_EQ(controller.asked, texts({"read 20+8", "write 20+3", "write 24+4"}));
    std::vector<std::uint16_t> const seen(&controller.registers[19], &controller.registers[29]);
    EXPECT_EQ(seen, (std::vector<std::uint16_t>{0xAAAA, 1, 0, 0x3FC0, 0xAAAA, 0x6162, 0x6364, 8, 9,
                                                0xAAAA}));
}

TEST_F(writer, members_that_an_object_does_not_have_stay_as_they_are) {
    controller.registers.fill(0xAAAA);
    EXPECT_TRUE(write(whole_pump, loose_object({{"runs", 0}, {"name", ""}})).ok());
    EXPECT_EQ(controller.asked, texts({"read 20+8", "write 20+1", "write 24+2"}));
    EXPECT_EQ(controller.registers[21], 0xAAAA);
    EXPECT_EQ(controller.registers[26], 0xAAAA);
}

TEST_F(writer, a_structure_as_wide_as_a_request_goes_in_two) {
    v2::utility::array<unsigned short> words(125);
    words[124] = 7;
    auto const object = loose_object({{"words", words}});
    EXPECT_TRUE(write("structure wide\nwords 0 u16[125]\nend\nw holding 0 wide", object).ok());
    EXPECT_EQ(controller.asked, texts({"read 0+125", "write 0+123", "write 123+2"}));
    EXPECT_EQ(controller.registers[124], 7);
}

TEST_F(writer, nothing_but_a_structure_takes_an_object) {
    auto const object = loose_object({{"runs", 1}});
    v2::utility::array<v2::io_object> objects(2);
    for (auto const* const line :
         {"a coil 3 boolean", "a holding 7 u16", "a holding 7 string(4)"}) {
        EXPECT_EQ(write(line, object), v2::io_error(v2::io_errc::incompatible_type)) << line;
    }
    EXPECT_EQ(write("a coil 3 boolean[2]", objects), v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_TRUE(controller.asked.empty());
}

TEST_F(writer, what_is_not_finite_fits_32_bits_as_well) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(write("a holding 10 flt", std::nan("")).ok());
    EXPECT_EQ(controller.registers[10] & 0x7FC0, 0x7FC0);
    EXPECT_TRUE(write("a holding 10 flt", -endless).ok());
    EXPECT_EQ(controller.registers[10], 0xFF80);
    EXPECT_EQ(controller.registers[11], 0);
    EXPECT_TRUE(write("a holding 10 flt[2]", v2::utility::array<double>{endless, 1.5}).ok());
    EXPECT_EQ(controller.registers[10], 0x7F80);
    EXPECT_EQ(controller.registers[12], 0x3FC0);
    for (auto const& value :
         {v2::io_value(1e300), v2::io_value(v2::utility::array<double>{endless, 1e300})}) {
        auto const* const line = value.is_array() ? "a holding 10 flt[2]" : "a holding 10 flt";
        EXPECT_EQ(write(line, value), v2::io_error(v2::io_errc::value_too_large));
    }
    EXPECT_EQ(write("a holding 10 u16", std::nan("")), v2::io_error(v2::io_errc::value_too_large));
}

TEST_F(writer, an_object_of_the_structure_itself_goes_as_it_is) {
    auto const line = variable_of(whole_pump);
    v2::io_object object = *line.type.members->blank;
    object.set("runs", 7);
    EXPECT_TRUE(write_variable(line, object, controller).ok());
    EXPECT_EQ(controller.registers[20], 7);
}

TEST_F(writer, an_object_without_members_writes_nothing) {
    EXPECT_TRUE(write(whole_pump, v2::io_object()).ok());
    EXPECT_EQ(controller.asked, texts({"read 20+8"}));
}

TEST_F(writer, an_object_with_one_unfit_member_writes_nothing) {
    EXPECT_EQ(write(whole_pump, loose_object({{"runs", 1}, {"torque", 2}})),
              v2::io_error(v2::io_errc::invalid_property));
    EXPECT_EQ(write(whole_pump, loose_object({{"runs", 1}, {"speed", "fast"}})),
              v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_EQ(controller.asked, texts(2, "read 20+8"));
}

TEST_F(writer, a_structure_takes_objects_alone) {
    auto const error = write(whole_pump, 5);
    EXPECT_EQ(error, v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_EQ(detail(error, v2::diagnostics_key::source_type), v2::io_value("i32"));
    EXPECT_EQ(write(whole_pump, v2::io_value()), v2::io_error(v2::io_errc::incompatible_type));
    EXPECT_TRUE(controller.asked.empty());
}

TEST_F(writer, a_structure_that_cannot_be_read_is_not_written) {
    controller.read_error = make_modbus_error(modbus_errc::illegal_data_address);
    auto const error = write_part(whole_pump, "runs", 1);
    EXPECT_EQ(error, controller.read_error);
    EXPECT_EQ(detail(error, v2::diagnostics_key::operation),
              v2::io_value("read holding registers"));
    EXPECT_EQ(controller.asked, texts({"read 20+8"}));
}

TEST_F(writer, a_structure_stays_half_written_where_the_controller_refuses_a_part) {
    controller.write_error = make_modbus_error(modbus_errc::device_failure);
    controller.good_writes = 1;
    EXPECT_EQ(write(whole_pump, loose_object({{"runs", 1}, {"name", "ab"}})),
              controller.write_error);
    EXPECT_EQ(controller.registers[20], 1);
    EXPECT_EQ(controller.registers[24], 0);
}

} // namespace
