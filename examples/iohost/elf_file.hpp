#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace iohost {

/// What a file says of itself before it is loaded. Nothing in it is run.
struct elf_file {
    enum class sort { none, object, program, shared, other };

    sort kind = sort::none; ///< `none` for a file that is no ELF file
    /// Why it cannot be what it begins as, an ELF file that was cut or overwritten; else empty.
    std::string damage;
    std::string machine; ///< in words, such as `x86-64`
    /// Revisions of the library that it asks for, such as `0.5`: one in a module, none in a file
    /// that is built without the library.
    std::vector<std::string> revisions;
    /// Functions by which hosts know backends, of any number.
    std::vector<std::string> entries;
    /// Libraries that it needs, as it names them.
    std::vector<std::string> needed;

    [[nodiscard]] bool is_module_for(elf_file const& program) const {
        return kind == sort::shared && machine == program.machine;
    }
};

/// \return what the file says. \throws setup_failure  where it cannot be read
[[nodiscard]] elf_file inspect(std::filesystem::path const& file);

/// The symbol that a module of a revision, such as `0.5`, asks for.
[[nodiscard]] std::string revision_symbol(std::string const& revision);

/// The revision of the library that this program runs with, such as `0.5`.
[[nodiscard]] std::string library_revision();

} // namespace iohost
