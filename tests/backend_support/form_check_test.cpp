#include <backend_support/form_check.hpp>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;
using severity = v2::config::verification_result::severity_type;

v2::config::config_template form_of(std::vector<v2::config::option> const& options) {
    v2::config::config_template form;
    form.add_category({"general", "", false, false, options});
    return form;
}

v2::config::store store_of(std::vector<std::pair<std::string, v2::io_value>> const& given) {
    v2::config::store values;
    for (auto const& [key, value] : given) values.set(key, value);
    return values;
}

/// The issues as `key: message`, of which each is an error and names one option.
std::vector<std::string> complaints(v2::config::config_template const& form,
                                    v2::config::store const& values) {
    v2::config::verification_result verdict;
    backend_support::check_values(form, values, verdict);
    std::vector<std::string> lines;
    for (auto const& issue : verdict) {
        EXPECT_EQ(issue.severity, severity::error) << issue.message;
        EXPECT_EQ(issue.options.size(), 1U) << issue.message;
        lines.push_back(issue.options[0].str() + ": " + issue.message.str());
    }
    return lines;
}

using complaint_list = std::vector<std::string>;

v2::config::config_template connection_form() {
    return form_of({{"host", "Host", "", basic_types::string},
                    {"unit", "Unit", "", v2::io_value(static_cast<unsigned char>(1))}});
}

TEST(form_check, takes_values_that_fit_and_leaves_out_optional_ones) {
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", "plc"}})), complaint_list());
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", "plc"}, {"unit", 7}})),
              complaint_list());
    EXPECT_EQ(complaints({}, {}), complaint_list());
}

TEST(form_check, an_unknown_key_is_an_error) {
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", "plc"}, {"color", 1}})),
              complaint_list{"color: 'color' is no option of this backend"});
    EXPECT_EQ(complaints({}, store_of({{"", {}}})),
              complaint_list{": '' is no option of this backend"});
}

TEST(form_check, a_category_is_no_option) {
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", "plc"}, {"general", 1}})),
              complaint_list{"general: 'general' is no option of this backend"});
}

TEST(form_check, a_required_option_needs_a_value_and_the_empty_one_is_none) {
    complaint_list const missing{"host: 'host' is required"};
    EXPECT_EQ(complaints(connection_form(), {}), missing);
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", {}}})), missing);
}

TEST(form_check, options_come_in_the_order_of_the_form_and_unknown_keys_behind_them) {
    EXPECT_EQ(complaints(connection_form(), store_of({{"a", 1}, {"unit", "x"}, {"z", 1}})),
              (complaint_list{"host: 'host' is required",
                              "unit: 'unit' takes a whole number from 0 to 255, not 'x'",
                              "a: 'a' is no option of this backend",
                              "z: 'z' is no option of this backend"}));
}

TEST(form_check, keeps_what_the_verdict_says_already) {
    v2::config::verification_result verdict;
    verdict.add_issue({severity::warning, "slow", {}});
    backend_support::check_values(connection_form(), {}, verdict);
    ASSERT_EQ(verdict.end() - verdict.begin(), 2);
    EXPECT_EQ(verdict.begin()->message, "slow");
}

struct typed_value {
    basic_types type;
    v2::io_value value;
    std::string wanted; ///< empty where the value is taken
};

// The values of one table: a value is no parameter, since its destructor may throw.
void expect_in_its_type(std::vector<typed_value> const& values) {
    for (auto const& [type, value, wanted] : values) {
        auto const form = form_of({{"x", "X", "", type}});
        auto const expected =
            wanted.empty() ? complaint_list() : complaint_list{"x: 'x' takes " + wanted};
        EXPECT_EQ(complaints(form, store_of({{"x", value}})), expected) << value;
    }
}

TEST(form_check, takes_what_means_something_in_the_type_of_its_option) {
    expect_in_its_type({{basic_types::u16, 65535, ""},
                        {basic_types::u16, "502", ""},
                        {basic_types::u16, 502.0, ""},
                        {basic_types::i8, -128, ""},
                        {basic_types::u64, v2::io_value::from_u64(~0ULL), ""},
                        {basic_types::dbl, "2.5", ""},
                        {basic_types::flt, 3, ""},
                        {basic_types::string, "", ""},
                        {basic_types::string, 7, ""},
                        {basic_types::boolean, true, ""},
                        {basic_types::boolean, 0, ""},
                        {basic_types::boolean, "0", ""},
                        {basic_types::boolean, "1", ""}});
}

TEST(form_check, refuses_what_means_nothing_in_the_type_of_its_option) {
    expect_in_its_type(
        {{basic_types::u8, 256, "a whole number from 0 to 255, not '256'"},
         {basic_types::u16, -1, "a whole number from 0 to 65535, not '-1'"},
         {basic_types::u32, "first", "a whole number from 0 to 4294967295, not 'first'"},
         {basic_types::u64, "18446744073709551616",
          "a whole number from 0 to 18446744073709551615, not '18446744073709551616'"},
         {basic_types::i8, 128, "a whole number from -128 to 127, not '128'"},
         {basic_types::i16, "+5", "a whole number from -32768 to 32767, not '+5'"},
         {basic_types::i32, "5 ", "a whole number from -2147483648 to 2147483647, not '5 '"},
         {basic_types::i64, "",
          "a whole number from -9223372036854775808 to 9223372036854775807, not ''"},
         {basic_types::dbl, "far", "a number, not 'far'"},
         {basic_types::flt, "", "a number, not ''"},
         {basic_types::boolean, "false", "0 or 1, not 'false'"},
         {basic_types::boolean, "", "0 or 1, not ''"},
         {basic_types::string, v2::utility::array<int>{1, 2}, "a text"},
         {basic_types::u16, v2::io_object(), "a whole number from 0 to 65535"}});
}

TEST(form_check, a_floating_number_that_an_integer_cannot_hold_is_not_cut_down) {
    // The conversion takes the low bits of these.
    for (double const number :
         {65536.0, 65537.0, -1.0, 0.5, 1e300, std::numeric_limits<double>::quiet_NaN(),
          std::numeric_limits<double>::infinity()}) {
        auto const form = form_of({{"port", "", "", basic_types::u16}});
        EXPECT_EQ(complaints(form, store_of({{"port", number}})).size(), 1U) << number;
    }
}

TEST(form_check, an_empty_value_fits_no_option_with_a_type) {
    EXPECT_EQ(complaints(connection_form(), store_of({{"host", "plc"}, {"unit", {}}})).size(), 1U);
}

TEST(form_check, an_option_made_from_an_empty_default_takes_every_value) {
    auto const form = form_of({{"x", "X", "", v2::io_value()}});
    EXPECT_EQ(complaints(form, store_of({{"x", v2::io_object()}})), complaint_list());
    EXPECT_EQ(complaints(form, store_of({{"x", {}}})), complaint_list());
    EXPECT_EQ(complaints(form, {}), complaint_list());
}

v2::config::config_template choices_form() {
    std::vector<v2::config::option::value_option> const orders{{"Big", "", "big"},
                                                               {"Little", "", "little"}};
    std::vector<v2::config::option::value_option> const speeds{{"9.6", "", 9600},
                                                               {"19.2", "", 19200}};
    return form_of(
        {{"order", "Order", "", "big", orders}, {"speed", "Speed", "", basic_types::u32, speeds}});
}

TEST(form_check, a_choice_is_taken_in_the_type_of_the_option) {
    EXPECT_EQ(complaints(choices_form(), store_of({{"order", "little"}, {"speed", 9600}})),
              complaint_list());
    EXPECT_EQ(complaints(choices_form(), store_of({{"speed", "19200"}})), complaint_list());
    EXPECT_EQ(complaints(choices_form(), store_of({{"speed", 19200.0}})), complaint_list());
}

TEST(form_check, what_is_no_choice_is_answered_with_the_choices) {
    EXPECT_EQ(complaints(choices_form(), store_of({{"order", "Big"}, {"speed", 1}})),
              (complaint_list{"order: 'order' takes one of: big, little",
                              "speed: 'speed' takes one of: 9600, 19200"}));
}

TEST(form_check, what_does_not_convert_is_told_once) {
    EXPECT_EQ(
        complaints(choices_form(), store_of({{"speed", "fast"}})),
        complaint_list{"speed: 'speed' takes a whole number from 0 to 4294967295, not 'fast'"});
}

TEST(form_check, of_two_options_with_one_key_the_first_counts) {
    v2::config::config_template form;
    std::vector<v2::config::option> const number{{"x", "", "", basic_types::u8}};
    std::vector<v2::config::option> const text{{"x", "", "", basic_types::string}};
    form.add_category({"a", "", false, false, number});
    form.add_category({"b", "", false, false, text});
    EXPECT_EQ(complaints(form, store_of({{"x", "one"}})),
              complaint_list{"x: 'x' takes a whole number from 0 to 255, not 'one'"});
    EXPECT_EQ(complaints(form, {}), complaint_list{"x: 'x' is required"});
}

TEST(form_check, the_first_error_is_found_behind_warnings) {
    v2::config::verification_result verdict;
    EXPECT_EQ(backend_support::first_error(verdict), nullptr);
    backend_support::add_issue(verdict, severity::warning, "a", "slow");
    EXPECT_EQ(backend_support::first_error(verdict), nullptr);
    backend_support::add_issue(verdict, severity::error, "b", "wrong");
    backend_support::add_issue(verdict, severity::error, "c", "worse");
    auto const* const first = backend_support::first_error(verdict);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->message, "wrong");
    ASSERT_EQ(first->options.size(), 1U);
    EXPECT_EQ(first->options[0], "b");
}

} // namespace
