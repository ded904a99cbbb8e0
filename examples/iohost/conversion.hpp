#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/read_result.hpp>

namespace iohost {

/// Replace each value by the same one as `type`, taken at the same time and in the same quality,
/// or by the error where it does not convert. Entries with an error keep it.
void convert_values(tavi::ioapi::v2::read_result& result,
                    tavi::ioapi::v2::io_data_type const& type);

} // namespace iohost
