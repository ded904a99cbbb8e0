#include <gtest/gtest.h>
#include <linux_backend/error_category.hpp>

#include <set>
#include <string>

namespace {

using linux_backend::linux_errc;
using linux_backend::make_linux_error;

TEST(linux_errors, say_what_they_mean) {
    EXPECT_EQ(describe(make_linux_error(linux_errc::file_absent)), "linux:1 no such file");
    EXPECT_EQ(describe(make_linux_error(linux_errc::file_unreadable)),
              "linux:2 file cannot be read");
    EXPECT_EQ(describe(make_linux_error(linux_errc::file_malformed)),
              "linux:3 file not understood");
    EXPECT_EQ(describe(make_linux_error(linux_errc::value_absent)),
              "linux:4 value not in the file");
    EXPECT_EQ(describe(make_linux_error(linux_errc::read_only)),
              "linux:5 variable can only be read");
    EXPECT_EQ(describe(make_linux_error(linux_errc::bad_option)), "linux:6 unusable configuration");
}

TEST(linux_errors, a_code_without_a_meaning_has_no_message) {
    for (int const code : {0, -1, 7, 0x7FFFFFFF}) {
        EXPECT_TRUE(linux_backend::linux_error_category().message(code).empty()) << code;
    }
}

} // namespace
