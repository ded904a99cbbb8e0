#include "support/host_process.hpp"
#include "support/terminal_process.hpp"

#include <gtest/gtest.h>
#include <iohost/columns.hpp>
#include <iohost/terminal.hpp>

#include <string>

namespace {

using iohost_support::host_with_backend;
using iohost_support::terminal_process;
using iohost_support::with_backend;
using iohost_support::words;

words on_terminal(words const& settings, words const& command) {
    auto all = with_backend(settings, command);
    all.insert(all.begin(), IOHOST_PATH);
    return all;
}

constexpr char const* ctrl_c = "\x03";

TEST(terminal, a_watched_table_is_drawn_over_in_place) {
    terminal_process watch(on_terminal({}, {"watch", "odd.ticker", "tank.count"}));
    auto const& shown = watch.read_until("\x1b[3A");
    auto const head = shown.find("identifier  type  value");
    ASSERT_NE(head, std::string::npos) << shown;
    EXPECT_LT(head, shown.find("\x1b[3A"));
    watch.read_until("odd.ticker  u32   2 ");
    watch.type(ctrl_c);
    EXPECT_EQ(watch.finish(), 0);
    EXPECT_NE(watch.shown().find("watched for "), std::string::npos) << watch.shown();
    EXPECT_NE(watch.shown().find("tank.count  1        0\r\n"), std::string::npos) << watch.shown();
}

TEST(terminal, a_table_that_is_too_wide_is_cut) {
    terminal_process watch(on_terminal({}, {"watch", "--count", "1", "tank.count"}), 24, 20);
    EXPECT_EQ(watch.finish(), 0);
    EXPECT_NE(watch.shown().find("\x1b[Kidentifier  type  va\r\n"), std::string::npos)
        << watch.shown();
}

TEST(terminal, a_table_that_is_too_long_is_cut) {
    words command{"watch", "--count", "1"};
    for (int i = 0; i < 10; ++i) command.push_back("v" + std::to_string(i));
    terminal_process watch(on_terminal({"variables=10"}, command), 6, 80);
    EXPECT_EQ(watch.finish(), 0);
    // Five lines: the head, three of ten variables, and how many are left.
    EXPECT_NE(watch.shown().find("v2 "), std::string::npos) << watch.shown();
    EXPECT_NE(watch.shown().find("... and 7 more"), std::string::npos) << watch.shown();
}

TEST(terminal, shows_how_far_a_long_read_has_come) {
    terminal_process read(on_terminal({"variables=10000"}, {"read"}), 24, 200);
    EXPECT_EQ(read.finish(), 1); // odd.broken
    auto const& shown = read.shown();
    EXPECT_NE(shown.find("\r\x1b[K500 of 10018 variables read"), std::string::npos);
    EXPECT_NE(shown.find("\r\x1b[K10018 of 10018 variables read\r\x1b[K"), std::string::npos);
    EXPECT_NE(shown.find(" nodes found"), std::string::npos);
}

TEST(terminal, shows_no_progress_in_a_pipe) {
    auto const finished = host_with_backend({"variables=10000"}, {"read"});
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out.find("variables read"), std::string::npos);
}

TEST(terminal, shows_no_progress_of_a_short_read) {
    terminal_process read(on_terminal({}, {"read", "tank.count"}), 24, 200);
    EXPECT_EQ(read.finish(), 0);
    EXPECT_EQ(read.shown().find('\x1b'), std::string::npos);
}

TEST(terminal, cuts_lines_between_characters) {
    EXPECT_EQ(iohost::cut("abc", 5), "abc");
    EXPECT_EQ(iohost::cut("abc", 2), "ab");
    EXPECT_EQ(iohost::cut("\xC3\xA4\xC3\xB6\xC3\xBC", 2), "\xC3\xA4\xC3\xB6");
    EXPECT_EQ(iohost::cut("", 0), "");
}

TEST(terminal, columns_are_as_wide_as_their_characters) {
    iohost::columns table({"a", "b"});
    table.add({"\xC3\xA4\xC3\xB6", "x"});
    EXPECT_EQ(table.lines(), (std::vector<std::string>{"a   b", "\xC3\xA4\xC3\xB6  x"}));
}

} // namespace
