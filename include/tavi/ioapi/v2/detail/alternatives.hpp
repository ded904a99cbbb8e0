#pragma once

#include "../io_data_type.hpp"
#include "../utility/array.hpp"
#include "../utility/string.hpp"

#include <cstddef>
#include <tuple>
#include <type_traits>

namespace tavi::ioapi::v2 {

class io_object;
class io_value;

} // namespace tavi::ioapi::v2

/// \file
/// The kinds of payload that a value can hold. Index, type, data type, dispatch, copies and
/// conversion are all computed from this one list.

namespace tavi::ioapi::v2::detail {

/// One kind: the C++ type that is stored, and the element kind that our constructors pair with it.
template <class T, io_data_type::basic_types Element>
struct alternative {
    using type = T;
    static constexpr io_data_type::basic_types element = Element;
};

template <class... Alternatives>
struct alternative_list {
    static constexpr int size = sizeof...(Alternatives);
    template <int Index>
    using at = std::tuple_element_t<static_cast<std::size_t>(Index), std::tuple<Alternatives...>>;
};

using types = io_data_type::basic_types;

/// The position is the index. Index and type of each row are part of the binary interface.
using alternatives = alternative_list<                           //
    alternative<std::nullptr_t, types::empty>,                   // 0: no value
    alternative<bool, types::boolean>,                           // 1
    alternative<signed char, types::i8>,                         // 2
    alternative<short, types::i16>,                              // 3
    alternative<int, types::i32>,                                // 4
    alternative<long, types::i32>,                               // 5
    alternative<long long, types::i64>,                          // 6
    alternative<unsigned char, types::u8>,                       // 7
    alternative<unsigned short, types::u16>,                     // 8
    alternative<unsigned int, types::u32>,                       // 9
    alternative<unsigned long, types::u32>,                      // 10
    alternative<unsigned long long, types::u64>,                 // 11
    alternative<float, types::flt>,                              // 12
    alternative<double, types::dbl>,                             // 13
    alternative<char, types::i8>,                                // 14: a number, no letter
    alternative<utility::string, types::string>,                 // 15
    alternative<io_object, types::object>,                       // 16
    alternative<utility::array<bool>, types::boolean>,           // 17
    alternative<utility::array<signed char>, types::i8>,         // 18
    alternative<utility::array<short>, types::i16>,              // 19
    alternative<utility::array<int>, types::i32>,                // 20
    alternative<utility::array<long>, types::i32>,               // 21
    alternative<utility::array<long long>, types::i64>,          // 22
    alternative<utility::array<unsigned char>, types::u8>,       // 23
    alternative<utility::array<unsigned short>, types::u16>,     // 24
    alternative<utility::array<unsigned int>, types::u32>,       // 25
    alternative<utility::array<unsigned long>, types::u32>,      // 26
    alternative<utility::array<unsigned long long>, types::u64>, // 27
    alternative<utility::array<float>, types::flt>,              // 28
    alternative<utility::array<double>, types::dbl>,             // 29
    alternative<utility::array<char>, types::i8>,                // 30
    alternative<utility::array<utility::string>, types::string>, // 31
    alternative<utility::array<io_object>, types::object>,       // 32
    alternative<utility::array<io_value>, types::empty>>;        // 33: the caller's to say

static_assert(alternatives::size == 34);

template <int Index>
using alternative_at = typename alternatives::at<Index>::type;

template <class T, class... Alternatives>
constexpr int find_alternative(alternative_list<Alternatives...>) noexcept {
    int index = 0;
    return ((std::is_same_v<T, typename Alternatives::type> || (++index, false)) || ...) ? index
                                                                                         : -1;
}

/// The index of `T`, or -1 where it is no alternative.
template <class T>
inline constexpr int index_of = find_alternative<T>(alternatives{});

/// Whether a value can hold a `T` (the empty alternative included).
template <class T>
inline constexpr bool is_alternative = index_of<T> >= 0;

template <class T>
struct array_element {
    using type = void;
};
template <class T>
struct array_element<utility::array<T>> {
    using type = T;
};

/// The element of an owning array, `void` for every other type.
template <class T>
using array_element_t = typename array_element<T>::type;

template <class T>
inline constexpr bool is_array = !std::is_void_v<array_element_t<T>>;

/// The last index whose payload owns nothing: up to it, a payload is its bytes.
inline constexpr int last_plain_index = index_of<char>;

/// \return the data type that our constructors pair with `T`. That of an `io_object` is completed
/// by the structure id of the object.
template <class T>
constexpr io_data_type declared_type() noexcept {
    constexpr auto element = alternatives::at<index_of<T>>::element;
    return is_array<T> ? io_data_type::array_of(element) : io_data_type::scalar(element);
}

} // namespace tavi::ioapi::v2::detail
