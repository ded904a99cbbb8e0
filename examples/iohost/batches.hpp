#pragma once

#include <backend_module.hpp>

#include <vector>

namespace iohost {

/// Variables that go to the backend at a time.
inline constexpr unsigned int batch_size = 500;

/// \return the outcome for each variable, in order. \throws operation_failure
[[nodiscard]] tavi::ioapi::v2::read_result read_in_batches(
    example::backend& backend,
    tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::plc_identifier const> variables);

/// Write `values[i]` to `variables[i]`. \return the outcome for each, in order
/// \throws operation_failure  and then those of former batches are written
[[nodiscard]] tavi::ioapi::v2::write_result write_in_batches(
    example::backend& backend,
    tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::plc_identifier const> variables,
    tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::io_value const> values);

} // namespace iohost
