#include "module/boundary_module.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

namespace {

bool is_loaded() {
    void* const handle = ::dlopen(BOUNDARY_MODULE_PATH, RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr) return false;
    ::dlclose(handle);
    return true;
}

TEST(Unloading, LeavesNothingOfTheModule) {
    ASSERT_FALSE(is_loaded());
    for (int round = 0; round < 3; ++round) {
        void* const handle = ::dlopen(BOUNDARY_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(handle, nullptr) << ::dlerror();
        EXPECT_TRUE(is_loaded());
        EXPECT_EQ(::dlclose(handle), 0);
        EXPECT_FALSE(is_loaded());
    }
}

TEST(Unloading, EndsTheModuleAfterItHasBeenUsed) {
    void* const handle = ::dlopen(BOUNDARY_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << ::dlerror();
    auto* const entry =
        reinterpret_cast<boundary::entry_function*>(::dlsym(handle, boundary::entry_name));
    ASSERT_NE(entry, nullptr);
    for (int index = 0; index < boundary::v2::detail::alternatives::size; ++index) {
        static_cast<void>(entry()->make_value(index));
    }
    EXPECT_THROW(entry()->raise_own(), boundary::v2::io_exception);
    std::string const said = describe(entry()->self_counted_error());
    EXPECT_EQ(said.rfind("boundary:13", 0), 0U);
    EXPECT_EQ(::dlclose(handle), 0);
    EXPECT_FALSE(is_loaded());
}

TEST(Unloading, LeavesTheValuesOfTheModuleUsable) {
    void* const handle = ::dlopen(BOUNDARY_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << ::dlerror();
    auto* const entry =
        reinterpret_cast<boundary::entry_function*>(::dlsym(handle, boundary::entry_name));
    ASSERT_NE(entry, nullptr);
    boundary::v2::io_value const text = entry()->make_value(15);
    boundary::v2::io_value const nested = entry()->make_value(33);
    boundary::v2::io_value const object = entry()->make_value(16);
    EXPECT_EQ(::dlclose(handle), 0);
    ASSERT_FALSE(is_loaded());
    EXPECT_EQ(*text.get_if<boundary::v2::utility::string>(), "level of the tank");
    boundary::v2::io_value const copy(nested);
    EXPECT_EQ(copy.index(), 33);
    EXPECT_EQ(object.get_if<boundary::v2::io_object>()->type().structure_id, 7U);
}

} // namespace
