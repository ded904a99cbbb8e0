#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

/// \file
/// Two threads that load and unload at the same time, in a program that knows no library of ours.

namespace loading_threads {
namespace {

constexpr int loads = 50;

bool stays_loaded(char const* path) {
    void* const handle = ::dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) ::dlclose(handle);
    return handle != nullptr;
}

/// Loads a module, lets it do everything that it can, and unloads it.
bool uses(char const* path) {
    void* const module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) return false;
    auto* const exercise =
        reinterpret_cast<unsigned int (*)()>(::dlsym(module, "boundary_module_exercise"));
    bool const works = exercise != nullptr && exercise() == 9; // "not found"
    return ::dlclose(module) == 0 && works;
}

bool uses_the_module() {
    return uses(MODULE_PATH);
}

/// Another file is another module, though it holds the same.
std::string const& path_of_the_twin() {
    static std::string const path = std::string(MODULE_PATH) + ".twin";
    return path;
}

bool uses_the_twin() {
    return uses(path_of_the_twin().c_str());
}

bool uses_the_library() {
    void* const library = ::dlopen(LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return false;
    bool const works = ::dlsym(library, "__tavi_ioapi_library_revision_0_5") != nullptr;
    return ::dlclose(library) == 0 && works;
}

/// Does both at the same time, again and again. \return how often one of them failed
int failures_of_two(bool (*first)(), bool (*second)()) {
    std::atomic<int> missing{2};
    std::atomic<int> failures{0};
    auto const act = [&](bool (*action)()) {
        --missing;
        while (missing > 0) std::this_thread::yield();
        for (int round = 0; round < loads; ++round) {
            if (!action()) ++failures;
        }
    };
    std::thread other(act, second);
    act(first);
    other.join();
    return failures;
}

TEST(LoadingOnTwoThreads, OfTheModuleLeavesNothing) {
    EXPECT_EQ(failures_of_two(uses_the_module, uses_the_module), 0);
    EXPECT_FALSE(stays_loaded(MODULE_PATH));
    EXPECT_FALSE(stays_loaded(LIBRARY_PATH));
}

TEST(LoadingOnTwoThreads, OfTwoModulesLeavesNothing) {
    std::filesystem::copy_file(MODULE_PATH, path_of_the_twin(),
                               std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(failures_of_two(uses_the_module, uses_the_twin), 0);
    EXPECT_FALSE(stays_loaded(MODULE_PATH));
    EXPECT_FALSE(stays_loaded(path_of_the_twin().c_str()));
    EXPECT_FALSE(stays_loaded(LIBRARY_PATH));
    std::filesystem::remove(path_of_the_twin());
}

TEST(LoadingOnTwoThreads, OfTheModuleAndOfTheLibraryLeavesNothing) {
    EXPECT_EQ(failures_of_two(uses_the_module, uses_the_library), 0);
    EXPECT_FALSE(stays_loaded(MODULE_PATH));
    EXPECT_FALSE(stays_loaded(LIBRARY_PATH));
}

} // namespace
} // namespace loading_threads
