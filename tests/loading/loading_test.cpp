#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>

/// \file
/// The library and a module that needs it, in a program that knows neither.

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitized = true;
#elif defined(__has_feature)
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

constexpr int rounds = 1000;

bool is_loaded(char const* path) {
    void* const handle = ::dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr) return false;
    ::dlclose(handle);
    return true;
}

// What the process holds: bytes on the heap, where a sanitizer does not hide them, and mappings.
struct holdings {
    std::size_t heap = sanitized ? 0 : ::mallinfo2().uordblks;
    std::size_t mappings = 0;

    holdings() {
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);) {
            if (line.find("libiokern") != std::string::npos ||
                line.find("boundary_module") != std::string::npos) {
                ++mappings;
            }
        }
    }
};

// Loads what stands at `path`, lets `use` have it, and unloads it; false where it stays.
template <class Use>
bool round_trip(char const* path, Use use) {
    void* const handle = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        ADD_FAILURE() << ::dlerror();
        return false;
    }
    use(handle);
    return ::dlclose(handle) == 0 && !is_loaded(path) && !is_loaded(LIBRARY_PATH);
}

template <class Use>
void expect_nothing_left(char const* path, Use use) {
    ASSERT_FALSE(is_loaded(LIBRARY_PATH));
    // The first rounds leave what the loader and the standard library keep for good.
    for (int round = 0; round < 10; ++round) ASSERT_TRUE(round_trip(path, use));
    holdings const before;
    for (int round = 0; round < rounds; ++round) {
        ASSERT_TRUE(round_trip(path, use)) << "round " << round;
    }
    holdings const after;
    EXPECT_EQ(before.mappings, 0U);
    EXPECT_EQ(after.mappings, 0U);
    // The allocator's own caches vary a little; a block left in each round would be far more.
    EXPECT_LT(after.heap, before.heap + 16 * std::size_t{rounds});
}

TEST(Loading, OfTheLibraryAloneLeavesNothingAThousandTimes) {
    expect_nothing_left(LIBRARY_PATH, [](void* library) {
        EXPECT_NE(::dlsym(library, "__tavi_ioapi_library_revision_0_5"), nullptr);
    });
}

TEST(Loading, OfAModuleThatUsesItLeavesNothingAThousandTimes) {
    expect_nothing_left(MODULE_PATH, [](void* module) {
        auto* const exercise =
            reinterpret_cast<unsigned int (*)()>(::dlsym(module, "boundary_module_exercise"));
        ASSERT_NE(exercise, nullptr);
        EXPECT_EQ(exercise(), 9U); // "not found"
    });
}

// --- the end of a process

unsigned int (*late_call)() = nullptr;

// Registered before the library was loaded, and so called after its own exit handlers.
void call_late() {
    std::_Exit(late_call() == 9 ? 7 : 8);
}

void end_with_a_late_call() {
    if (std::atexit(call_late) != 0) std::_Exit(1);
    void* const module = ::dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) std::_Exit(2);
    late_call =
        reinterpret_cast<unsigned int (*)()>(::dlsym(module, "boundary_module_message_size"));
    if (late_call == nullptr) std::_Exit(3);
    std::exit(0);
}

TEST(LoadingDeathTest, LetsTheGenericCategorySpeakInTheLastExitHandlers) {
    EXPECT_EXIT(end_with_a_late_call(), ::testing::ExitedWithCode(7), "");
}

} // namespace
