#pragma once

#include "structures.hpp"
#include "variable.hpp"

namespace linux_backend {

/// Load, uptime, memory and what concerns the system as a whole.
[[nodiscard]] variable_list fixed_variables();

/// `cpu.total` and `cpu.cores`. \param known  must outlive the variables
[[nodiscard]] variable_list processor_variables(structures const& known);

/// `network.interfaces`.
[[nodiscard]] variable_list network_list_variables();

/// \name What there is at the moment of one operation
/// \throws file_failure  where that cannot be found out
/// \{

/// `network.<interface>`, out of one text.
[[nodiscard]] variable_list network_variables(snapshot& files, structures const& known);
/// `link.<interface>`.
[[nodiscard]] variable_list link_variables(snapshot& files, structures const& known);
/// `block.<device>`.
[[nodiscard]] variable_list block_variables(snapshot& files, structures const& known);
/// `thermal.<zone>`.
[[nodiscard]] variable_list thermal_variables(snapshot& files, structures const& known);
/// \}

} // namespace linux_backend
