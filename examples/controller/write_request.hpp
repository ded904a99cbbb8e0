#pragma once

#include <cstdint>
#include <span>

namespace station {

/// Whether a request may go to the tables: every one that writes nothing, and those that write
/// the step register alone or within one table of the panel. \param request  from its function code
/// on
[[nodiscard]] bool may_be_answered(std::span<std::uint8_t const> request);

} // namespace station
