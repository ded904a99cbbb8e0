#include <tavi/ioapi/v2/config/category.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// What a category is made of, and how options are added to it.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::category;
using config::option;
using config_test::category_of;
using config_test::keys_of;
using config_test::long_text;
using config_test::option_of;
using config_test::texts;
using test_support::impl_of;
using types = io_data_type::basic_types;

TEST(Category, KeepsItsFlags) {
    for (bool const wants_connection : {false, true}) {
        for (bool const collapsed : {false, true}) {
            category const made("name", "text", wants_connection, collapsed);
            EXPECT_EQ(made.wants_connection(), wants_connection);
            EXPECT_EQ(made.collapsed(), collapsed);
            EXPECT_TRUE(made.options().empty());
        }
    }
}

TEST(Category, KeepsAnyTexts) {
    for (std::string_view const text :
         {""sv, std::string_view(), "a"sv, "a\0b"sv, "\xFF\x80"sv, std::string_view(long_text)}) {
        EXPECT_EQ(category(text, "d", false, false).name(), text);
        EXPECT_EQ(category(text, "d", false, false).description(), "d");
        EXPECT_EQ(category("n", text, false, false).name(), "n");
        EXPECT_EQ(category("n", text, false, false).description(), text);
    }
}

TEST(Category, CopiesItsTexts) {
    auto name = std::make_unique<std::string>("name");
    auto text = std::make_unique<std::string>(long_text);
    category const made(*name, *text, false, false);
    *name = "####";
    text->assign(text->size(), '#');
    name.reset();
    text.reset();
    EXPECT_EQ(made.name(), "name");
    EXPECT_EQ(made.description(), long_text);
}

TEST(Category, GivesViewsOfItsOwnTexts) {
    category made("name", "text", false, false);
    auto const* const name = made.name().data();
    auto const* const description = made.description().data();
    for (char const* const key : {"a", "b", "c"}) made.add_option(option_of(key));
    made.remove_option("a");
    EXPECT_EQ(made.name().data(), name);
    EXPECT_EQ(made.description().data(), description);
}

TEST(Category, CopiesTheOptionsOfAView) {
    std::vector<option> list = {option_of("b", "1"), option_of("a", "2"), option_of("b", "3")};
    category const made("name", "", false, false, list);
    for (option& element : list) element = option_of("#");
    ASSERT_EQ(keys_of(made.options()), (texts{"b", "a", "b"}));
    EXPECT_EQ(made.options()[0].description(), "1");
    EXPECT_EQ(made.options()[1].description(), "2");
    EXPECT_EQ(made.options()[2].description(), "3");
    for (unsigned int i = 0; i < 3; ++i) EXPECT_NE(impl_of(made.options()[i]), impl_of(list[i]));
}

TEST(Category, GivesTheSameOptionsForReadingAndWriting) {
    using readable_view = utility::data_view<option const>;
    using writable_view = utility::data_view<option>;
    static_assert(std::is_same_v<decltype(std::declval<category&>().options()), writable_view>);
    static_assert(
        std::is_same_v<decltype(std::declval<category const&>().options()), readable_view>);
    static_assert(std::is_convertible_v<writable_view, readable_view>);
    static_assert(!std::is_constructible_v<writable_view, readable_view>);
    category made = category_of("name", {"a", "b"});
    writable_view const writable = made.options();
    readable_view const readable = std::as_const(made).options();
    readable_view const converted = writable;
    EXPECT_EQ(writable.data(), readable.data());
    EXPECT_EQ(writable.size(), readable.size());
    EXPECT_EQ(converted.data(), readable.data());
    EXPECT_EQ(converted.size(), readable.size());
}

TEST(Category, LetsItsOptionsBeAssigned) {
    category made = category_of("name", {"a", "b"});
    made.options()[1] = option_of("c", "new");
    EXPECT_EQ(keys_of(made.options()), (texts{"a", "c"}));
    EXPECT_EQ(made.get_option("c")->description(), "new");
    EXPECT_FALSE(made.has_option("b"));
    made.options()[0] = made.options()[1];
    EXPECT_EQ(keys_of(made.options()), (texts{"c", "c"})) << "keys are not checked here";
    EXPECT_NE(impl_of(made.options()[0]), impl_of(made.options()[1]));
}

TEST(CategoryOption, IsAddedAtTheEnd) {
    category made = category_of("name", {"b"});
    EXPECT_TRUE(made.add_option(option_of("c")));
    EXPECT_TRUE(made.add_option(option_of("a")));
    EXPECT_EQ(keys_of(made.options()), (texts{"b", "c", "a"}));
}

TEST(CategoryOption, IsAddedAsACopy) {
    category made("name", "", false, false);
    option::value_option const choices[] = {{"one", "", 1}};
    option source("a", "name", "text", io_value(1), choices);
    EXPECT_TRUE(made.add_option(source));
    source.options({});
    source = option_of("#");
    option const& added = made.options()[0];
    EXPECT_EQ(added.key(), "a");
    EXPECT_EQ(added.display_name(), "name");
    EXPECT_EQ(added.description(), "text");
    EXPECT_TRUE(added.optional());
    EXPECT_TRUE(identical(added.default_value(), io_value(1)));
    EXPECT_EQ(added.options().size(), 1U);
}

TEST(CategoryOption, IsMovedIn) {
    category made("name", "", false, false);
    option source = option_of("a");
    void const* const impl = impl_of(source);
    EXPECT_TRUE(made.add_option(std::move(source)));
    EXPECT_EQ(impl_of(source), nullptr);
    EXPECT_EQ(impl_of(made.options()[0]), impl);
}

TEST(CategoryOption, IsRefusedWhereItsKeyIsTaken) {
    category made = category_of("name", {"a", "b"}, "old");
    option const fresh = option_of("b", "new");
    EXPECT_FALSE(made.add_option(fresh));
    EXPECT_FALSE(made.add_option(option_of("a", "new")));
    EXPECT_EQ(keys_of(made.options()), (texts{"a", "b"}));
    EXPECT_EQ(made.get_option("a")->description(), "old");
    EXPECT_EQ(made.get_option("b")->description(), "old");
    EXPECT_EQ(fresh.description(), "new");
    EXPECT_FALSE(made.add_option(made.options()[0])) << "an option of its own";
}

TEST(CategoryOption, IsDroppedWhereItIsRefused) {
    category made = category_of("name", {"a"});
    long long const before = test_support::live_blocks();
    option moved = option_of("a", long_text);
    EXPECT_FALSE(made.add_option(std::move(moved)));
    EXPECT_EQ(impl_of(moved), nullptr);
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(CategoryOption, OfAnotherCaseOrLengthIsAnother) {
    category made = category_of("name", {"key"});
    for (std::string_view const key : {""sv, "Key"sv, "ke"sv, "key "sv, "key\0"sv, "kez"sv}) {
        EXPECT_TRUE(made.add_option(option_of(key))) << key;
        EXPECT_FALSE(made.add_option(option_of(key))) << key;
    }
    EXPECT_EQ(made.options().size(), 7U);
}

// Short texts and options moved in: what is asked for is the list alone.
TEST(CategoryOption, GrowsTheListByDoubling) {
    category made("name", "", false, false);
    auto const add = [&](int size) {
        option fresh = option_of(std::to_string(size));
        test_support::allocation_counter const counter;
        EXPECT_TRUE(made.add_option(std::move(fresh)));
        return counter.allocations();
    };
    EXPECT_EQ(config_test::sizes_that_allocate(18, add), (std::vector<int>{0, 1, 2, 4, 8, 16}));
}

TEST(CategoryOption, GrowsTheListOfAViewByDoubling) {
    category made = category_of("name", {"a", "b", "c"});
    auto const add = [&](int size) {
        option fresh = option_of(std::to_string(size));
        test_support::allocation_counter const counter;
        EXPECT_TRUE(made.add_option(std::move(fresh)));
        return counter.allocations();
    };
    EXPECT_EQ(config_test::sizes_that_allocate(10, add), (std::vector<int>{0, 3, 9}));
}

} // namespace
