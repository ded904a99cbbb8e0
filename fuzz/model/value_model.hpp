#pragma once

#include <tavi/ioapi/v2/io_data_type.hpp>

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <type_traits>
#include <variant>

/// \file
/// Values, objects and structure types as the standard library would hold them. The targets do
/// everything twice, here and in the library, and compare.

namespace fuzz {

namespace v2 = tavi::ioapi::v2;
using types = v2::io_data_type::basic_types;
using v2::io_data_type;

struct value_model;

template <class T>
using list = std::list<T>;

struct structure_model {
    std::string name;
    std::map<std::string, io_data_type> members;
};

struct object_model {
    io_data_type type = io_data_type::object(0);
    structure_model structure;
    std::map<std::string, value_model> values;
};

/// In the order of the library's alternatives.
using payload_model = std::variant<std::nullptr_t,
                                   bool,
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
                                   std::string,
                                   object_model,
                                   list<bool>,
                                   list<signed char>,
                                   list<short>,
                                   list<int>,
                                   list<long>,
                                   list<long long>,
                                   list<unsigned char>,
                                   list<unsigned short>,
                                   list<unsigned int>,
                                   list<unsigned long>,
                                   list<unsigned long long>,
                                   list<float>,
                                   list<double>,
                                   list<char>,
                                   list<std::string>,
                                   list<object_model>,
                                   list<value_model>>;

struct value_model {
    io_data_type type;
    payload_model payload = nullptr;
};

template <class T>
struct element_of {
    using type = void;
};
template <class T>
struct element_of<std::list<T>> {
    using type = T;
};

/// The element of a list, `void` for every other payload.
template <class T>
using element_of_t = typename element_of<T>::type;

template <class T>
inline constexpr bool is_list = !std::is_void_v<element_of_t<T>>;

inline bool is_array(value_model const& value) {
    return value.payload.index() >= 17;
}
inline bool is_empty(value_model const& value) {
    return value.payload.index() == 0;
}

/// What the constructors of the library pair with a payload, written down once more.
io_data_type natural_type(payload_model const& payload);

/// A value as the library's constructors make it.
inline value_model natural(payload_model payload) {
    io_data_type const type = natural_type(payload);
    return {type, std::move(payload)};
}

/// How many values there are, this one and all below it included.
std::size_t count_of(value_model const& value);

} // namespace fuzz
