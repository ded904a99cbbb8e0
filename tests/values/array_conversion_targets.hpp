#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

namespace whole_values {

/// Call `action` with a null pointer to each of the seventeen elements that an array conversion
/// gives.
template <class Action>
void for_each_array_target(Action action) {
    namespace v2 = tavi::ioapi::v2;
    auto const call = [&](auto... pointers) { (action(pointers), ...); };
    call(static_cast<bool*>(nullptr), static_cast<char*>(nullptr),
         static_cast<signed char*>(nullptr), static_cast<unsigned char*>(nullptr),
         static_cast<short*>(nullptr), static_cast<unsigned short*>(nullptr),
         static_cast<int*>(nullptr), static_cast<unsigned int*>(nullptr),
         static_cast<long*>(nullptr), static_cast<unsigned long*>(nullptr),
         static_cast<long long*>(nullptr), static_cast<unsigned long long*>(nullptr),
         static_cast<float*>(nullptr), static_cast<double*>(nullptr),
         static_cast<long double*>(nullptr), static_cast<v2::utility::string*>(nullptr),
         static_cast<v2::io_value*>(nullptr));
}

} // namespace whole_values
