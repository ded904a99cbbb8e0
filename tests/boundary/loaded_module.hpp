#pragma once

#include "module/boundary_module.hpp"
#include "support/allocations.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

/// \file
/// The module as a host loads it: late, and for one test.

namespace boundary {

class WithModule : public ::testing::Test {
protected:
    void SetUp() override {
        handle_ = ::dlopen(BOUNDARY_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(handle_, nullptr) << ::dlerror();
        auto* const entry = reinterpret_cast<entry_function*>(::dlsym(handle_, entry_name));
        ASSERT_NE(entry, nullptr) << ::dlerror();
        backend = entry();
        blocks_ = test_support::live_blocks();
    }
    // What a test takes from the module is gone by now.
    void TearDown() override {
        if (handle_ == nullptr) return;
        EXPECT_EQ(test_support::live_blocks(), blocks_);
        EXPECT_EQ(backend->living_diagnostics(), 0);
        EXPECT_EQ(::dlclose(handle_), 0);
    }

    backend_module const* backend = nullptr;

private:
    void* handle_ = nullptr;
    long long blocks_ = 0;
};

} // namespace boundary
