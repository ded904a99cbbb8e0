#include <tavi/ioapi/v2/config/category.hpp>
#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/option.hpp>

#include "samples.hpp"
#include "support/length_error.hpp"
#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <new>

// The views of these tests claim more than there is: whoever reads them ends the program.

namespace {

using namespace tavi::ioapi::v2;
using config::category;
using config::config_template;
using config::option;
using test_support::allocation_failure;
using test_support::length_error_of;
using types = io_data_type::basic_types;

using choice_view = utility::data_view<option::value_option const>;
using option_view = utility::data_view<option const>;
using category_view = utility::data_view<category const>;

// The limits where words have 32 bits.
constexpr unsigned int most_choices = 2147483592U / 72;
constexpr unsigned int most_handles = 536870911U;

constexpr char const* refusal = "cannot create std::vector larger than max_size()";

class ConfigLimit : public ::testing::Test {
protected:
    void SetUp() override {
        if (test_support::has_wide_words)
            GTEST_SKIP() << "the limit lies beyond what the 32-bit count of a view can state here";
    }
};

TEST_F(ConfigLimit, RefusesAnOptionOfTooManyChoices) {
    for (unsigned int const count :
         {most_choices + 1, most_choices + 2, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        choice_view const view(nullptr, count);
        EXPECT_EQ(length_error_of([&] { option const made("", "", "", types::i32, view); }),
                  refusal)
            << count;
        EXPECT_EQ(length_error_of([&] { option const made("", "", "", io_value(1), view); }),
                  refusal)
            << count;
    }
}

TEST_F(ConfigLimit, RefusesToReplaceChoicesByTooMany) {
    option::value_option const old[] = {{"name", "text", 1}};
    option made("key", "", "", types::i32, old);
    auto const* const block = made.options().data();
    for (unsigned int const count : {most_choices + 1, 0xFFFFFFFFU}) {
        EXPECT_EQ(length_error_of([&] { made.options(choice_view(nullptr, count)); }), refusal);
    }
    EXPECT_EQ(made.options().data(), block);
    EXPECT_EQ(made.options().size(), 1U);
}

TEST_F(ConfigLimit, RefusesACategoryOfTooManyOptions) {
    for (unsigned int const count : {most_handles + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        option_view const view(nullptr, count);
        EXPECT_EQ(length_error_of([&] { category const made("", "", true, true, view); }), refusal)
            << count;
    }
}

TEST_F(ConfigLimit, RefusesATemplateOfTooManyCategories) {
    for (unsigned int const count : {most_handles + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        category_view const view(nullptr, count);
        EXPECT_EQ(length_error_of([&] { config_template const made(view); }), refusal) << count;
    }
}

TEST_F(ConfigLimit, LeavesNothingOfWhatIsRefused) {
    long long const before = test_support::live_blocks();
    auto const& text = config_test::long_text;
    EXPECT_NE(length_error_of([&] {
                  option const made(text, text, text, io_value(text),
                                    choice_view(nullptr, most_choices + 1));
              }),
              "");
    EXPECT_NE(length_error_of([&] {
                  category const made(text, text, true, true,
                                      option_view(nullptr, most_handles + 1));
              }),
              "");
    EXPECT_NE(length_error_of(
                  [&] { config_template const made(category_view(nullptr, most_handles + 1)); }),
              "");
    EXPECT_EQ(test_support::live_blocks(), before);
}

TEST(ConfigAtTheLimit, AsksMemoryForTheLargestViews) {
    option made("key", "", "", types::i32);
    {
        allocation_failure const failure(1);
        EXPECT_THROW(made.options(choice_view(nullptr, most_choices)), std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
    {
        allocation_failure const failure(1);
        EXPECT_THROW(category("", "", true, true, option_view(nullptr, most_handles)),
                     std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
    {
        allocation_failure const failure(1);
        EXPECT_THROW(config_template{category_view(nullptr, most_handles)}, std::bad_alloc);
        EXPECT_TRUE(failure.hit());
    }
}

} // namespace
