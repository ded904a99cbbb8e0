#include "target.hpp"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

/// \file
/// The main program of a target without a fuzzer: judges every file of the folders that it is
/// given.

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_in(fs::path const& folder) {
    std::vector<fs::path> files;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void judge(fs::path const& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw fs::filesystem_error("cannot read", file, std::error_code());
    std::vector<char> const bytes{std::istreambuf_iterator<char>(in),
                                  std::istreambuf_iterator<char>()};
    // Said before: a target ends the process where it has found something.
    (void)std::printf("%s\n", file.c_str());
    (void)std::fflush(stdout);
    (void)LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
}

std::size_t judge_all(int count, char** folders) {
    std::size_t judged = 0;
    for (int i = 0; i < count; ++i) {
        if (!fs::exists(folders[i])) continue; // nothing was ever found for this target
        for (fs::path const& file : files_in(folders[i])) {
            judge(file);
            ++judged;
        }
    }
    return judged;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        (void)std::fprintf(stderr, "usage: %s FOLDER...\n", argv[0]);
        return 2;
    }
    try {
        std::size_t const judged = judge_all(argc - 1, argv + 1);
        (void)std::printf("%zu inputs\n", judged);
        // A folder that was moved must not pass for one whose inputs all hold.
        return judged > 0 ? 0 : 1;
    } catch (std::exception const& failure) {
        (void)std::fprintf(stderr, "%s: %s\n", argv[0], failure.what());
        return 1;
    }
}
