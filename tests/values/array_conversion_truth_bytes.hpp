#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <cstring>
#include <vector>

/// \file
/// Truth values as another module may store them: any byte that is not 0 is true. They are never
/// read as `bool` here.

namespace whole_values {

/// An `array<bool>` with these bytes in its block.
inline tavi::ioapi::v2::utility::array<bool> truths_of(std::vector<unsigned char> const& bytes) {
    tavi::ioapi::v2::utility::array<bool> result(static_cast<unsigned int>(bytes.size()));
    if (!bytes.empty()) std::memcpy(static_cast<void*>(result.data()), bytes.data(), bytes.size());
    return result;
}

/// What the elements mean.
inline std::vector<bool> meant_by(tavi::ioapi::v2::utility::array<bool> const& array) {
    std::vector<bool> result;
    for (unsigned int i = 0; i < array.size(); ++i) {
        unsigned char byte = 0;
        std::memcpy(&byte, static_cast<void const*>(array.data() + i), 1);
        result.push_back(byte != 0);
    }
    return result;
}

/// A value that holds `bool` with this byte as its payload.
inline tavi::ioapi::v2::io_value truth_of(unsigned char byte) {
    tavi::ioapi::v2::io_value result(false);
    constexpr std::size_t payload = sizeof(tavi::ioapi::v2::io_data_type);
    std::memcpy(reinterpret_cast<unsigned char*>(&result) + payload, &byte, 1);
    return result;
}

} // namespace whole_values
