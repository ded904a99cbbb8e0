#include "made_up_machine.hpp"

#include <gtest/gtest.h>
#include <linux_backend/snapshot.hpp>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using linux_backend::file_failure;
using linux_backend::linux_errc;
using linux_backend::snapshot;

snapshot look_at(linux_test::made_up_machine const& machine) {
    return {machine.proc(), machine.sys(), tavi::ioapi::v2::io_timestamp::now()};
}

template <class Work>
void expect_failure(linux_errc code, std::string const& file, int system_code, Work work) {
    try {
        work();
        FAIL() << "no failure with " << file;
    } catch (file_failure const& failure) {
        EXPECT_EQ(failure.code(), code) << failure.what();
        EXPECT_EQ(failure.file(), file);
        EXPECT_EQ(failure.system_code(), system_code);
    }
}

TEST(snapshot_of_files, finds_them_below_its_folders) {
    linux_test::made_up_machine const machine;
    auto files = look_at(machine);
    EXPECT_EQ(files.proc("uptime").text, "5025.50 9000.25\n");
    EXPECT_EQ(files.proc("uptime").path, machine.proc() + "/uptime");
    EXPECT_EQ(files.sys("class/net/eth0/mtu").text, "1500\n");
}

TEST(snapshot_of_files, reads_each_once) {
    linux_test::made_up_machine const machine;
    auto files = look_at(machine);
    auto const& before = files.proc("uptime");
    machine.write("proc/uptime", "1 1\n");
    EXPECT_EQ(&files.proc("uptime"), &before);
    EXPECT_EQ(before.text, "5025.50 9000.25\n");
    EXPECT_EQ(look_at(machine).proc("uptime").text, "1 1\n");
}

TEST(snapshot_of_files, tells_absent_ones) {
    linux_test::made_up_machine const machine;
    auto files = look_at(machine);
    expect_failure(linux_errc::file_absent, machine.proc() + "/none", ENOENT,
                   [&] { static_cast<void>(files.proc("none")); });
    expect_failure(linux_errc::file_absent, machine.proc() + "/uptime/none", ENOTDIR,
                   [&] { static_cast<void>(files.proc("uptime/none")); });
}

TEST(snapshot_of_files, a_folder_is_no_file) {
    linux_test::made_up_machine const machine;
    auto files = look_at(machine);
    expect_failure(linux_errc::file_unreadable, machine.proc() + "/net", EISDIR,
                   [&] { static_cast<void>(files.proc("net")); });
}

TEST(snapshot_of_files, does_not_wait_for_who_writes_to_a_pipe) {
    linux_test::made_up_machine const machine;
    ASSERT_EQ(::mkfifo(machine.path("proc/pipe").c_str(), 0600), 0);
    EXPECT_EQ(look_at(machine).proc("pipe").text, "");
}

TEST(snapshot_of_files, gives_up_on_a_file_without_an_end) {
    linux_test::made_up_machine const machine;
    std::filesystem::create_symlink("/dev/zero", machine.path("proc/endless"));
    auto files = look_at(machine);
    expect_failure(linux_errc::file_malformed, machine.proc() + "/endless", 0,
                   [&] { static_cast<void>(files.proc("endless")); });
}

TEST(snapshot_of_files, lists_folders_and_links_to_them_by_name) {
    linux_test::made_up_machine const machine;
    std::filesystem::create_directory_symlink(machine.path("sys/block/sda"),
                                              machine.path("sys/block/a-link"));
    std::filesystem::create_symlink(machine.path("gone"), machine.path("sys/block/dangling"));
    machine.write("sys/block/a-file", "");
    EXPECT_EQ(look_at(machine).devices("block"), (std::vector<std::string>{"a-link", "sda"}));
}

TEST(snapshot_of_files, tells_a_folder_that_cannot_be_listed) {
    linux_test::made_up_machine const machine;
    auto const files = look_at(machine);
    expect_failure(linux_errc::file_absent, machine.sys() + "/none", ENOENT,
                   [&] { static_cast<void>(files.devices("none")); });
    expect_failure(linux_errc::file_absent, machine.sys() + "/block/sda/size", ENOTDIR,
                   [&] { static_cast<void>(files.devices("block/sda/size")); });
}

TEST(snapshot_of_files, what_does_not_parse_is_the_failure_of_its_file) {
    linux_backend::file_text const file{"/made/up", "text"};
    EXPECT_EQ(linux_backend::parsed(file, [](std::string const& text) { return text.size(); }), 4U);
    expect_failure(linux_errc::value_absent, "/made/up", 0, [&] {
        linux_backend::parsed(file, [](std::string const&) {
            throw linux_backend::bad_text(linux_errc::value_absent, "nothing there");
        });
    });
}

} // namespace
