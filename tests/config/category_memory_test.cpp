#include <tavi/ioapi/v2/config/category.hpp>
#include <tavi/ioapi/v2/config/config_template.hpp>

#include "samples.hpp"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

// What is left of categories and templates when there is no memory.

namespace {

using namespace tavi::ioapi::v2;
using config::category;
using config::config_template;
using config::option;
using config_test::category_of;
using config_test::fails_at;
using config_test::keys_of;
using config_test::long_key;
using config_test::long_text;
using config_test::names_of;
using config_test::option_of;
using config_test::other_long_key;
using config_test::texts;
using test_support::count_survived_failures;
using test_support::live_blocks;

option full_option(std::string_view key) {
    option::value_option const choices[] = {{long_text, long_text, long_text}, {"", "", 1}};
    return option(key, long_text, long_text, io_value(long_text), choices);
}

category full_category(std::string_view name) {
    option const options[] = {full_option(long_key), full_option(other_long_key)};
    return category(name, long_text, true, true, options);
}

TEST(CategoryMemory, ExhaustedLeavesNothingOfANewCategory) {
    EXPECT_GE(count_survived_failures([] { (void)full_category(long_key); }), 10);
    category const source = full_category(long_key);
    EXPECT_GE(count_survived_failures([&] { category const copy(source); }), 10);
    EXPECT_EQ(keys_of(source.options()), (texts{long_key, other_long_key}));
}

TEST(CategoryMemory, ExhaustedLeavesACategoryWithoutTheNewOption) {
    option const fresh = full_option(long_key);
    for (char const* const taken : {"", "a", "ab", "abcd"}) {
        for (std::size_t n = 1;; ++n) {
            long long const before = live_blocks();
            bool hit = false;
            {
                category made("name", "", false, false);
                for (char const* key = taken; *key != '\0'; ++key) {
                    made.add_option(option_of(std::string(1, *key)));
                }
                texts expected = keys_of(made.options());
                auto const* const block = made.options().data();
                hit = fails_at(n, [&] { EXPECT_TRUE(made.add_option(fresh)); });
                if (hit) {
                    EXPECT_EQ(made.options().data(), block);
                }
                if (!hit) expected.push_back(long_key);
                EXPECT_EQ(keys_of(made.options()), expected) << n;
            }
            EXPECT_EQ(live_blocks(), before) << n;
            if (!hit) break;
        }
        EXPECT_EQ(fresh.key(), long_key);
    }
}

TEST(CategoryMemory, ExhaustedLeavesACategoryWithoutAnOptionMovedIn) {
    long long const before = live_blocks();
    {
        category made = category_of("name", {"a", "b"});
        option fresh = full_option(long_key);
        EXPECT_TRUE(fails_at(1, [&] { made.add_option(std::move(fresh)); }));
        EXPECT_EQ(keys_of(made.options()), (texts{"a", "b"}));
        EXPECT_TRUE(made.add_option(full_option(long_key)));
    }
    EXPECT_EQ(live_blocks(), before);
}

TEST(TemplateMemory, ExhaustedLeavesNothingOfANewTemplate) {
    category const list[] = {full_category("a"), full_category("b")};
    utility::data_view<category const> const view(list);
    EXPECT_GE(count_survived_failures([&] { config_template const form(view); }), 20);
    config_template const source(view);
    EXPECT_GE(count_survived_failures([&] { config_template const copy(source); }), 20);
    EXPECT_EQ(names_of(source.categories()), (texts{"a", "b"}));
}

TEST(TemplateMemory, ExhaustedLeavesATemplateWithoutTheNewCategory) {
    category const fresh = full_category("fresh");
    for (char const* const taken : {"", "a", "ab", "abcd"}) {
        for (std::size_t n = 1;; ++n) {
            long long const before = live_blocks();
            bool hit = false;
            {
                config_template form;
                for (char const* name = taken; *name != '\0'; ++name) {
                    form.add_category(category_of(std::string(1, *name), {"x"}));
                }
                texts expected = names_of(form.categories());
                hit = fails_at(n, [&] { EXPECT_TRUE(form.add_category(fresh)); });
                if (!hit) expected.push_back("fresh");
                EXPECT_EQ(names_of(form.categories()), expected) << n;
            }
            EXPECT_EQ(live_blocks(), before) << n;
            if (!hit) break;
        }
    }
}

// The sources are larger and smaller than the targets, at each level.
TEST(TemplateMemory, ExhaustedLeavesASoundTargetOfAnAssignment) {
    category const long_list[] = {full_category(long_key), full_category("b"), category_of("c")};
    category const short_list[] = {category_of("a", {"x", "y", "z"})};
    config_template const large{utility::data_view<category const>(long_list)};
    config_template const small{utility::data_view<category const>(short_list)};
    for (bool const grows : {true, false}) {
        config_template const& source = grows ? large : small;
        config_template const& old = grows ? small : large;
        for (std::size_t n = 1;; ++n) {
            long long const before = live_blocks();
            bool hit = false;
            {
                config_template target(old);
                hit = fails_at(n, [&] { target = source; });
                config_template const copy(target);
                EXPECT_EQ(names_of(copy.categories()), names_of(target.categories()));
                for (auto const& element : target.categories()) {
                    for (auto const& part : element.options()) {
                        EXPECT_GE(part.default_value().index(), 0) << n;
                        for (auto const& choice : part.options()) {
                            EXPECT_GE(choice.value.index(), 0) << n;
                        }
                    }
                }
                target = source;
                EXPECT_EQ(names_of(target.categories()), names_of(source.categories()));
            }
            EXPECT_EQ(live_blocks(), before) << n;
            if (!hit) break;
        }
    }
}

} // namespace
