#include <gtest/gtest.h>
#include <iohost/assignment.hpp>
#include <iohost/failures.hpp>
#include <iohost/value_syntax.hpp>

#include <cmath>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using declared = v2::io_data_type;
using kinds = declared::basic_types;
using v2::utility::array;

v2::io_value natural(std::string const& text) {
    return iohost::natural_value(iohost::parsed_value(text));
}

TEST(value_syntax, tells_values_apart_as_they_are_written) {
    struct {
        char const* text;
        v2::io_value value;
    } const expected[] = {
        {"true", true},
        {"false", false},
        {"5", 5LL},
        {"-5", -5LL},
        {"9223372036854775807", 9223372036854775807LL},
        {"9223372036854775808", 9223372036854775808ULL},
        {"18446744073709551615", 18446744073709551615ULL},
        {"1.5", 1.5},
        {"1e3", 1000.0},
        {"\"5\"", "5"},
        {"\"a\\nb\"", "a\nb"},
        {"north", "north"},
        {"True", "True"},
        {"null", "null"},
        {"nan", "nan"},
        {"007", "007"},
        {"0x10", "0x10"},
        {"", ""},
        {" 5 x", " 5 x"},
        {"[1,2,3]", array<long long>{1, 2, 3}},
        {"[1, 18446744073709551615]", array<unsigned long long>{1, 18446744073709551615ULL}},
        {"[1, 2.5]", array<double>{1, 2.5}},
        {"[true,false]", array<bool>{true, false}},
        {"[\"a\",\"b\"]", array<v2::utility::string>{"a", "b"}},
    };
    for (auto const& [text, value] : expected) {
        auto const parsed = natural(text);
        EXPECT_EQ(parsed.data_type(), value.data_type()) << text;
        EXPECT_TRUE(identical(parsed, value)) << text << " gives " << parsed;
    }
}

TEST(value_syntax, arrays_of_unlike_elements_hold_values) {
    auto const value = natural("[1, \"a\", [true]]");
    auto const* const elements = value.get_if<array<v2::io_value>>();
    ASSERT_NE(elements, nullptr);
    ASSERT_EQ(elements->size(), 3U);
    EXPECT_TRUE(identical((*elements)[0], 1LL));
    EXPECT_TRUE(identical((*elements)[1], "a"));
    EXPECT_TRUE(identical((*elements)[2], array<bool>{true}));
}

TEST(value_syntax, what_begins_as_json_must_be_well_formed) {
    for (char const* const text : {"[1,", "{\"a\":}", "\"open", "[1] 2", "{a: 1}", "["}) {
        EXPECT_THROW((void)iohost::parsed_value(text), iohost::setup_failure) << text;
    }
}

v2::io_value as_type(std::string const& text, declared const& type, v2::io_error& error) {
    v2::io_structure_dictionary structures;
    return iohost::value_as(iohost::parsed_value(text), type, structures, error);
}

TEST(value_syntax, values_become_those_of_a_type) {
    struct {
        char const* text;
        declared type;
        v2::io_value value;
    } const expected[] = {
        {"5", declared::scalar(kinds::u8), static_cast<unsigned char>(5)},
        {"5.0", declared::scalar(kinds::u8), static_cast<unsigned char>(5)},
        {"5", declared::scalar(kinds::flt), 5.0F},
        {"20000000", declared::scalar(kinds::flt), 20000000.0F},
        {"5", declared::scalar(kinds::dbl), 5.0},
        {"1", declared::scalar(kinds::boolean), true},
        {"false", declared::scalar(kinds::boolean), false},
        {"5", declared::scalar(kinds::string), "5"},
        {"[1, 2]", declared::array_of(kinds::u16), array<unsigned short>{1, 2}},
        {"[]", declared::array_of(kinds::i32), array<int>()},
    };
    for (auto const& [text, type, value] : expected) {
        v2::io_error error;
        auto const converted = as_type(text, type, error);
        EXPECT_FALSE(error) << text << ": " << error;
        EXPECT_EQ(converted.data_type(), type) << text;
        EXPECT_TRUE(identical(converted, value)) << text << " gives " << converted;
    }
}

TEST(value_syntax, what_is_none_of_a_type_is_refused) {
    struct {
        char const* text;
        declared type;
        v2::io_errc code;
    } const expected[] = {
        {"300", declared::scalar(kinds::u8), v2::io_errc::value_too_large},
        {"300.0", declared::scalar(kinds::u8), v2::io_errc::value_too_large},
        {"1.5", declared::scalar(kinds::i32), v2::io_errc::value_too_large},
        {"-1", declared::scalar(kinds::u64), v2::io_errc::value_too_large},
        {"18446744073709551616", declared::scalar(kinds::u64), v2::io_errc::value_too_large},
        {"1e300", declared::scalar(kinds::flt), v2::io_errc::value_too_large},
        {"2", declared::scalar(kinds::boolean), v2::io_errc::value_too_large},
        {"no", declared::scalar(kinds::boolean), v2::io_errc::incompatible_type},
        {"true", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {"\"\"", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {"abc", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {"[1]", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {"{}", declared::scalar(kinds::i32), v2::io_errc::incompatible_type},
        {"1", declared::array_of(kinds::i32), v2::io_errc::incompatible_type},
        {"[1, 300]", declared::array_of(kinds::u8), v2::io_errc::value_too_large},
        {"5", declared::object(7), v2::io_errc::incompatible_type},
        {"{\"a\": 1}", declared::object(7), v2::io_errc::not_found},
    };
    for (auto const& [text, type, code] : expected) {
        v2::io_error error;
        (void)as_type(text, type, error);
        EXPECT_EQ(error, v2::io_error(code)) << text << " as " << type;
    }
}

class value_syntax_objects : public testing::Test {
protected:
    v2::io_value build(std::string const& text) {
        return iohost::value_as(iohost::parsed_value(text), outer_, structures_, error_);
    }

    v2::io_structure_dictionary structures_;
    v2::io_error error_;
    declared inner_ =
        structures_.add_structure({"inner", {{"on", declared::scalar(kinds::boolean)}}}, error_);
    declared many_ = {kinds::object, inner_.structure_id, 2, 0};
    declared outer_ = structures_.add_structure({"outer",
                                                 {{"speed", declared::scalar(kinds::flt)},
                                                  {"steps", declared::array_of(kinds::u8)},
                                                  {"one", inner_},
                                                  {"more", many_}}},
                                                error_);
};

TEST_F(value_syntax_objects, are_built_over_their_structure) {
    auto const value =
        build(R"({"speed": 2, "steps": [1, 2], "one": {"on": true}, "more": [{"on": false}, {}]})");
    ASSERT_FALSE(error_) << error_;
    EXPECT_EQ(value.data_type(), outer_);
    auto const* const object = value.get_if<v2::io_object>();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(identical(object->get("speed"), 2.0F));
    EXPECT_TRUE(identical(object->get("steps"), array<unsigned char>{1, 2}));
    EXPECT_EQ(object->get("one").get_if<v2::io_object>()->get("on"), true);
    auto const more = object->get("more");
    EXPECT_EQ(more.data_type(), many_);
    ASSERT_NE(more.get_if<array<v2::io_object>>(), nullptr);
    EXPECT_EQ((*more.get_if<array<v2::io_object>>())[0].get("on"), false);
}

TEST_F(value_syntax_objects, leave_out_what_is_not_said) {
    auto const value = build("{}");
    ASSERT_FALSE(error_);
    EXPECT_TRUE(value.get_if<v2::io_object>()->empty());
}

TEST_F(value_syntax_objects, say_which_member_is_wrong) {
    (void)build(R"({"sped": 2})");
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::invalid_property));
    EXPECT_EQ(error_.diagnostics().get("member"), "sped");
    (void)build(R"({"steps": [1, 256]})");
    EXPECT_EQ(error_, v2::io_error(v2::io_errc::value_too_large));
    EXPECT_EQ(error_.diagnostics().get("member"), "steps");
    EXPECT_EQ(error_.diagnostics().get("index"), 1);
}

TEST(value_syntax, texts_of_settings_become_those_of_their_type) {
    auto const number = declared::scalar(kinds::u16);
    EXPECT_TRUE(identical(*iohost::text_as("502", number), static_cast<unsigned short>(502)));
    for (char const* const text : {"", "65536", "-1", "http", "5 0", "0x5", "[5]", "true"}) {
        EXPECT_FALSE(iohost::text_as(text, number).has_value()) << text;
    }
    auto const text = declared::scalar(kinds::string);
    EXPECT_TRUE(identical(*iohost::text_as("5", text), "5"));
    EXPECT_TRUE(identical(*iohost::text_as("[1", text), "[1"));
    EXPECT_TRUE(identical(*iohost::text_as("\" a\"", text), " a"));
    EXPECT_TRUE(identical(*iohost::text_as("", text), ""));
    auto const truth = declared::scalar(kinds::boolean);
    EXPECT_TRUE(identical(*iohost::text_as("false", truth), false));
    EXPECT_FALSE(iohost::text_as("yes", truth).has_value());
    EXPECT_TRUE(
        identical(*iohost::text_as("[1, 2]", declared::array_of(kinds::i32)), array<int>{1, 2}));
}

TEST(assignment, takes_name_type_and_value_apart) {
    auto const plain = iohost::parsed_assignment("tank.level=a=b");
    EXPECT_EQ(plain.identifier, v2::plc_identifier("tank.level"));
    EXPECT_FALSE(plain.type.has_value());
    EXPECT_EQ(plain.value, "a=b");
    auto const typed = iohost::parsed_assignment("a:b/m:u16=5");
    EXPECT_EQ(typed.identifier, v2::plc_identifier("a:b", "m"));
    EXPECT_EQ(typed.type, declared::scalar(kinds::u16));
    EXPECT_EQ(typed.value, 5);
    EXPECT_EQ(iohost::parsed_assignment("a:string=5").value, "5");
    EXPECT_EQ(iohost::parsed_assignment("a:string=").value, "");
}

TEST(assignment, refuses_what_is_none) {
    for (char const* const text :
         {"", "a", "=5", "a:i33=5", "a:=5", ":u8=5", "a:u8=300", "a:u8=", "/m=5", "a=[1"}) {
        EXPECT_THROW((void)iohost::parsed_assignment(text), iohost::setup_failure) << text;
    }
}

} // namespace
