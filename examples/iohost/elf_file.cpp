#include "elf_file.hpp"

#include <tavi/ioapi/v2/api.hpp>

#include "failures.hpp"

#include <dlfcn.h>
#include <fcntl.h>
#include <gelf.h>
#include <libelf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <string_view>
#include <system_error>

namespace iohost {

namespace {

constexpr std::string_view revision_head = "__tavi_ioapi_library_revision_";
constexpr std::string_view entry_heads[] = {"example_backend_module_", "example_open_backend_"};

class open_file {
public:
    explicit open_file(std::filesystem::path const& file)
        : descriptor_(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (descriptor_ < 0) refuse(file, errno);
        struct stat about {};
        if (::fstat(descriptor_, &about) != 0 || !S_ISREG(about.st_mode)) {
            int const error = S_ISDIR(about.st_mode) ? EISDIR : EINVAL;
            ::close(descriptor_);
            refuse(file, error);
        }
        size_ = static_cast<unsigned long long>(about.st_size);
    }
    open_file(open_file const&) = delete;
    open_file& operator=(open_file const&) = delete;
    ~open_file() { ::close(descriptor_); }

    [[nodiscard]] int get() const noexcept { return descriptor_; }
    /// In bytes.
    [[nodiscard]] unsigned long long size() const noexcept { return size_; }
    /// Whether it begins as an ELF file, as far as it goes.
    [[nodiscard]] bool begins_as_elf() const {
        std::array<char, SELFMAG> head{};
        auto const read = ::pread(descriptor_, head.data(), head.size(), 0);
        return read > 0 && std::string_view(ELFMAG).starts_with(
                               std::string_view(head.data(), static_cast<std::size_t>(read)));
    }

private:
    [[noreturn]] static void refuse(std::filesystem::path const& file, int error) {
        throw setup_failure("cannot load '" + file.string() +
                            "': " + std::generic_category().message(error) +
                            "; give the file of a backend module");
    }

    int descriptor_;
    unsigned long long size_ = 0;
};

struct end_elf {
    void operator()(Elf* elf) const noexcept { ::elf_end(elf); }
};
using elf_ptr = std::unique_ptr<Elf, end_elf>;

std::string machine_of(GElf_Ehdr const& header) {
    int const bits = header.e_ident[EI_CLASS] == ELFCLASS64 ? 64 : 32;
    switch (header.e_machine) {
    case EM_X86_64: return bits == 64 ? "x86-64" : "x86-64 with 32-bit addresses";
    case EM_386: return "32-bit x86";
    case EM_ARM: return "32-bit ARM";
    case EM_AARCH64: return bits == 64 ? "64-bit ARM" : "64-bit ARM with 32-bit addresses";
    case EM_RISCV: return std::to_string(bits) + "-bit RISC-V";
    default: break;
    }
    return std::to_string(bits) + "-bit machine " + std::to_string(header.e_machine);
}

elf_file::sort kind_of(GElf_Ehdr const& header) {
    switch (header.e_type) {
    case ET_REL: return elf_file::sort::object;
    case ET_EXEC: return elf_file::sort::program;
    case ET_DYN: return elf_file::sort::shared;
    default: return elf_file::sort::other;
    }
}

/// Of `__tavi_ioapi_library_revision_0_5` it is `0.5`, of another name nothing.
std::string revision_in(std::string_view symbol) {
    if (!symbol.starts_with(revision_head)) return {};
    std::string revision(symbol.substr(revision_head.size()));
    std::replace(revision.begin(), revision.end(), '_', '.');
    return revision;
}

bool is_entry(std::string_view symbol) {
    return std::any_of(std::begin(entry_heads), std::end(entry_heads), [&](auto const head) {
        auto const number = symbol.substr(std::min(symbol.size(), head.size()));
        return symbol.starts_with(head) && !number.empty() &&
               number.find_first_not_of("0123456789") == std::string_view::npos;
    });
}

std::string_view text_at(Elf* elf, std::size_t table, std::size_t offset) {
    char const* const text = ::elf_strptr(elf, table, offset);
    return text != nullptr ? text : "";
}

void note_symbol(elf_file& found, std::string_view name, bool defined) {
    if (auto revision = revision_in(name); !defined && !revision.empty()) {
        found.revisions.push_back(std::move(revision));
    }
    if (defined && is_entry(name)) found.entries.emplace_back(name);
}

void read_symbols(Elf* elf, Elf_Scn* section, GElf_Shdr const& header, elf_file& found) {
    Elf_Data* const data = ::elf_getdata(section, nullptr);
    if (data == nullptr || header.sh_entsize == 0) return;
    auto const count = static_cast<int>(header.sh_size / header.sh_entsize);
    for (int i = 0; i < count; ++i) {
        GElf_Sym symbol;
        if (::gelf_getsym(data, i, &symbol) == nullptr) return;
        note_symbol(found, text_at(elf, header.sh_link, symbol.st_name),
                    symbol.st_shndx != SHN_UNDEF);
    }
}

void read_dynamic(Elf* elf, Elf_Scn* section, GElf_Shdr const& header, elf_file& found) {
    Elf_Data* const data = ::elf_getdata(section, nullptr);
    if (data == nullptr || header.sh_entsize == 0) return;
    auto const count = static_cast<int>(header.sh_size / header.sh_entsize);
    for (int i = 0; i < count; ++i) {
        GElf_Dyn entry;
        if (::gelf_getdyn(data, i, &entry) == nullptr) return;
        if (entry.d_tag == DT_NEEDED) {
            found.needed.emplace_back(text_at(elf, header.sh_link, entry.d_un.d_val));
        } else if (entry.d_tag == DT_FLAGS_1 && (entry.d_un.d_val & DF_1_PIE) != 0) {
            found.kind = elf_file::sort::program;
        }
    }
}

void read_sections(Elf* elf, elf_file& found) {
    for (Elf_Scn* section = nullptr; (section = ::elf_nextscn(elf, section)) != nullptr;) {
        GElf_Shdr header;
        if (::gelf_getshdr(section, &header) == nullptr) return;
        if (header.sh_type == SHT_DYNSYM) read_symbols(elf, section, header, found);
        if (header.sh_type == SHT_DYNAMIC) read_dynamic(elf, section, header, found);
    }
}

/// Whether a part lies within the file. The numbers may be any.
bool is_within(unsigned long long size, unsigned long long offset, unsigned long long length) {
    return offset <= size && length <= size - offset;
}

bool has_all_segments(Elf* elf, unsigned long long size) {
    std::size_t count = 0;
    if (::elf_getphdrnum(elf, &count) != 0) return false;
    for (std::size_t i = 0; i < count; ++i) {
        GElf_Phdr segment;
        if (::gelf_getphdr(elf, static_cast<int>(i), &segment) == nullptr) return false;
        if (!is_within(size, segment.p_offset, segment.p_filesz)) return false;
    }
    return true;
}

bool has_all_sections(Elf* elf, unsigned long long size) {
    std::size_t count = 0;
    if (::elf_getshdrnum(elf, &count) != 0) return false;
    for (std::size_t i = 0; i < count; ++i) {
        GElf_Shdr section;
        if (::gelf_getshdr(::elf_getscn(elf, i), &section) == nullptr) return false;
        bool const is_in_file = section.sh_type != SHT_NOBITS && section.sh_type != SHT_NULL;
        if (is_in_file && !is_within(size, section.sh_offset, section.sh_size)) return false;
    }
    return true;
}

/// Whether all is there of which the head says where it is. To load a file that ends before that
/// would end this program.
bool is_complete(Elf* elf, GElf_Ehdr const& header, unsigned long long size) {
    auto const table = [&](unsigned long long offset, unsigned int count, unsigned int entry) {
        return is_within(size, offset, static_cast<unsigned long long>(count) * entry);
    };
    return table(header.e_phoff, header.e_phnum, header.e_phentsize) &&
           table(header.e_shoff, header.e_shnum, header.e_shentsize) &&
           has_all_segments(elf, size) && has_all_sections(elf, size);
}

} // namespace

elf_file inspect(std::filesystem::path const& file) {
    open_file const opened(file);
    ::elf_version(EV_CURRENT);
    elf_ptr const elf(::elf_begin(opened.get(), ELF_C_READ, nullptr));
    elf_file found;
    GElf_Ehdr header;
    if (elf == nullptr || ::elf_kind(elf.get()) != ELF_K_ELF ||
        ::gelf_getehdr(elf.get(), &header) == nullptr) {
        if (opened.begins_as_elf()) found.damage = "its head is not whole";
        return found;
    }
    found.kind = kind_of(header);
    found.machine = machine_of(header);
    if (is_complete(elf.get(), header, opened.size())) {
        read_sections(elf.get(), found);
    } else {
        found.damage = "it ends before its contents do";
    }
    return found;
}

std::string revision_symbol(std::string const& revision) {
    std::string symbol = std::string(revision_head) + revision;
    std::replace(symbol.begin(), symbol.end(), '.', '_');
    return symbol;
}

std::string library_revision() {
    Dl_info about{};
    if (::dladdr(tavi::ioapi::v2::detail::required_revision, &about) == 0 ||
        about.dli_sname == nullptr) {
        return {};
    }
    return revision_in(about.dli_sname);
}

} // namespace iohost
