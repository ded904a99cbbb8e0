#pragma once

#include <tavi/ioapi/v2/read_result.hpp>

// The entry of the module: its host looks it up by name.
extern "C" [[gnu::visibility("default")]] void sensor_backend_read(
    tavi::ioapi::v2::read_result& result) noexcept;

using sensor_backend_read_function = decltype(&sensor_backend_read);
