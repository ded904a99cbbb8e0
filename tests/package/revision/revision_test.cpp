#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ModuleRevision, OfTheLibraryLoads) {
    void* const module = ::dlopen(THIS_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << ::dlerror();
    auto const answer = reinterpret_cast<int (*)()>(::dlsym(module, "module_answer"));
    ASSERT_NE(answer, nullptr) << ::dlerror();
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(::dlclose(module), 0);
}

// However late symbols are bound: the reference is to an object, not to a function.
TEST(ModuleRevision, OtherThanTheLibrarysIsNamedAsMissingByTheLoader) {
    for (int const binding : {RTLD_NOW, RTLD_LAZY}) {
        ASSERT_EQ(::dlopen(OTHER_MODULE_PATH, binding | RTLD_LOCAL), nullptr);
        std::string const message = ::dlerror();
        EXPECT_NE(message.find(OTHER_MODULE_PATH), std::string::npos) << message;
        EXPECT_NE(message.find("undefined symbol: __tavi_ioapi_library_revision_0_4"),
                  std::string::npos)
            << message;
    }
}

} // namespace
