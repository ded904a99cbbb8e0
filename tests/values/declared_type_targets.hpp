#pragma once

#include "array_conversion_sources.hpp"
#include "sample_payloads.hpp"
#include "scalar_oracle.hpp"

#include <variant>
#include <vector>

/// \file
/// Data types as targets, and what a value must answer to them, written from the tables.

namespace whole_values {

/// The types from `boolean` to `string`, which conversion gives.
inline constexpr unsigned int first_target = 1;
inline constexpr unsigned int last_target = 12;

/// Call `action` with a null pointer to the C++ type that serves an element type from 1 to 12.
template <class Action>
auto with_target(types element, Action action) {
    switch (element) {
    case types::boolean: return action(static_cast<bool*>(nullptr));
    case types::u8: return action(static_cast<unsigned char*>(nullptr));
    case types::u16: return action(static_cast<unsigned short*>(nullptr));
    case types::u32: return action(static_cast<unsigned int*>(nullptr));
    case types::u64: return action(static_cast<unsigned long long*>(nullptr));
    case types::i8: return action(static_cast<signed char*>(nullptr));
    case types::i16: return action(static_cast<short*>(nullptr));
    case types::i32: return action(static_cast<int*>(nullptr));
    case types::i64: return action(static_cast<long long*>(nullptr));
    case types::flt: return action(static_cast<float*>(nullptr));
    case types::dbl: return action(static_cast<double*>(nullptr));
    default: return action(static_cast<utility::string*>(nullptr));
    }
}

/// The alternative of the result for an element type from 1 to 12.
inline int result_index(types element, bool is_array) {
    constexpr int scalars[] = {0, 1, 7, 8, 9, 11, 2, 3, 4, 6, 12, 13, 15};
    constexpr int arrays[] = {0, 17, 23, 24, 25, 27, 18, 19, 20, 22, 28, 29, 31};
    auto const row = static_cast<std::size_t>(element);
    return is_array ? arrays[row] : scalars[row];
}

/// What a type asks for: its code decides, so that an element kind which carries the flag of an
/// array itself is one.
struct target {
    types element;
    bool is_array;
};

inline target target_of(io_data_type const& type) {
    unsigned int const code =
        static_cast<unsigned int>(type.basic_type) | (type.array_kind != 0 ? 0x80000000U : 0U);
    return {types{code & 0x7FFFFFFFU}, code >= 0x80000000U};
}

/// Whether it is one of the types that conversion gives.
inline bool is_target(io_data_type const& type) {
    auto const code = static_cast<unsigned int>(target_of(type).element);
    return code >= first_target && code <= last_target;
}

/// Every element type that is a target, the empty one, objects, and unknown ones.
inline std::vector<types> every_element_type() {
    std::vector<types> result;
    for (unsigned int code = 0; code <= 14; ++code) result.push_back(types{code});
    for (unsigned int const code : {99U, 0x7FFFFFFFU, 0x80000000U, 0x80000001U, 0x8000000CU}) {
        result.push_back(types{code});
    }
    return result;
}

/// What a value holds: one source, or those of its elements.
struct held {
    any_source what;
    std::vector<any_source> elements;
    int index;
};

inline bool is_nothing(any_source const& what) {
    return std::holds_alternative<source::nothing>(what);
}

inline io_errc scalar_code(any_source const& what, types target) {
    return with_target(target, [&](auto* pointer) {
        return scalar_oracle<std::remove_pointer_t<decltype(pointer)>>()(what).code;
    });
}

/// The row of the table that this value has, for a type that is not its own.
inline bool fits_by_table(held const& value, io_data_type const& type) {
    if (!is_target(type)) return false;
    auto const [target, is_array] = target_of(type);
    if (!is_array) {
        return !is_nothing(value.what) && scalar_code(value.what, target) == io_errc::success;
    }
    if (value.index < 17) return false;
    bool const to_truth = target == types::boolean;
    for (any_source const& each : value.elements) {
        if (is_nothing(each)) return false;
        if (!to_truth && scalar_code(each, target) != io_errc::success) return false;
    }
    return true;
}

/// The code that the conversion of this value to a type must report, likewise.
inline io_errc code_by_table(held const& value, io_data_type const& type) {
    auto const [target, is_array] = target_of(type);
    if (target == types::empty && !is_array) return io_errc::success;
    if (!is_target(type)) return io_errc::incompatible_type;
    if (!is_array) return scalar_code(value.what, target);
    if (value.index < 17) return io_errc::incompatible_type;
    for (any_source const& each : value.elements) {
        io_errc const code = scalar_code(each, target);
        if (code != io_errc::success) return code;
    }
    return io_errc::success;
}

/// A value and what it holds.
struct declared_source {
    io_value value;
    held content;
    std::string name;
};

inline declared_source declared(conversion_source const& from) {
    return {from.value, {from.what, {}, from.value.index()}, from.name};
}

inline declared_source declared(array_source const& from) {
    any_source const what = source::elements{static_cast<unsigned int>(from.elements.size())};
    return {from.value, {what, from.elements, from.value.index()}, from.name};
}

/// Every alternative at its bound values; every array alternative without elements, with one bound
/// value and with all; values of all alternatives in arrays of values, alone and, some of them,
/// behind a 1 and beside an empty one.
inline std::vector<declared_source> const& every_declared_source() {
    static std::vector<declared_source> const sources = [] {
        std::vector<declared_source> result;
        for_each_element_type([&](auto* element) {
            using S = std::remove_pointer_t<decltype(element)>;
            for (conversion_source const& bound : bounds_of<S>()) {
                result.push_back(declared(bound));
                result.push_back(declared(array_of<S>({&bound})));
            }
            result.push_back(declared(array_of<S>({})));
            result.push_back(declared(array_of<S>(pick_all<S>())));
        });
        conversion_source const& nothing = bounds_of<std::nullptr_t>().front();
        conversion_source const one{io_value(1), source::number{source::row::i32, exact(1)}, "1"};
        result.push_back(declared(nothing));
        result.push_back(declared(array_of<io_value>({})));
        result.push_back(declared(array_of<io_value>({&nothing})));
        result.push_back(declared(array_of<io_value>({&nothing, &nothing})));
        std::size_t next = 0;
        for (conversion_sources const& bounds : bounds_by_alternative()) {
            for (conversion_source const& bound : bounds) {
                result.push_back(declared(array_of<io_value>({&bound})));
                if (next++ % 8 != 0) continue;
                result.push_back(declared(array_of<io_value>({&one, &bound})));
                result.push_back(declared(array_of<io_value>({&bound, &nothing})));
                result.push_back(declared(array_of<io_value>({&nothing, &bound})));
            }
        }
        return result;
    }();
    return sources;
}

} // namespace whole_values
