#pragma once

#include <cstddef>
#include <cstdint>

/// What every target defines: judge one input. It ends the process where something does not hold.
/// \return 0
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
