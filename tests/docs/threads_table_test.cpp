#include "markdown_table.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace docs_test {
namespace {

/// The names of all tests in tests/threads.
std::set<std::string> names_of_thread_tests() {
    std::set<std::string> names;
    std::string const declaration = "\nTEST(threads, ";
    for (auto const& entry : std::filesystem::directory_iterator(THREADS_PATH)) {
        if (entry.path().extension() != ".cpp") continue;
        std::ifstream file(entry.path());
        std::ostringstream text;
        text << file.rdbuf();
        std::string const source = text.str();
        for (auto at = source.find(declaration); at != std::string::npos;
             at = source.find(declaration, at + 1)) {
            auto const start = at + declaration.size();
            auto const name = source.substr(start, source.find(')', start) - start);
            EXPECT_TRUE(names.insert(name).second) << name;
        }
    }
    return names;
}

/// The lines of the table as their tests are named, each by the first class that it names.
std::set<std::string> lines_of_the_table() {
    std::set<std::string> lines;
    guide const document("threads.md");
    auto const& table = document.table("Class", "Concurrent reads");
    for (std::size_t row = 1; row < table.size(); ++row) {
        std::string test = items_of(table[row][0])[0];
        for (auto at = test.find("::"); at != std::string::npos; at = test.find("::")) {
            test.replace(at, 2, "_");
        }
        EXPECT_TRUE(lines.insert(test).second) << table[row][0];
    }
    return lines;
}

TEST(threads_table, has_a_test_for_every_line_and_a_line_for_every_test) {
    auto const lines = lines_of_the_table();
    EXPECT_GT(lines.size(), 20U);
    EXPECT_EQ(lines, names_of_thread_tests());
}

} // namespace
} // namespace docs_test
