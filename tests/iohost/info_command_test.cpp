#include "support/host_process.hpp"

#include <elf.h>
#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>
#include <iohost/elf_file.hpp>
#include <iohost/failures.hpp>
#include <iohost/module_path.hpp>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using iohost_support::document_of;
using iohost_support::expect_refused;
using iohost_support::host;
using test_support::temporary_file;
namespace fs = std::filesystem;

TEST(info_command, says_what_a_module_is) {
    auto const finished = host({"info", TEST_BACKEND_PATH});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    for (char const* const line :
         {"name       test\n", "summary    Keeps its values in memory\n", "version    1.2.3 beta\n",
          "built for  revision 0.5 of libiokern\n", "entry      example_backend_module_3\n",
          "\nBehaviour: What is tested\n"}) {
        EXPECT_NE(finished.out.find(line), std::string::npos) << finished.out;
    }
}

TEST(info_command, says_so_in_json) {
    auto const document = document_of(host({"--json", "info", "--backend", TEST_BACKEND_PATH}));
    EXPECT_EQ(document["loads"], true);
    EXPECT_EQ(document["name"], "test");
    EXPECT_EQ(document["version"],
              nlohmann::json::parse(R"({"major": 1, "minor": 2, "patch": 3, "label": "beta"})"));
    EXPECT_EQ(document["revisions"], nlohmann::json::array({"0.5"}));
    EXPECT_EQ(document["entries"], nlohmann::json::array({"example_backend_module_3"}));
    EXPECT_EQ(document["form"]["categories"].size(), 2U);
}

/// The head of an ELF file that has nothing else.
template <class Header>
std::string elf_head(unsigned char bits, std::uint16_t type, std::uint16_t machine) {
    Header header{};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = bits;
    header.e_ident[EI_DATA] = ELFDATA2LSB;
    header.e_ident[EI_VERSION] = EV_CURRENT;
    header.e_type = type;
    header.e_machine = machine;
    header.e_version = EV_CURRENT;
    header.e_ehsize = sizeof(Header);
    std::string bytes(sizeof(Header), '\0');
    std::memcpy(bytes.data(), &header, sizeof(Header));
    return bytes;
}

/// The line that `info` gives for a file, from the reason on.
void expect_reason(std::string const& file, std::string const& reason) {
    expect_refused(host({"info", file}), "iohost: cannot load '" + file + "': " + reason);
}

std::string const expected_shared = "a shared object for x86-64 was expected, but this is ";
std::string const build_again = "; build the backend as a module for x86-64\n";

TEST(info_command, tells_why_a_file_cannot_be_a_module) {
    expect_reason("/nowhere/no_module.so",
                  "No such file or directory; give the file of a backend module\n");
    expect_reason("/usr", "Is a directory; give the file of a backend module\n");
    expect_reason("/dev/null", "Invalid argument; give the file of a backend module\n");
    expect_reason(STATION_MAP_PATH, expected_shared + "no ELF file" + build_again);
    expect_reason(IOHOST_PATH, expected_shared + "a program for x86-64" + build_again);
}

TEST(info_command, tells_which_machine_a_module_is_for) {
    temporary_file const arm(elf_head<Elf32_Ehdr>(ELFCLASS32, ET_DYN, EM_ARM));
    expect_reason(arm.path(), expected_shared + "a shared object for 32-bit ARM" + build_again);
    temporary_file const arm64(elf_head<Elf64_Ehdr>(ELFCLASS64, ET_DYN, EM_AARCH64));
    expect_reason(arm64.path(), expected_shared + "a shared object for 64-bit ARM" + build_again);
    temporary_file const object(elf_head<Elf64_Ehdr>(ELFCLASS64, ET_REL, EM_X86_64));
    expect_reason(object.path(), expected_shared + "an object file for x86-64" + build_again);
    temporary_file const nothing("");
    expect_reason(nothing.path(), expected_shared + "no ELF file" + build_again);
}

/// The first bytes of the test backend.
std::string beginning_of_module(std::size_t size) {
    std::ifstream file(TEST_BACKEND_PATH, std::ios::binary);
    std::string bytes(size, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    return bytes;
}

TEST(info_command, tells_that_a_module_was_cut) {
    std::string const damaged = "it is damaged or incomplete: an ELF file, but ";
    std::string const copy_again = "; build or copy it again\n";
    for (std::size_t const size : {2U, 4U, 20U, 63U}) {
        temporary_file const cut(beginning_of_module(size));
        expect_reason(cut.path(), damaged + "its head is not whole" + copy_again);
    }
    auto const whole = static_cast<std::size_t>(fs::file_size(TEST_BACKEND_PATH));
    for (std::size_t const size : {std::size_t{64}, std::size_t{5000}, whole / 2, whole - 1}) {
        temporary_file const cut(beginning_of_module(size));
        expect_reason(cut.path(), damaged + "it ends before its contents do" + copy_again);
    }
}

TEST(info_command, tells_which_revision_a_module_is_for) {
    expect_reason(OTHER_REVISION_PATH,
                  "it was built for revision 0.4 of libiokern (it asks for the symbol "
                  "__tavi_ioapi_library_revision_0_4), but this host has revision 0.5; build it "
                  "again with the headers of 0.5\n");
}

TEST(info_command, tells_which_entry_function_a_module_has) {
    expect_reason(NO_BACKEND_PATH,
                  "the function example_backend_module_3 was expected, but it has "
                  "example_open_backend_1, of another agreement of hosts and backends; build it "
                  "again with the header backend_module.hpp of this host\n");
    expect_reason(LIBRARY_PATH,
                  "it is no backend: the function example_backend_module_3 was expected, but it "
                  "has none of that kind; give the file of a backend module\n");
}

TEST(info_command, tells_what_a_module_lacks) {
    expect_reason(NEEDS_ABSENT_PATH,
                  "it needs the library libabsent.so, which was not found (cannot open shared "
                  "object file: No such file or directory); install it, or name its directory in "
                  "LD_LIBRARY_PATH\n");
    auto const finished = host({"info", NEEDS_NOTHING_THERE_PATH});
    EXPECT_EQ(finished.status, 2);
    EXPECT_NE(finished.err.find("the loader says: "), std::string::npos) << finished.err;
    EXPECT_NE(finished.err.find("undefined symbol: absent_answer"), std::string::npos);
}

TEST(info_command, tells_the_reason_in_json_as_well) {
    auto const finished = host({"--json", "info", OTHER_REVISION_PATH});
    EXPECT_EQ(finished.status, 2);
    auto const document = document_of(finished);
    EXPECT_EQ(document["loads"], false);
    EXPECT_NE(document["reason"].get<std::string>().find("revision 0.4"), std::string::npos);
    EXPECT_NE(finished.err.find("revision 0.4"), std::string::npos);
}

TEST(elf_file, tells_what_a_module_asks_for) {
    auto const module = iohost::inspect(TEST_BACKEND_PATH);
    EXPECT_EQ(module.kind, iohost::elf_file::sort::shared);
    EXPECT_EQ(module.revisions, std::vector<std::string>{"0.5"});
    EXPECT_EQ(module.entries, std::vector<std::string>{"example_backend_module_3"});
    EXPECT_NE(std::find(module.needed.begin(), module.needed.end(), "libiokern.so"),
              module.needed.end());
    EXPECT_EQ(iohost::library_revision(), "0.5");
}

/// A directory of its own that goes away with the object.
class program_place {
public:
    program_place()
        : root_(fs::path(testing::TempDir()) / ("iohost_place_" + std::to_string(::getpid()))) {
        fs::create_directories(root_ / "bin");
    }
    program_place(program_place const&) = delete;
    program_place& operator=(program_place const&) = delete;
    ~program_place() { fs::remove_all(root_); }

    fs::path add(fs::path const& file) const {
        fs::create_directories((root_ / file).parent_path());
        std::ofstream(root_ / file) << "module";
        return root_ / file;
    }
    [[nodiscard]] fs::path program() const { return root_ / "bin"; }

private:
    fs::path root_;
};

TEST(module_path, of_a_word_is_the_first_file_that_is_there) {
    program_place const place;
    auto const path = [&] { return iohost::module_path("test", place.program()); };
    EXPECT_THROW((void)path(), iohost::setup_failure);
    for (char const* const file : {"lib/iokern/backends/test_backend.so",
                                   "test_backend/test_backend.so", "bin/test_backend.so"}) {
        auto const added = place.add(file);
        EXPECT_EQ(path(), added);
    }
}

TEST(module_path, of_all_else_is_the_path_itself) {
    program_place const place;
    EXPECT_EQ(iohost::module_path("/a/b.so", place.program()), "/a/b.so");
    EXPECT_EQ(iohost::module_path("./test", place.program()), fs::absolute("./test"));
    EXPECT_EQ(iohost::module_path("b.so", place.program()), fs::absolute("b.so"));
    EXPECT_THROW((void)iohost::module_path("", place.program()), iohost::setup_failure);
}

} // namespace
