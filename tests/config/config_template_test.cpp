#include <tavi/ioapi/v2/config/config_template.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// What a configuration form is made of, and how categories are found in it.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::category;
using config::config_template;
using config_test::category_of;
using config_test::keys_of;
using config_test::long_key;
using config_test::names_of;
using config_test::option_of;
using config_test::texts;
using test_support::impl_of;

TEST(ConfigTemplate, HasNoCategoriesByDefault) {
    config_template form;
    EXPECT_EQ(form.categories().size(), 0U);
    EXPECT_EQ(std::as_const(form).categories().size(), 0U);
    for (std::string_view const name : {std::string_view(), ""sv, "a"sv}) {
        EXPECT_FALSE(form.has_category(name));
        EXPECT_EQ(form.get_category(name), nullptr);
        EXPECT_EQ(std::as_const(form).get_category(name), nullptr);
        EXPECT_FALSE(form.remove_category(name));
        EXPECT_FALSE(form.has_option(name));
        EXPECT_EQ(form.get_option(name), nullptr);
        EXPECT_EQ(std::as_const(form).get_option(name), nullptr);
    }
}

TEST(ConfigTemplate, CopiesTheCategoriesOfAView) {
    std::vector<category> list = {category_of("b", {"x"}), category_of("a"),
                                  category_of("b", {"y"})};
    config_template const form{utility::data_view<category const>(list)};
    for (category& element : list) element = category_of("#");
    ASSERT_EQ(names_of(form.categories()), (texts{"b", "a", "b"}));
    EXPECT_EQ(keys_of(form.categories()[0].options()), (texts{"x"}));
    EXPECT_EQ(keys_of(form.categories()[2].options()), (texts{"y"}));
    EXPECT_EQ(form.get_category("b"), &form.categories()[0]);
}

TEST(ConfigTemplate, OfAnEmptyViewHasNoCategories) {
    using view = utility::data_view<category const>;
    static_assert(!std::is_convertible_v<view, config_template>, "on request only");
    config_template const form{view()};
    EXPECT_TRUE(form.categories().empty());
}

TEST(ConfigTemplate, GivesTheSameCategoriesForReadingAndWriting) {
    config_template form;
    form.add_category(category_of("a"));
    utility::data_view<category> const writable = form.categories();
    utility::data_view<category const> const readable = std::as_const(form).categories();
    utility::data_view<category const> const converted = writable;
    EXPECT_EQ(writable.data(), readable.data());
    EXPECT_EQ(writable.size(), readable.size());
    EXPECT_EQ(converted.data(), readable.data());
}

TEST(ConfigTemplate, LetsItsCategoriesBeChangedApartFromItsCopies) {
    config_template form;
    form.add_category(category_of("a", {"x"}));
    form.add_category(category_of("b"));
    config_template const copy(form);
    form.categories()[1] = category_of("c", {"y"});
    form.categories()[0].add_option(option_of("z"));
    EXPECT_EQ(names_of(form.categories()), (texts{"a", "c"}));
    EXPECT_EQ(keys_of(form.categories()[0].options()), (texts{"x", "z"}));
    EXPECT_NE(form.get_option("y"), nullptr);
    EXPECT_EQ(names_of(copy.categories()), (texts{"a", "b"}));
    EXPECT_EQ(keys_of(copy.categories()[0].options()), (texts{"x"}));
    form.categories()[0] = form.categories()[1];
    EXPECT_EQ(names_of(form.categories()), (texts{"c", "c"})) << "names are not checked here";
}

TEST(ConfigTemplate, AddsACategoryAtTheEnd) {
    config_template form;
    for (char const* const name : {"b", "", "a"}) EXPECT_TRUE(form.add_category(category_of(name)));
    EXPECT_EQ(names_of(form.categories()), (texts{"b", "", "a"}));
}

TEST(ConfigTemplate, AddsACopyOfACategory) {
    config_template form;
    category source = category_of("a", {"x"});
    form.add_category(source);
    source.add_option(option_of("y"));
    EXPECT_EQ(keys_of(form.categories()[0].options()), (texts{"x"}));
    EXPECT_NE(impl_of(form.categories()[0]), impl_of(source));
}

TEST(ConfigTemplate, MovesACategoryIn) {
    config_template form;
    category source = category_of("a", {"x"});
    void const* const impl = impl_of(source);
    form.add_category(std::move(source));
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(impl_of(form.categories()[0]), impl);
}

TEST(ConfigTemplate, RefusesACategoryWhoseNameIsTaken) {
    config_template form;
    form.add_category(category_of("a", {"x"}));
    form.add_category(category_of("b"));
    long long const before = test_support::live_blocks();
    EXPECT_FALSE(form.add_category(category_of("a", {"y"}, long_key)));
    EXPECT_EQ(test_support::live_blocks(), before);
    EXPECT_FALSE(form.add_category(form.categories()[1])) << "a category of its own";
    EXPECT_EQ(names_of(form.categories()), (texts{"a", "b"}));
    EXPECT_EQ(keys_of(form.categories()[0].options()), (texts{"x"}));
}

TEST(ConfigTemplate, GrowsTheListByDoubling) {
    config_template form;
    auto const add = [&](int size) {
        category fresh = category_of(std::to_string(size));
        test_support::allocation_counter const counter;
        EXPECT_TRUE(form.add_category(std::move(fresh)));
        return counter.allocations();
    };
    EXPECT_EQ(config_test::sizes_that_allocate(18, add), (std::vector<int>{0, 1, 2, 4, 8, 16}));
}

TEST(ConfigTemplate, FindsCategoriesExactly) {
    config_template form;
    for (std::string_view const name : {"Key"sv, ""sv, "a\0b"sv, std::string_view(long_key)}) {
        form.add_category(category_of(name));
    }
    unsigned int position = 0;
    for (std::string_view const name : {"Key"sv, ""sv, "a\0b"sv, std::string_view(long_key)}) {
        EXPECT_TRUE(form.has_category(name));
        EXPECT_EQ(form.get_category(name), &form.categories()[position]);
        EXPECT_EQ(std::as_const(form).get_category(name), &form.categories()[position]);
        ++position;
    }
    for (std::string_view const name : {"key"sv, "KEY"sv, "Ke"sv, "Key "sv, "Key\0"sv, "a"sv}) {
        EXPECT_FALSE(form.has_category(name)) << name;
        EXPECT_EQ(form.get_category(name), nullptr) << name;
        EXPECT_EQ(std::as_const(form).get_category(name), nullptr) << name;
        EXPECT_FALSE(form.remove_category(name)) << name;
    }
    EXPECT_EQ(form.categories().size(), 4U);
}

TEST(ConfigTemplate, GivesACategoryThatCanBeChanged) {
    using form = config_template;
    static_assert(std::is_same_v<decltype(std::declval<form&>().get_category("")), category*>);
    static_assert(
        std::is_same_v<decltype(std::declval<form const&>().get_category("")), category const*>);
    config_template made;
    made.add_category(category_of("a"));
    made.get_category("a")->add_option(option_of("x"));
    EXPECT_EQ(keys_of(made.categories()[0].options()), (texts{"x"}));
}

TEST(ConfigTemplate, RemovesACategoryWithItsOptions) {
    struct row {
        char const* name;
        texts left;
    };
    for (row const& r : {row{"a", {"b", "c"}}, row{"b", {"a", "c"}}, row{"c", {"a", "b"}}}) {
        config_template form;
        for (char const* const name : {"a", "b", "c"}) form.add_category(category_of(name, {name}));
        test_support::allocation_counter const counter;
        EXPECT_TRUE(form.remove_category(r.name));
        EXPECT_EQ(counter.allocations(), 0U);
        EXPECT_EQ(names_of(form.categories()), r.left);
        EXPECT_FALSE(form.has_category(r.name));
        EXPECT_EQ(form.get_option(r.name), nullptr);
        for (auto const& name : r.left) EXPECT_NE(form.get_option(name), nullptr);
        EXPECT_FALSE(form.remove_category(r.name));
    }
}

TEST(ConfigTemplate, RemovesTheFirstOfTwoCategoriesOfOneName) {
    std::vector<category> const list = {category_of("a", {"x"}), category_of("a", {"y"})};
    config_template form{utility::data_view<category const>(list)};
    EXPECT_TRUE(form.remove_category("a"));
    EXPECT_EQ(keys_of(form.get_category("a")->options()), (texts{"y"}));
    EXPECT_TRUE(form.remove_category("a"));
    EXPECT_FALSE(form.has_category("a"));
}

} // namespace
