#include <tavi/ioapi/v2/io_error.hpp>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using namespace tavi::ioapi::v2;

bool speaks_in_the_end = false;
char first_words[32];

// Writes without streams, which may be gone.
void print_an_error() {
    std::string const text = describe(io_errc::incompatible_type) + '\n';
    ssize_t const written = ::write(STDERR_FILENO, text.data(), text.size());
    if (written != static_cast<ssize_t>(text.size())) std::abort();
}

void speak_in_the_end() {
    if (speaks_in_the_end) print_an_error();
}

// Runs before the initialisers of any library. What is registered here runs at exit after the
// objects of all libraries have been destroyed.
void come_before_all() {
    utility::string const words = generic_io_error_category().message(3);
    std::memcpy(first_words, words.c_str(), words.size() + 1);
    static_cast<void>(std::atexit(speak_in_the_end));
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const before_all)() = come_before_all;

io_error const made_by_an_initialiser(io_errc::no_result);
utility::string const said_by_an_initialiser = made_by_an_initialiser.message();

TEST(GenericCategory, IsUsableBeforeAnyInitialiserHasRun) {
    EXPECT_STREQ(first_words, "incompatible type");
}

TEST(GenericCategory, IsUsableInInitialisers) {
    EXPECT_EQ(said_by_an_initialiser, "no result");
    EXPECT_EQ(&made_by_an_initialiser.category(), &generic_io_error_category());
}

TEST(GenericCategoryDeathTest, IsUsableInExitHandlers) {
    EXPECT_EXIT(
        {
            static_cast<void>(std::atexit(print_an_error));
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "generic:3 incompatible type");
}

TEST(GenericCategoryDeathTest, IsUsableAfterTheLibrariesHaveEnded) {
    EXPECT_EXIT(
        {
            speaks_in_the_end = true;
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "generic:3 incompatible type");
}

} // namespace
