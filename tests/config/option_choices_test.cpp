#include <tavi/ioapi/v2/config/option.hpp>

#include "samples.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// The values that an option gives to choose from, and copies of options.

namespace {

using namespace tavi::ioapi::v2;
using config::option;
using config_test::long_text;
using choice = option::value_option;
using choice_list = std::vector<choice>;
using types = io_data_type::basic_types;

choice_list numbered_choices(int count, int first = 0) {
    choice_list result;
    for (int i = first; i < first + count; ++i) {
        result.push_back({"name " + std::to_string(i), "text " + std::to_string(i), i});
    }
    return result;
}

std::vector<int> numbers_of(option const& option) {
    std::vector<int> result;
    for (choice const& element : option.options()) result.push_back(element.value.as<int>());
    return result;
}

TEST(OptionChoices, AreRecordsOfNameTextAndValue) {
    using test_support::by_word;
    static_assert(sizeof(choice) == by_word(72, 104));
    static_assert(offsetof(choice, display_name) == 0);
    static_assert(offsetof(choice, description) == by_word(12, 24));
    static_assert(offsetof(choice, value) == by_word(24, 48));
    static_assert(std::is_same_v<decltype(std::declval<option&>().options()),
                                 utility::data_view<choice const>>);
}

TEST(OptionChoices, AreKeptInOrder) {
    choice_list const list = {{"low", "slow", 10}, {"high", "fast", 20}, {"low", "slow", 10}};
    option const required("key", "", "", types::i32, list);
    option const optional("key", "", "", io_value(10), list);
    for (option const* const made : {&required, &optional}) {
        auto const kept = made->options();
        ASSERT_EQ(kept.size(), 3U);
        for (unsigned int i = 0; i < 3; ++i) {
            EXPECT_EQ(kept[i].display_name, list[i].display_name);
            EXPECT_EQ(kept[i].description, list[i].description);
            EXPECT_TRUE(identical(kept[i].value, list[i].value));
        }
    }
}

TEST(OptionChoices, AreCopied) {
    choice_list list = {{long_text, long_text, long_text}};
    option const made("key", "", "", types::string, list);
    EXPECT_NE(made.options().data(), list.data());
    list[0] = {"#", "#", 1};
    list.clear();
    ASSERT_EQ(made.options().size(), 1U);
    EXPECT_EQ(made.options()[0].display_name, long_text);
    EXPECT_EQ(made.options()[0].description, long_text);
    EXPECT_TRUE(identical(made.options()[0].value, io_value(long_text)));
}

TEST(OptionChoices, ReadTheSameOnesEachTime) {
    option const made("key", "", "", types::i32, numbered_choices(2));
    EXPECT_EQ(made.options().data(), made.options().data());
    EXPECT_EQ(made.options().size(), 2U);
}

TEST(OptionChoices, MayHaveAnyType) {
    choice_list const list = {{"", "", "text"}, {"", "", 1.5}, {"", "", io_value()}};
    option const made("key", "", "", types::i32, list);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_TRUE(identical(made.options()[i].value, list[i].value));
    }
    EXPECT_EQ(made.value_type(), types::i32);
}

TEST(OptionChoices, AreReplaced) {
    for (int const before : {0, 1, 3}) {
        for (int const after : {0, 1, 3, 5}) {
            option made("key", "name", "text", io_value(7), numbered_choices(before));
            made.options(numbered_choices(after, 100));
            std::vector<int> expected;
            for (int i = 0; i < after; ++i) expected.push_back(100 + i);
            EXPECT_EQ(numbers_of(made), expected);
            EXPECT_EQ(made.key(), "key");
            EXPECT_EQ(made.display_name(), "name");
            EXPECT_EQ(made.description(), "text");
            EXPECT_EQ(made.value_type(), types::i32);
            EXPECT_TRUE(made.optional());
            EXPECT_TRUE(identical(made.default_value(), io_value(7)));
        }
    }
}

TEST(OptionChoices, AreRemovedByAnEmptyView) {
    option made("key", "", "", types::i32, numbered_choices(3));
    made.options({});
    EXPECT_EQ(made.options().size(), 0U);
    EXPECT_TRUE(made.options().begin() == made.options().end());
}

TEST(OptionChoices, AreReplacedByAPartOfThemselves) {
    option made("key", "", "", types::i32, numbered_choices(4));
    made.options(made.options());
    EXPECT_EQ(numbers_of(made), (std::vector<int>{0, 1, 2, 3}));
    made.options({made.options().data() + 1, 2});
    EXPECT_EQ(numbers_of(made), (std::vector<int>{1, 2}));
}

TEST(OptionChoices, AreReleasedWhenReplaced) {
    option made("key", "", "", types::i32);
    long long const before = test_support::live_blocks();
    made.options(numbered_choices(3));
    EXPECT_GT(test_support::live_blocks(), before);
    made.options({});
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(OptionCopy, HasChoicesOfItsOwn) {
    option const source("key", "", "", types::i32, numbered_choices(2));
    option copy(source);
    EXPECT_NE(copy.options().data(), source.options().data());
    copy.options(numbered_choices(1, 50));
    EXPECT_EQ(numbers_of(source), (std::vector<int>{0, 1}));
    EXPECT_EQ(numbers_of(copy), (std::vector<int>{50}));
}

TEST(OptionCopy, HasAllFields) {
    option const required("k", "n", "d", types{99}, numbered_choices(2));
    option const optional("key", long_text, long_text, io_value("default"), numbered_choices(1, 9));
    option const empty("", "", "", io_value());
    for (option const* const source : {&required, &optional, &empty}) {
        for (option const* const old : {&required, &optional, &empty}) {
            option assigned(*old);
            assigned = *source;
            option const made(*source);
            for (option const* const copy : {&std::as_const(assigned), &made}) {
                EXPECT_EQ(copy->key(), source->key());
                EXPECT_EQ(copy->display_name(), source->display_name());
                EXPECT_EQ(copy->description(), source->description());
                EXPECT_EQ(copy->value_type(), source->value_type());
                EXPECT_EQ(copy->optional(), source->optional());
                EXPECT_EQ(copy->has_default_value(), source->has_default_value());
                EXPECT_TRUE(identical(copy->default_value(), source->default_value()));
                EXPECT_EQ(numbers_of(*copy), numbers_of(*source));
            }
        }
    }
}

TEST(OptionCopy, IsAssignedIntoTheChoicesAtHandWhereTheySuffice) {
    for (int const before : {0, 1, 2, 3, 7}) {
        for (int const after : {0, 1, 2, 3, 7}) {
            option target("key", "", "", types::i32, numbered_choices(before));
            option const source("key", "", "", types::i32, numbered_choices(after, 100));
            auto const* const block = target.options().data();
            target = source;
            EXPECT_EQ(numbers_of(target), numbers_of(source));
            EXPECT_EQ(target.options().data() == block, after <= before)
                << after << " into " << before;
        }
    }
}

TEST(OptionCopy, TakesMissingChoicesIntoTheRoomOfEarlierOnes) {
    option target("key", "", "", types::i32, numbered_choices(3));
    option const one("key", "", "", types::i32, numbered_choices(1, 10));
    option const three("key", "", "", types::i32, numbered_choices(3, 20));
    auto const* const room = target.options().data();
    target = one;
    EXPECT_EQ(target.options().data(), room);
    target = three;
    EXPECT_EQ(target.options().data(), room);
    EXPECT_EQ(numbers_of(target), (std::vector<int>{20, 21, 22}));
}

} // namespace
