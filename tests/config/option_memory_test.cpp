#include <tavi/ioapi/v2/config/option.hpp>

#include "samples.hpp"
#include "support/printed.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// What is left of an option when there is no memory.

namespace {

using namespace tavi::ioapi::v2;
using config::option;
using config_test::fails_at;
using config_test::long_key;
using config_test::long_text;
using test_support::count_survived_failures;
using test_support::live_blocks;
using types = io_data_type::basic_types;
using memory_choices = std::vector<option::value_option>;

memory_choices texts_to_choose(unsigned int count, std::string const& text) {
    memory_choices result;
    for (unsigned int i = 0; i < count; ++i) {
        utility::array<utility::string> const values = {text, text};
        result.push_back({text, text, values});
    }
    return result;
}

// Whether all that the option holds can be read and printed.
::testing::AssertionResult is_sound(option const& option) {
    std::string all = option.key().str() + option.display_name().str() + option.description().str();
    if (option.default_value().index() < 0) return ::testing::AssertionFailure() << "the default";
    all += test_support::printed(option.default_value());
    for (auto const& element : option.options()) {
        if (element.value.index() < 0) return ::testing::AssertionFailure() << "a choice";
        all += element.display_name.str() + element.description.str();
        all += test_support::printed(element.value);
    }
    auto const copy = option;
    return copy.options().size() == option.options().size() ? ::testing::AssertionSuccess()
                                                            : ::testing::AssertionFailure();
}

TEST(OptionMemory, ExhaustedLeavesNothingOfANewOption) {
    auto const choices = texts_to_choose(2, long_text);
    EXPECT_GE(count_survived_failures(
                  [&] { option const made(long_key, long_text, long_text, types::i32, choices); }),
              4 + 1 + 2 * 4);
    EXPECT_GE(count_survived_failures([&] {
                  option const made(long_key, long_text, long_text, io_value(long_text), choices);
              }),
              5 + 1 + 2 * 4);
}

TEST(OptionMemory, ExhaustedLeavesNothingOfACopy) {
    option const source(long_key, long_text, long_text, io_value(long_text),
                        texts_to_choose(2, long_text));
    EXPECT_GE(count_survived_failures([&] { option const copy(source); }), 5 + 1 + 2 * 4);
    EXPECT_TRUE(is_sound(source));
}

TEST(OptionMemory, ExhaustedLeavesTheOldChoices) {
    auto const choices = texts_to_choose(2, long_text);
    for (std::size_t n = 1;; ++n) {
        long long const before = live_blocks();
        bool hit = false;
        {
            option made("key", "name", "text", io_value(7), texts_to_choose(3, "old"));
            auto const* const block = made.options().data();
            hit = fails_at(n, [&] { made.options(choices); });
            EXPECT_EQ(made.options().size(), hit ? 3U : 2U) << n;
            EXPECT_EQ(made.options().data() == block, hit) << n;
            EXPECT_EQ(made.options()[1].display_name, hit ? "old" : long_text) << n;
            EXPECT_TRUE(is_sound(made)) << n;
            EXPECT_EQ(made.key(), "key");
            EXPECT_TRUE(identical(made.default_value(), io_value(7)));
        }
        EXPECT_EQ(live_blocks(), before) << n;
        if (!hit) {
            EXPECT_GT(n, 8U) << "the list, and four blocks for each choice";
            break;
        }
    }
}

// The lengths decide whether texts and lists are assigned in place or anew.
TEST(OptionMemory, ExhaustedLeavesASoundTargetOfAnAssignment) {
    option const required("k", "n", "d", types::i32, texts_to_choose(1, "a"));
    option const optional(long_key, long_text, long_text, io_value(long_text),
                          texts_to_choose(2, long_text));
    option const of_array(long_key + long_key, long_text + long_text, "",
                          io_value(utility::array<utility::string>{long_text, long_text}),
                          texts_to_choose(5, "choice"));
    option const of_number("", "", "", io_value(1));
    for (option const* const source : {&required, &optional, &of_array, &of_number}) {
        for (option const* const old : {&required, &optional, &of_array, &of_number}) {
            for (std::size_t n = 1;; ++n) {
                long long const before = live_blocks();
                bool hit = false;
                {
                    option target(*old);
                    hit = fails_at(n, [&] { target = *source; });
                    EXPECT_TRUE(is_sound(target)) << n;
                    option moved(std::move(target));
                    EXPECT_TRUE(is_sound(moved)) << n;
                    moved = *source;
                    EXPECT_EQ(moved.key(), source->key());
                    EXPECT_TRUE(identical(moved.default_value(), source->default_value()));
                    EXPECT_EQ(moved.options().size(), source->options().size());
                }
                EXPECT_EQ(live_blocks(), before) << n;
                EXPECT_TRUE(is_sound(*source));
                if (!hit) break;
            }
        }
    }
}

} // namespace
