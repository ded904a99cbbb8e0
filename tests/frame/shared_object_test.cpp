#include <tavi/ioapi/v2/utility/string.hpp>

#include "support/memory_map.hpp"

#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>
#include <link.h>

#include <string>

namespace {

using tavi::ioapi::v2::utility::string;
using test_support::protection_of;

// The address sanitizer of clang counts the guard behind an object to its size.
#if defined(__clang__) && defined(__has_feature)
constexpr bool padded = __has_feature(address_sanitizer);
#else
constexpr bool padded = false;
#endif

class SharedObject : public ::testing::Test {
protected:
    void SetUp() override {
        library = ::dlopen("libiokern.so", RTLD_NOW | RTLD_NOLOAD);
        ASSERT_NE(library, nullptr) << ::dlerror();
    }
    void TearDown() override {
        if (library != nullptr) ::dlclose(library);
    }

    // What the dynamic symbol table of the library says of `name`.
    struct symbol {
        unsigned char const* address;
        std::size_t size;
        int type;
    };
    symbol find(char const* name) const {
        void* const address = ::dlsym(library, name);
        if (address == nullptr) return {};
        Dl_info info{};
        void* entry = nullptr;
        if (::dladdr1(address, &info, &entry, RTLD_DL_SYMENT) == 0 || entry == nullptr) return {};
        auto const* const found = static_cast<ElfW(Sym) const*>(entry);
        return {static_cast<unsigned char const*>(address), found->st_size,
                ELF64_ST_TYPE(found->st_info)};
    }

    void* library = nullptr;
};

TEST_F(SharedObject, CarriesItsPlainName) {
    link_map* map = nullptr;
    ASSERT_EQ(::dlinfo(library, RTLD_DI_LINKMAP, &map), 0);
    char const* texts = nullptr;
    std::size_t offset = 0;
    for (auto const* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_STRTAB) texts = reinterpret_cast<char const*>(entry->d_un.d_ptr);
        if (entry->d_tag == DT_SONAME) offset = entry->d_un.d_val;
    }
    ASSERT_NE(texts, nullptr);
    ASSERT_NE(offset, 0U);
    EXPECT_STREQ(texts + offset, "libiokern.so");
}

TEST_F(SharedObject, ExportsItsRevision) {
    auto const revision = find("__tavi_ioapi_library_revision_0_5");
    ASSERT_NE(revision.address, nullptr);
    EXPECT_EQ(revision.type, STT_OBJECT);
    EXPECT_TRUE(revision.size == 2 || (padded && revision.size > 2)) << revision.size;
    EXPECT_EQ(revision.address[0], 0);
    EXPECT_EQ(revision.address[1], 0);
    EXPECT_EQ(protection_of(revision.address).substr(0, 2), "rw");
}

TEST_F(SharedObject, ExportsTheEmptyTextInReadOnlyMemory) {
    auto const empty = find("_ZN4tavi5ioapi2v27utility6string7S_emptyE");
    ASSERT_NE(empty.address, nullptr);
    EXPECT_TRUE(empty.size == 1 || (padded && empty.size > 1)) << empty.size;
    EXPECT_EQ(*empty.address, 0);
    EXPECT_EQ(protection_of(empty.address).substr(0, 2), "r-");
}

TEST_F(SharedObject, ShowsProgramsTheEmptyTextInReadOnlyMemory) {
    EXPECT_EQ(string::S_empty, '\0');
    EXPECT_EQ(protection_of(&string::S_empty).substr(0, 2), "r-");
}

TEST_F(SharedObject, KeepsTheStandardLibraryToItself) {
    // A name that its own code instantiates, as every user of texts does.
    void* const address = ::dlsym(library, "_ZN4tavi5ioapi2v213make_io_errorENS1_7io_errcE");
    EXPECT_NE(address, nullptr);
    EXPECT_EQ(find("_ZSt8to_charsPcS_iSt12chars_format").address, nullptr);
}

} // namespace
