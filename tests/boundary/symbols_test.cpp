#include <elf.h>
#include <gtest/gtest.h>
#include <link.h>

#include <cstddef>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// Whether a name is that of a member of our namespace, or of its table or type.
bool is_ours(std::string const& name) {
    for (char const* kind : {"N", "NK", "NR", "NKR", "NO", "NKO", "TVN", "TIN", "TSN"}) {
        if (name.rfind(std::string("_Z") + kind + "4tavi5ioapi2v2", 0) == 0) return true;
    }
    return false;
}

// The dynamic symbol table of the module's file.
class ModuleSymbols : public ::testing::Test {
protected:
    struct symbol {
        std::string name;
        bool defined;
        int binding;
    };

    void SetUp() override {
        std::ifstream file(BOUNDARY_MODULE_PATH, std::ios::binary);
        std::vector<char> const bytes{std::istreambuf_iterator<char>(file), {}};
        auto const header = read<ElfW(Ehdr)>(bytes, 0);
        for (std::size_t i = 0; i < header.e_shnum; ++i) {
            auto const table = section(bytes, header, i);
            if (table.sh_type != SHT_DYNSYM) continue;
            auto const names = section(bytes, header, table.sh_link);
            for (std::size_t at = 0; at < table.sh_size; at += sizeof(ElfW(Sym))) {
                auto const entry = read<ElfW(Sym)>(bytes, table.sh_offset + at);
                symbols.push_back({bytes.data() + names.sh_offset + entry.st_name,
                                   entry.st_shndx != SHN_UNDEF, ELF64_ST_BIND(entry.st_info)});
            }
        }
        ASSERT_GT(symbols.size(), 1U);
    }

    std::vector<symbol> symbols;

private:
    template <class T>
    static T read(std::vector<char> const& bytes, std::size_t offset) {
        T value{};
        if (offset + sizeof value <= bytes.size()) {
            std::memcpy(&value, bytes.data() + offset, sizeof value);
        }
        return value;
    }
    static ElfW(Shdr)
        section(std::vector<char> const& bytes, ElfW(Ehdr) const& header, std::size_t index) {
        return read<ElfW(Shdr)>(bytes, header.e_shoff + index * header.e_shentsize);
    }
};

TEST_F(ModuleSymbols, AskForTheRevisionOfTheLibrary) {
    bool asked = false;
    for (auto const& [name, defined, binding] : symbols) {
        if (name == "__tavi_ioapi_library_revision_0_5") {
            EXPECT_FALSE(defined);
            EXPECT_EQ(binding, STB_GLOBAL) << "a weak one would not be missed";
            asked = true;
        }
    }
    EXPECT_TRUE(asked);
}

TEST_F(ModuleSymbols, DefineNothingOfTheLibrary) {
    for (auto const& [name, defined, binding] : symbols) {
        // Members of the namespace, their tables and types. What others make of our types, as the
        // templates of the standard library and the sanitizers do, is the module's own.
        EXPECT_FALSE(is_ours(name) && defined) << name;
    }
}

TEST_F(ModuleSymbols, AreNotBoundForTheLifeOfTheProcess) {
    for (auto const& [name, defined, binding] : symbols) {
        EXPECT_NE(binding, STB_GNU_UNIQUE) << name;
    }
}

} // namespace
