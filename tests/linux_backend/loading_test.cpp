#include "opened_machine.hpp"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::opened_module;

/// What is said where nothing can be opened.
template <class Work>
std::string failure_of(Work work) {
    try {
        work();
    } catch (std::runtime_error const& failure) {
        return failure.what();
    }
    return {};
}

TEST(linux_loading, a_module_can_be_unloaded_when_its_backends_are_gone) {
    linux_test::made_up_machine const files;
    // A file of its own: the others stay loaded.
    std::string const path = files.path("linux_backend_copy.so");
    std::filesystem::copy_file(LINUX_BACKEND_PATH, path);
    {
        opened_module const loaded(path);
        auto const opened = loaded.open(files.options());
        EXPECT_TRUE(linux_test::read_entry(*opened, v2::plc_identifier("network.eth0")).ok());
        EXPECT_FALSE(linux_test::read_entry(*opened, v2::plc_identifier("none")).ok());
        v2::browse_result nodes;
        v2::io_error error;
        opened->browse({}, nodes, error);
        EXPECT_FALSE(nodes.empty());
        void* const handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
        EXPECT_NE(handle, nullptr);
        ::dlclose(handle);
    }
    EXPECT_EQ(::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(linux_loading, a_problem_is_told_in_the_words_of_the_module) {
    linux_test::made_up_machine const files;
    auto values = files.options();
    values.set("sys", "");
    EXPECT_EQ(failure_of([&] { static_cast<void>(linux_test::linux_module_file().open(values)); }),
              "'sys' names no folder: ''");
}

TEST(linux_loading, what_is_no_module_is_told) {
    EXPECT_NE(failure_of([] { opened_module const none("/nowhere/at_all.so"); }), "");
    // A library that every process has, and that is no backend.
    EXPECT_EQ(failure_of([] { opened_module const other("libc.so.6"); }),
              "no entry function in libc.so.6");
}

} // namespace
