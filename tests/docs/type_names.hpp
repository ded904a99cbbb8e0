#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <limits>
#include <string>
#include <type_traits>

/// \file
/// The names that the guides give to sources and targets of conversion.

namespace docs_test {

namespace v2 = tavi::ioapi::v2;

template <class... Types>
struct type_list {};

/// The scalars that are both a source and a target.
using stored_scalars = type_list<bool,
                                 signed char,
                                 short,
                                 int,
                                 long,
                                 long long,
                                 unsigned char,
                                 unsigned short,
                                 unsigned int,
                                 unsigned long,
                                 unsigned long long,
                                 float,
                                 double,
                                 char,
                                 v2::utility::string>;

template <class T>
struct tag {
    using type = T;
};

/// Calls `function` with the tag of each type.
template <class... Types, class Function>
void for_each_type(type_list<Types...>, Function function) {
    (function(tag<Types>{}), ...);
}

/// The same, and `long double`, which is a target alone.
template <class Function>
void for_each_scalar_target(Function function) {
    for_each_type(stored_scalars{}, function);
    function(tag<long double>{});
}

/// Whether `long double` holds every integer, for which it takes 64 digits.
inline constexpr bool has_wide_real = std::numeric_limits<long double>::digits >= 64;

/// The name of a type in the tables, with the width that it has here.
template <class T>
std::string name_of_type() {
    std::string const bits = sizeof(long) == 8 ? ":64" : ":32";
    if constexpr (std::is_same_v<T, bool>) return "bool";
    if constexpr (std::is_same_v<T, signed char>) return "signed char";
    if constexpr (std::is_same_v<T, short>) return "short";
    if constexpr (std::is_same_v<T, int>) return "int";
    if constexpr (std::is_same_v<T, long>) return "long" + bits;
    if constexpr (std::is_same_v<T, long long>) return "long long";
    if constexpr (std::is_same_v<T, unsigned char>) return "unsigned char";
    if constexpr (std::is_same_v<T, unsigned short>) return "unsigned short";
    if constexpr (std::is_same_v<T, unsigned int>) return "unsigned int";
    if constexpr (std::is_same_v<T, unsigned long>) return "unsigned long" + bits;
    if constexpr (std::is_same_v<T, unsigned long long>) return "unsigned long long";
    if constexpr (std::is_same_v<T, float>) return "float";
    if constexpr (std::is_same_v<T, double>) return "double";
    if constexpr (std::is_same_v<T, long double>) {
        return has_wide_real ? "long double:64" : "long double:53";
    }
    if constexpr (std::is_same_v<T, char>) return "char";
    if constexpr (std::is_same_v<T, v2::utility::string>) return "string";
    if constexpr (std::is_same_v<T, v2::io_object>) return "io_object";
    if constexpr (std::is_same_v<T, v2::io_value>) return "io_value";
    if constexpr (v2::detail::is_array<T>) {
        return "array<" + name_of_type<v2::detail::array_element_t<T>>() + ">";
    }
    return "nothing";
}

/// Whether a name belongs to the data model of the other platform.
inline bool is_of_other_model(std::string const& name) {
    std::string const other_long = sizeof(long) == 8 ? "long:32" : "long:64";
    std::string const other_real = has_wide_real ? "double:53" : "double:64";
    return name.find(other_long) != std::string::npos || name.find(other_real) != std::string::npos;
}

} // namespace docs_test
