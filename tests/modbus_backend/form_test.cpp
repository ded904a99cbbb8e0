#include "support/module_test.hpp"

#include <modbus_backend/form.hpp>

#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using basic_types = v2::io_data_type::basic_types;

std::vector<std::string> keys_in(config::category const& category) {
    std::vector<std::string> keys;
    for (auto const& option : category.options()) keys.push_back(option.key().str());
    return keys;
}

TEST(form, has_the_connection_and_the_timing) {
    auto const form = modbus_backend::make_form();
    ASSERT_EQ(form.categories().size(), 2U);
    auto const& connection = form.categories()[0];
    EXPECT_EQ(connection.name(), "connection");
    EXPECT_TRUE(connection.wants_connection());
    EXPECT_FALSE(connection.collapsed());
    EXPECT_EQ(keys_in(connection), (std::vector<std::string>{"map", "host", "port", "unit",
                                                             "byte_order", "word_order"}));
    auto const& timing = form.categories()[1];
    EXPECT_EQ(timing.name(), "timing");
    EXPECT_FALSE(timing.wants_connection());
    EXPECT_TRUE(timing.collapsed());
    EXPECT_EQ(keys_in(timing), (std::vector<std::string>{"timeout_ms", "poll_interval_ms"}));
}

TEST(form, every_text_for_people_is_there) {
    auto const form = modbus_backend::make_form();
    for (auto const& category : form.categories()) {
        EXPECT_FALSE(category.description().empty()) << category.name();
        for (auto const& option : category.options()) {
            EXPECT_FALSE(option.display_name().empty()) << option.key();
            EXPECT_FALSE(option.description().empty()) << option.key();
        }
    }
}

TEST(form, map_and_host_are_required_texts) {
    auto const form = modbus_backend::make_form();
    for (auto const* const key : {"map", "host"}) {
        auto const* const option = form.get_option(key);
        ASSERT_NE(option, nullptr) << key;
        EXPECT_FALSE(option->optional()) << key;
        EXPECT_EQ(option->value_type(), basic_types::string) << key;
    }
}

struct default_case {
    char const* key;
    v2::io_value value;

    ~default_case() noexcept = default; // as that of GoogleTest, which holds it
};

class form_defaults : public ::testing::TestWithParam<default_case> {};

TEST_P(form_defaults, make_an_option_optional) {
    auto const form = modbus_backend::make_form();
    auto const* const option = form.get_option(GetParam().key);
    ASSERT_NE(option, nullptr);
    EXPECT_TRUE(option->optional());
    EXPECT_TRUE(identical(option->default_value(), GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(all,
                         form_defaults,
                         ::testing::Values(default_case{"port", 502U},
                                           default_case{"unit", 255U},
                                           default_case{"byte_order", "big"},
                                           default_case{"word_order", "big"},
                                           default_case{"timeout_ms", 2000U},
                                           default_case{"poll_interval_ms", 500U}));

TEST(form, orders_are_chosen_from_two_that_say_what_they_are) {
    auto const form = modbus_backend::make_form();
    for (auto const* const key : {"byte_order", "word_order"}) {
        auto const choices = form.get_option(key)->options();
        ASSERT_EQ(choices.size(), 2U) << key;
        EXPECT_TRUE(identical(choices[0].value, v2::io_value("big"))) << key;
        EXPECT_TRUE(identical(choices[1].value, v2::io_value("little"))) << key;
        for (auto const& choice : choices) {
            EXPECT_FALSE(choice.display_name.empty()) << key;
            EXPECT_FALSE(choice.description.empty()) << key;
        }
    }
}

class described_module : public test_support::module_test {};

TEST_F(described_module, gives_the_form_in_place_of_what_was_there) {
    config::config_template form;
    form.add_category({"other", "", false, false});
    v2::io_error error(v2::io_errc::todo); // must be cleared
    module->form(form, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_FALSE(form.has_category("other"));
    EXPECT_TRUE(form.has_category("connection"));
}

TEST_F(described_module, says_what_it_is) {
    example::module_info info;
    v2::io_error error(v2::io_errc::todo); // must be cleared
    module->describe(info, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(info.name, "modbus");
    EXPECT_FALSE(info.summary.empty());
    EXPECT_EQ(info.version.major_version, 1U);
}

} // namespace
