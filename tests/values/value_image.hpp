#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <array>
#include <cstddef>
#include <cstring>

/// \file
/// The bytes of a value as another module sees them: type, payload, index.

namespace values_test {

inline constexpr std::size_t type_offset = 0;
inline constexpr std::size_t payload_offset = 24;
inline constexpr std::size_t index_offset = sizeof(void*) == 4 ? 40 : 48;

using value_image = std::array<unsigned char, sizeof(tavi::ioapi::v2::io_value)>;

inline value_image image_of(tavi::ioapi::v2::io_value const& value) {
    value_image image{};
    std::memcpy(image.data(), &value, image.size());
    return image;
}

/// What stands at an offset of a value.
template <class T>
T read_at(tavi::ioapi::v2::io_value const& value, std::size_t offset) {
    T result{};
    value_image const image = image_of(value);
    std::memcpy(&result, image.data() + offset, sizeof result);
    return result;
}

/// Whether a value is exactly what default construction makes, down to its bytes.
inline bool is_exactly_empty(tavi::ioapi::v2::io_value const& value) {
    return read_at<unsigned int>(value, 0) == 0 && read_at<unsigned long long>(value, 8) == 0 &&
           read_at<unsigned int>(value, 16) == 0 && read_at<unsigned int>(value, 20) == 0 &&
           read_at<void*>(value, payload_offset) == nullptr &&
           read_at<int>(value, index_offset) == 0;
}

} // namespace values_test
