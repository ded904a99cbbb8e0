#pragma once

#include "sample_payloads.hpp"

#include <limits>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Values of every alternative that are apt to equal one another, or nearly so.

namespace whole_values {

using namespace values_test;

/// The same payload under another type.
inline io_value with_type(io_data_type const& type, io_value const& value) {
    return value.visit([&](auto const& payload) { return io_value(type, payload); });
}

template <class T>
void add_numbers(std::vector<io_value>& values) {
    using limits = std::numeric_limits<T>;
    for (T const each : {T(0), T(1), T(5), T(44), T(120), T(limits::max()), T(limits::lowest())}) {
        values.push_back(each);
        values.push_back(array<T>{each});
    }
    values.push_back(array<T>());
    values.push_back(array<T>{T(1), T(5)});
}

template <class T>
void add_wide_numbers(std::vector<io_value>& values) {
    for (long long const each : {300LL, 65535LL, 16777215LL, 16777216LL, 16777217LL}) {
        values.push_back(static_cast<T>(each));
    }
}

template <class T>
void add_widest_numbers(std::vector<io_value>& values) {
    for (long long const each :
         {4294967295LL, 4294967301LL, 9007199254740991LL, 9007199254740992LL, 9007199254740993LL}) {
        values.push_back(static_cast<T>(each));
    }
}

inline void add_texts(std::vector<io_value>& values) {
    for (char const* const each : {"", "0", "1", "5", "44", "-1", "5.0", "0.1", "true", "false",
                                   "nan", "16777216", "9007199254740993", "5 "}) {
        values.push_back(each);
        values.push_back(array<utility::string>{each});
    }
    values.push_back(array<utility::string>());
    values.push_back(array<utility::string>{"1", "5"});
    values.push_back(array<utility::string>{"ab", ""});
}

inline void add_structures(std::vector<io_value>& values) {
    values.push_back(io_object());
    values.push_back(sample_object());
    values.push_back(array<io_object>());
    values.push_back(array<io_object>(1));
    values.push_back(array<io_object>(2));
}

inline void add_arrays_of_values(std::vector<io_value>& values) {
    using some = array<io_value>;
    values.push_back(some());
    values.push_back(some::of(io_value()));
    values.push_back(some::of(1));
    values.push_back(some::of("1"));
    values.push_back(some::of(1, 5));
    values.push_back(some::of(1.0, "5"));
    values.push_back(some::of(true));
    values.push_back(some::of(true, 5));
    values.push_back(some::of("ab", ""));
    values.push_back(some::of(io_object()));
    values.push_back(some::of(array<io_object>()));
    values.push_back(some::of(array<int>{1, 5}));
    values.push_back(some::of(some::of(1, 5)));
    values.push_back(some::of(array<int>()));
    values.push_back(some::of(std::numeric_limits<double>::quiet_NaN()));
}

/// Values as their constructors make them.
inline std::vector<io_value> natural_samples() {
    std::vector<io_value> values{io_value(), false, true};
    for (auto const& bits : {array<bool>(), array<bool>{true}, array<bool>{false, true}}) {
        values.push_back(bits);
    }
    add_numbers<signed char>(values);
    add_numbers<short>(values);
    add_numbers<int>(values);
    add_numbers<long>(values);
    add_numbers<long long>(values);
    add_numbers<unsigned char>(values);
    add_numbers<unsigned short>(values);
    add_numbers<unsigned int>(values);
    add_numbers<unsigned long>(values);
    add_numbers<unsigned long long>(values);
    add_numbers<float>(values);
    add_numbers<double>(values);
    add_numbers<char>(values);
    add_wide_numbers<int>(values);
    add_wide_numbers<float>(values);
    add_wide_numbers<double>(values);
    add_widest_numbers<long long>(values);
    add_widest_numbers<unsigned long long>(values);
    add_widest_numbers<double>(values);
    if (sizeof(long) == 8) add_widest_numbers<long>(values);
    if (sizeof(long) == 8) add_widest_numbers<unsigned long>(values);
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const infinity = std::numeric_limits<float>::infinity();
    for (float const each : {-1.0F, -0.0F, 0.1F, 5.5F, nan, infinity}) {
        double const wide = static_cast<double>(each);
        values.insert(values.end(), {each, wide, array<float>{each}, array<double>{wide}});
    }
    values.insert(values.end(),
                  {0.1, -1, -1LL, array<char>{'a', 'b'}, array<char>{'a', 'b', '\0'}});
    add_texts(values);
    add_structures(values);
    add_arrays_of_values(values);
    return values;
}

} // namespace whole_values
