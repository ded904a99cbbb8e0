#include <tavi/ioapi/v2/config/config_template.hpp>

#include "samples.hpp"

#include <gtest/gtest.h>

#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// How options are found across the categories of a form.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::config_template;
using config::option;
using config_test::category_of;
using config_test::long_key;
using config_test::option_of;
using config_test::texts;

config_template two_categories() {
    config_template form;
    form.add_category(category_of("first", {"a", "b"}, "of the first"));
    form.add_category(category_of("second", {"b", "c", ""}, "of the second"));
    return form;
}

TEST(TemplateOption, IsAskedForByViewsOfTheLibrary) {
    using has = bool (config_template::*)(utility::string_view) const;
    using get = option* (config_template::*)(utility::string_view);
    using get_constant = option const* (config_template::*)(utility::string_view) const;
    EXPECT_NE(static_cast<has>(&config_template::has_option), nullptr);
    EXPECT_NE(static_cast<has>(&config_template::has_category), nullptr);
    EXPECT_NE(static_cast<get>(&config_template::get_option), nullptr);
    EXPECT_NE(static_cast<get_constant>(&config_template::get_option), nullptr);
}

TEST(TemplateOption, IsFoundInAnyCategory) {
    config_template form = two_categories();
    auto const categories = form.categories();
    EXPECT_EQ(form.get_option("a"), &categories[0].options()[0]);
    EXPECT_EQ(form.get_option("c"), &categories[1].options()[1]);
    EXPECT_EQ(form.get_option(""), &categories[1].options()[2]);
    EXPECT_EQ(form.get_option(utility::string_view()), &categories[1].options()[2]);
    for (char const* const key : {"a", "c", ""}) {
        EXPECT_EQ(std::as_const(form).get_option(key), form.get_option(key));
    }
}

TEST(TemplateOption, IsFoundExactly) {
    config_template form = two_categories();
    for (std::string_view const key :
         {"A"sv, "aa"sv, "a\0"sv, "d"sv, "first"sv, "of the first"sv}) {
        EXPECT_EQ(form.get_option(key), nullptr) << key;
        EXPECT_EQ(std::as_const(form).get_option(key), nullptr) << key;
    }
}

TEST(ConfigTemplate, ShadowsALaterCategoryWithTheOptionOfAnEarlierOne) {
    config_template form = two_categories();
    ASSERT_NE(form.get_option("b"), nullptr);
    EXPECT_EQ(form.get_option("b")->description(), "of the first");
    EXPECT_EQ(std::as_const(form).get_option("b")->description(), "of the first");
    EXPECT_TRUE(form.remove_category("first"));
    ASSERT_NE(form.get_option("b"), nullptr);
    EXPECT_EQ(form.get_option("b")->description(), "of the second");
    EXPECT_EQ(form.get_option("a"), nullptr);
}

TEST(TemplateOption, OfALaterCategoryShowsWhereTheEarlierOneIsRemoved) {
    config_template form = two_categories();
    form.get_category("first")->remove_option("b");
    EXPECT_EQ(form.get_option("b")->description(), "of the second");
}

TEST(TemplateOption, CanBeChangedWhereItIsFound) {
    static_assert(
        std::is_same_v<decltype(std::declval<config_template&>().get_option("")), option*>);
    static_assert(std::is_same_v<decltype(std::declval<config_template const&>().get_option("")),
                                 option const*>);
    config_template form = two_categories();
    config_template const copy(form);
    *form.get_option("c") = option_of("d", "changed");
    EXPECT_EQ(form.get_option("c"), nullptr);
    EXPECT_EQ(form.categories()[1].options()[1].description(), "changed");
    EXPECT_NE(copy.get_option("c"), nullptr);
    EXPECT_EQ(copy.get_option("d"), nullptr);
}

TEST(TemplateHasOption, IsFalseForAnOptionThatIsThere) {
    config_template form;
    form.add_category(category_of("category", {"x"}));
    ASSERT_NE(form.get_option("x"), nullptr);
    EXPECT_FALSE(form.has_option("x"));
}

TEST(TemplateHasOption, IsTrueForACategoryOfThatName) {
    config_template form;
    form.add_category(category_of("x", {"y"}));
    ASSERT_EQ(form.get_option("x"), nullptr);
    EXPECT_TRUE(form.has_option("x"));
    EXPECT_FALSE(form.has_option("y"));
    form.remove_category("x");
    EXPECT_FALSE(form.has_option("x"));
}

TEST(TemplateHasOption, AnswersAsHasCategoryDoes) {
    config_template form = two_categories();
    form.add_category(category_of("a\0b"sv));
    for (std::string_view const text :
         {"first"sv, "second"sv, "First"sv, "firs"sv, "a"sv, "a\0b"sv, ""sv, "c"sv}) {
        EXPECT_EQ(form.has_option(text), form.has_category(text)) << text;
    }
    EXPECT_TRUE(form.has_option("a\0b"sv));
    EXPECT_FALSE(form.has_option(""));
    form.add_category(category_of(""));
    EXPECT_TRUE(form.has_option(""));
}

TEST(TemplateOption, IsFoundWithoutMemory) {
    config_template form = two_categories();
    test_support::allocation_counter const counter;
    for (std::string_view const text : {"c"sv, "second"sv, std::string_view(long_key)}) {
        (void)form.get_option(text);
        (void)std::as_const(form).get_option(text);
        (void)form.has_option(text);
        (void)form.has_category(text);
        (void)form.get_category(text);
    }
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(TemplateCopy, IsIndependentAtEachLevel) {
    config_template form = two_categories();
    config_template assigned;
    assigned.add_category(category_of("old", {"a", "b", "c", "d"}));
    assigned = form;
    config_template const made(form);
    form.remove_category("second");
    form.get_category("first")->remove_option("a");
    *form.get_option("b") = option_of("#");
    for (config_template const* const copy : {&std::as_const(assigned), &made}) {
        EXPECT_EQ(config_test::names_of(copy->categories()), (texts{"first", "second"}));
        EXPECT_EQ(config_test::keys_of(copy->categories()[0].options()), (texts{"a", "b"}));
        EXPECT_EQ(config_test::keys_of(copy->categories()[1].options()), (texts{"b", "c", ""}));
    }
}

} // namespace
