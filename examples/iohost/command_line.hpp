#pragma once

#include "exit_status.hpp"
#include "options.hpp"

#include <optional>
#include <string>

namespace iohost {

/// \return what the command line says; nothing where it asked for help, which is printed then.
/// \throws setup_failure  for wrong usage
[[nodiscard]] std::optional<options> parsed_command_line(int argc, char const* const* argv);

/// \return the command of this name. \throws setup_failure  where there is none
[[nodiscard]] auto command_named(std::string const& name) -> exit_status (*)(options const&);

} // namespace iohost
