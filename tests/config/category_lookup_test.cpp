#include <tavi/ioapi/v2/config/category.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// How options are found in a category and removed from it, and copies of categories.

namespace {

using namespace tavi::ioapi::v2;
using namespace std::string_view_literals;
using config::category;
using config::option;
using config_test::category_of;
using config_test::keys_of;
using config_test::long_key;
using config_test::option_of;
using config_test::texts;
using test_support::impl_of;

TEST(CategoryLookup, TakesStandardViews) {
    using has = bool (category::*)(std::string_view) const;
    using get = option* (category::*)(std::string_view);
    using get_constant = option const* (category::*)(std::string_view) const;
    using remove = bool (category::*)(std::string_view);
    EXPECT_NE(static_cast<has>(&category::has_option), nullptr);
    EXPECT_NE(static_cast<get>(&category::get_option), nullptr);
    EXPECT_NE(static_cast<get_constant>(&category::get_option), nullptr);
    EXPECT_NE(static_cast<remove>(&category::remove_option), nullptr);
}

TEST(CategoryLookup, FindsEachOption) {
    category made = category_of("name", {"a", "", "b"});
    made.add_option(option_of("a\0b"sv));
    made.add_option(option_of(long_key));
    unsigned int position = 0;
    for (std::string_view const key : {"a"sv, ""sv, "b"sv, "a\0b"sv, std::string_view(long_key)}) {
        EXPECT_TRUE(made.has_option(key));
        EXPECT_EQ(made.get_option(key), &made.options()[position]);
        EXPECT_EQ(std::as_const(made).get_option(key), &made.options()[position]);
        ++position;
    }
    EXPECT_EQ(made.get_option(std::string_view()), &made.options()[1]);
}

TEST(CategoryLookup, IsExact) {
    category made = category_of("name", {"Key"});
    for (std::string_view const key :
         {""sv, "key"sv, "KEY"sv, "Ke"sv, "Key1"sv, " Key"sv, "Key\0"sv, "name"sv}) {
        EXPECT_FALSE(made.has_option(key)) << key;
        EXPECT_EQ(made.get_option(key), nullptr) << key;
        EXPECT_EQ(std::as_const(made).get_option(key), nullptr) << key;
        EXPECT_FALSE(made.remove_option(key)) << key;
    }
    EXPECT_EQ(keys_of(made.options()), (texts{"Key"}));
}

TEST(CategoryLookup, FindsNothingInAnEmptyCategory) {
    category made("name", "", false, false);
    for (std::string_view const key : {""sv, "name"sv, "a"sv}) {
        EXPECT_FALSE(made.has_option(key));
        EXPECT_EQ(made.get_option(key), nullptr);
        EXPECT_FALSE(made.remove_option(key));
    }
}

TEST(CategoryLookup, ReadsTheTextsOfItsOptionsOnly) {
    category const made("name", "text", false, false,
                        std::vector<option>{option("key", "display", "description", io_value(1))});
    for (char const* const key : {"name", "text", "display", "description"}) {
        EXPECT_FALSE(made.has_option(key)) << key;
    }
}

TEST(CategoryLookup, FindsTheFirstOfTwo) {
    std::vector<option> const list = {option_of("a"), option_of("b", "1"), option_of("b", "2")};
    category made("name", "", false, false, list);
    EXPECT_EQ(made.get_option("b"), &made.options()[1]);
    EXPECT_TRUE(made.remove_option("b"));
    ASSERT_EQ(made.get_option("b"), &made.options()[1]);
    EXPECT_EQ(made.get_option("b")->description(), "2");
    EXPECT_TRUE(made.remove_option("b"));
    EXPECT_FALSE(made.has_option("b"));
}

TEST(CategoryLookup, GivesAnOptionThatCanBeChanged) {
    static_assert(std::is_same_v<decltype(std::declval<category&>().get_option("")), option*>);
    static_assert(
        std::is_same_v<decltype(std::declval<category const&>().get_option("")), option const*>);
    category made = category_of("name", {"a", "b"});
    option::value_option const choices[] = {{"one", "", 1}};
    made.get_option("b")->options(choices);
    EXPECT_EQ(made.options()[0].options().size(), 0U);
    EXPECT_EQ(made.options()[1].options().size(), 1U);
}

TEST(CategoryLookup, AsksForNoMemory) {
    category made = category_of("name", {"a", "b"});
    test_support::allocation_counter const counter;
    for (std::string_view const key : {std::string_view(long_key), "b"sv}) {
        (void)made.has_option(key);
        (void)made.get_option(key);
        (void)std::as_const(made).get_option(key);
        (void)made.remove_option(key);
    }
    EXPECT_EQ(counter.allocations(), 0U);
}

TEST(CategoryRemoval, KeepsTheOrderOfTheOthers) {
    struct row {
        char const* key;
        texts left;
    };
    for (row const& r : {row{"a", {"b", "c"}}, row{"b", {"a", "c"}}, row{"c", {"a", "b"}}}) {
        category made = category_of("name", {"a", "b", "c"});
        EXPECT_TRUE(made.remove_option(r.key));
        EXPECT_EQ(keys_of(made.options()), r.left);
        EXPECT_FALSE(made.has_option(r.key));
        EXPECT_FALSE(made.remove_option(r.key));
        EXPECT_TRUE(made.add_option(option_of(r.key)));
        EXPECT_EQ(made.options()[2].key(), r.key);
    }
}

TEST(CategoryRemoval, MovesTheLaterOptionsForward) {
    category made = category_of("name", {"a", "b", "c"});
    auto const* const block = made.options().data();
    void const* const first = impl_of(made.options()[0]);
    void const* const last = impl_of(made.options()[2]);
    test_support::allocation_counter const counter;
    EXPECT_TRUE(made.remove_option("b"));
    EXPECT_EQ(made.options().data(), block);
    EXPECT_EQ(impl_of(made.options()[0]), first);
    EXPECT_EQ(impl_of(made.options()[1]), last);
    EXPECT_EQ(counter.releases(), 1U) << "the removed option, whose texts are short";
}

TEST(CategoryRemoval, TakesTheOnlyOption) {
    category made = category_of("name", {""});
    EXPECT_TRUE(made.remove_option(""));
    EXPECT_TRUE(made.options().empty());
}

TEST(CategoryCopy, HasAllFields) {
    category const full("name", "text", true, false, std::vector<option>{option_of("a", "1")});
    category const other("another", "", false, true);
    category const longer = category_of(long_key, {"x", "y", "z"}, long_key);
    for (category const* const source : {&full, &other, &longer}) {
        for (category const* const old : {&full, &other, &longer}) {
            category assigned(*old);
            assigned = *source;
            category const made(*source);
            for (category const* const copy : {&std::as_const(assigned), &made}) {
                EXPECT_EQ(copy->name(), source->name());
                EXPECT_EQ(copy->description(), source->description());
                EXPECT_EQ(copy->wants_connection(), source->wants_connection());
                EXPECT_EQ(copy->collapsed(), source->collapsed());
                EXPECT_EQ(keys_of(copy->options()), keys_of(source->options()));
            }
        }
    }
}

TEST(CategoryCopy, IsIndependent) {
    category const source = category_of("name", {"a", "b"}, "old");
    category copy(source);
    copy.add_option(option_of("c"));
    copy.remove_option("b");
    *copy.get_option("a") = option_of("d", "new");
    EXPECT_EQ(keys_of(copy.options()), (texts{"d", "c"}));
    EXPECT_EQ(keys_of(source.options()), (texts{"a", "b"}));
    EXPECT_EQ(source.get_option("a")->description(), "old");
}

TEST(CategoryCopy, IsAssignedIntoTheOptionsAtHandWhereTheySuffice) {
    category target = category_of("name", {"a", "b", "c"});
    category const two = category_of("name", {"d", "e"});
    category const four = category_of("name", {"f", "g", "h", "i"});
    auto const* const block = target.options().data();
    void const* const first = impl_of(target.options()[0]);
    target = two;
    EXPECT_EQ(target.options().data(), block);
    EXPECT_EQ(impl_of(target.options()[0]), first) << "assigned by the option itself";
    EXPECT_EQ(keys_of(target.options()), (texts{"d", "e"}));
    target = four;
    EXPECT_EQ(keys_of(target.options()), (texts{"f", "g", "h", "i"}));
}

} // namespace
