#include <gtest/gtest.h>
#include <linux_backend/failure.hpp>
#include <linux_backend/text.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace {

using linux_backend::bad_text;
using linux_backend::linux_errc;
using pieces = std::vector<std::string_view>;

TEST(text, lines_end_at_line_feeds_and_the_last_may_have_none) {
    EXPECT_EQ(linux_backend::lines_of(""), pieces());
    EXPECT_EQ(linux_backend::lines_of("a"), pieces{"a"});
    EXPECT_EQ(linux_backend::lines_of("a\n"), pieces{"a"});
    EXPECT_EQ(linux_backend::lines_of("a\n\nb"), (pieces{"a", "", "b"}));
}

TEST(text, words_stand_between_any_blanks) {
    EXPECT_EQ(linux_backend::words_of(""), pieces());
    EXPECT_EQ(linux_backend::words_of(" \t "), pieces());
    EXPECT_EQ(linux_backend::words_of("  a\tb  c "), (pieces{"a", "b", "c"}));
}

TEST(text, too_few_words_are_refused) {
    EXPECT_EQ(linux_backend::words_of("a b", 2).size(), 2U);
    EXPECT_EQ(linux_backend::words_of("a b c", 2).size(), 3U);
    EXPECT_THROW(static_cast<void>(linux_backend::words_of("a b", 3)), bad_text);
}

TEST(text, a_line_is_found_by_its_whole_first_word) {
    std::string_view const stat = "cpu0 1\ncpu  2\ncpu 3\nlonely\n";
    EXPECT_EQ(linux_backend::line_with(stat, "cpu"), "cpu  2");
    EXPECT_EQ(linux_backend::line_with(stat, "lonely"), "lonely");
    try {
        static_cast<void>(linux_backend::line_with(stat, "cp"));
        FAIL();
    } catch (bad_text const& failure) {
        EXPECT_EQ(failure.code(), linux_errc::value_absent);
        EXPECT_STREQ(failure.what(), "no line 'cp'");
    }
}

TEST(text, an_empty_first_line_is_refused) {
    EXPECT_EQ(linux_backend::first_line("a b\nc"), "a b");
    EXPECT_EQ(linux_backend::first_line("a"), "a");
    for (std::string_view const empty : {"", "\n", "\na"}) {
        EXPECT_THROW(static_cast<void>(linux_backend::first_line(empty)), bad_text);
    }
}

TEST(text, whole_numbers_have_digits_alone_and_64_bits) {
    EXPECT_EQ(linux_backend::whole_number("0"), 0U);
    EXPECT_EQ(linux_backend::whole_number("18446744073709551615"), 18446744073709551615U);
    for (std::string_view const wrong :
         {"", "-1", "+1", " 1", "1 ", "0x1", "1.0", "one", "18446744073709551616"}) {
        EXPECT_THROW(static_cast<void>(linux_backend::whole_number(wrong)), bad_text) << wrong;
    }
}

TEST(text, signed_numbers_may_have_a_minus) {
    EXPECT_EQ(linux_backend::signed_number("-1500"), -1500);
    EXPECT_EQ(linux_backend::signed_number("9223372036854775807"), 9223372036854775807);
    for (std::string_view const wrong : {"", "-", "9223372036854775808", "1.5"}) {
        EXPECT_THROW(static_cast<void>(linux_backend::signed_number(wrong)), bad_text) << wrong;
    }
}

TEST(text, decimal_numbers_are_finite) {
    EXPECT_DOUBLE_EQ(linux_backend::decimal_number("0.42"), 0.42);
    EXPECT_DOUBLE_EQ(linux_backend::decimal_number("7"), 7.0);
    for (std::string_view const wrong : {"", "nan", "inf", "-inf", "1,5", "1e999", "0.4x"}) {
        EXPECT_THROW(static_cast<void>(linux_backend::decimal_number(wrong)), bad_text) << wrong;
    }
}

TEST(text, a_product_beyond_64_bits_is_refused) {
    EXPECT_EQ(linux_backend::product(18014398509481983U, 1024), 18446744073709550592U);
    EXPECT_THROW(static_cast<void>(linux_backend::product(18014398509481984U, 1024)), bad_text);
    EXPECT_EQ(linux_backend::product(0, 1024), 0U);
}

TEST(text, a_message_shows_the_beginning_of_a_long_word) {
    try {
        static_cast<void>(linux_backend::whole_number(std::string(1'000'000, 'x')));
        FAIL();
    } catch (bad_text const& failure) {
        EXPECT_EQ(failure.what(), "'" + std::string(40, 'x') + "...' is no number");
    }
}

} // namespace
