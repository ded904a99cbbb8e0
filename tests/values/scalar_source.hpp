#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include "exact_integer.hpp"

#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace values_test {

/// What is to be converted, in terms that owe nothing to the library.
namespace source {
struct nothing {};
struct truth {
    bool value;
};
/// The rows of the tables; `long` belongs to the one of its width.
enum class row { i8, i16, i32, i64, u8, u16, u32, u64 };
struct number {
    row type;
    exact_integer value;
};
struct single_real {
    double value;
};
struct double_real {
    double value;
};
struct text {
    std::string value;
};
struct structure {};
struct elements {
    unsigned int count;
};
} // namespace source

using any_source = std::variant<source::nothing,
                                source::truth,
                                source::number,
                                source::single_real,
                                source::double_real,
                                source::text,
                                source::structure,
                                source::elements>;

template <class T>
constexpr source::row row_of() {
    using source::row;
    constexpr bool wide_long = sizeof(long) == sizeof(long long);
    if constexpr (std::is_same_v<T, signed char>) return row::i8;
    if constexpr (std::is_same_v<T, short>) return row::i16;
    if constexpr (std::is_same_v<T, int>) return row::i32;
    if constexpr (std::is_same_v<T, long>) return wide_long ? row::i64 : row::i32;
    if constexpr (std::is_same_v<T, long long>) return row::i64;
    if constexpr (std::is_same_v<T, unsigned char>) return row::u8;
    if constexpr (std::is_same_v<T, char>) return row::u8;
    if constexpr (std::is_same_v<T, unsigned short>) return row::u16;
    if constexpr (std::is_same_v<T, unsigned int>) return row::u32;
    if constexpr (std::is_same_v<T, unsigned long>) return wide_long ? row::u64 : row::u32;
    return row::u64;
}

/// A value, what it is, and what to call it in a report.
struct conversion_source {
    tavi::ioapi::v2::io_value value;
    any_source what;
    std::string name;
};

} // namespace values_test
