#pragma once

#include <filesystem>
#include <string>

namespace iohost {

/// \return the file that `--backend` means: of a single word, such as `modbus`, the file
/// `modbus_backend.so` beside the program, in `../modbus_backend` or in `../lib/iokern/backends` of
/// the program's directory, the first that is there; where none is, and for all else, the path as
/// it was given, made absolute.
/// \param program  the directory of the program
/// \throws setup_failure  for a word of which there is no file of either kind
[[nodiscard]] std::filesystem::path module_path(std::string const& backend,
                                                std::filesystem::path const& program);

/// The same for this very program.
[[nodiscard]] std::filesystem::path module_path(std::string const& backend);

/// The directory in which the file of this program stands.
[[nodiscard]] std::filesystem::path program_directory();

} // namespace iohost
