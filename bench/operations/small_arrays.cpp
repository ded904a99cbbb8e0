#include "arrays.hpp"
#include "operations.hpp"

#include <cstdint>

/// \file
/// An array of 16 numbers, where the call and the block are the cost; one item is one array.

namespace bench {

namespace {

std::vector<std::int32_t> sixteen_numbers() {
    std::vector<std::int32_t> result;
    result.reserve(16);
    for (int i = 0; i < 16; ++i) result.push_back(i * 31 - 200);
    return result;
}

bool to_i16(std::int32_t const* source, std::int16_t* target, std::size_t count) {
    int differ = 0;
    for (std::size_t i = 0; i < count; ++i) {
        target[i] = static_cast<std::int16_t>(source[i]);
        differ |= source[i] != target[i];
    }
    return differ == 0;
}

} // namespace

void add_small_arrays() {
    array_conversion<std::int32_t, std::int16_t> const all{"array16_i32_to_i16", sixteen_numbers,
                                                           batch, batch};
    all.add_iokern();
    for_each_memory([&](auto memory) { all.add_kernel<decltype(memory)>(memory.name, to_i16); });
    all.add_peers();
}

} // namespace bench
