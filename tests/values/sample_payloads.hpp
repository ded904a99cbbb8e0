#pragma once

#include <tavi/ioapi/v2/io_value.hpp>

#include <array>
#include <cstring>
#include <type_traits>
#include <utility>

/// \file
/// One payload for each alternative, with content in every byte and on every level, and how two of
/// them are compared without the operators of the library.

namespace values_test {

using namespace tavi::ioapi::v2;
using types = io_data_type::basic_types;

template <class T>
using array = utility::array<T>;

inline io_object sample_object() {
    return io_object(77, io_structure_type(utility::string("pump")));
}

/// A payload that differs from the default of `T`.
template <class T>
T sample() {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return nullptr;
    } else if constexpr (std::is_same_v<T, bool>) {
        return true;
    } else if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(-1.0 / 3);
    } else if constexpr (std::is_integral_v<T>) {
        return static_cast<T>(0x1223344556677889ULL);
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return utility::string("level of the first tank");
    } else if constexpr (std::is_same_v<T, io_object>) {
        return sample_object();
    } else if constexpr (std::is_same_v<T, array<io_value>>) {
        array<io_value> inner = array<io_value>::of(sample_object(), sample<array<io_object>>());
        return array<io_value>::of(5, "inflow", io_value(), std::move(inner));
    } else {
        using element = detail::array_element_t<T>;
        return T::of(element(), sample<element>(), sample<element>());
    }
}

/// A value of the alternative `T`, made by its own constructor.
template <class T>
io_value sample_value() {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return {};
    } else {
        return io_value(sample<T>());
    }
}

template <class... Alternatives>
constexpr auto sample_makers(detail::alternative_list<Alternatives...>) {
    return std::array<io_value (*)(), sizeof...(Alternatives)>{
        &sample_value<typename Alternatives::type>...};
}
/// Makes the sample value of each alternative, by index.
inline constexpr auto make_sample = sample_makers(detail::alternatives{});

/// The address of the private part of an object, null for a null handle.
inline void const* impl_of(io_object const& object) {
    void const* impl = nullptr;
    std::memcpy(&impl, &object, sizeof impl);
    return impl;
}

/// Whether two payloads hold the same, on all levels.
template <class T>
bool same_content(T const& left, T const& right) {
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        return true;
    } else if constexpr (std::is_arithmetic_v<T>) {
        return left == right;
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return left.str() == right.str();
    } else if constexpr (std::is_same_v<T, io_object>) {
        return left.type() == right.type();
    } else if constexpr (std::is_same_v<T, io_value>) {
        if (left.data_type() != right.data_type() || left.index() != right.index()) return false;
        return left.visit([&](auto const& payload) {
            using stored = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
            stored const* const other = right.template get_if<stored>();
            return other != nullptr && same_content(payload, *other);
        });
    } else {
        if (left.size() != right.size()) return false;
        for (unsigned int i = 0; i < left.size(); ++i) {
            if (!same_content(left[i], right[i])) return false;
        }
        return true;
    }
}

/// Whether two payloads have a block in common, on any level.
template <class T>
bool shares_blocks(T const& left, T const& right) {
    if constexpr (std::is_same_v<T, std::nullptr_t> || std::is_arithmetic_v<T>) {
        return false;
    } else if constexpr (std::is_same_v<T, utility::string>) {
        return left.data() == right.data() && left.data() != &utility::string::S_empty;
    } else if constexpr (std::is_same_v<T, io_object>) {
        return impl_of(left) == impl_of(right);
    } else if constexpr (std::is_same_v<T, io_value>) {
        return left.visit([&](auto const& payload) {
            using stored = std::remove_cv_t<std::remove_reference_t<decltype(payload)>>;
            stored const* const other = right.template get_if<stored>();
            return other != nullptr && shares_blocks(payload, *other);
        });
    } else {
        if (left.data() != nullptr && left.data() == right.data()) return true;
        for (unsigned int i = 0; i < left.size() && i < right.size(); ++i) {
            if (shares_blocks(left[i], right[i])) return true;
        }
        return false;
    }
}

/// The first block of a payload: what a move hands over. Null for a scalar.
template <class T>
void const* block_of(T const& payload) {
    if constexpr (std::is_same_v<T, std::nullptr_t> || std::is_arithmetic_v<T>) {
        return nullptr;
    } else if constexpr (std::is_same_v<T, io_object>) {
        return impl_of(payload);
    } else if constexpr (std::is_same_v<T, io_value>) {
        return payload.visit([](auto const& stored) { return block_of(stored); });
    } else {
        return payload.data();
    }
}

/// Whether a payload of the alternative `T` owns a block.
template <class T>
inline constexpr bool owns_blocks = detail::index_of<T> > detail::index_of<char>;

} // namespace values_test
