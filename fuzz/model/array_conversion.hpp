#pragma once

#include "scalar_conversion.hpp"

namespace fuzz {

/// One element of an array on its way to a `T`: an element of an array of values counts by what it
/// holds.
template <class T, class E>
outcome<T> to_element(E const& element) {
    if constexpr (std::is_same_v<E, value_model>) {
        return to_scalar_of<T>(element);
    } else {
        return to_scalar<T>(element);
    }
}

/// The conversion of one payload to an array of scalars.
template <class T, class P>
outcome<list<T>> to_list(P const& payload) {
    if constexpr (is_list<P>) {
        outcome<list<T>> result;
        for (auto const& each : payload) {
            auto const element = to_element<T>(each);
            if (element.code != io_errc::success) return refused<list<T>>(element.code);
            result.value.push_back(element.value);
        }
        return result;
    } else {
        return refused<list<T>>(io_errc::incompatible_type);
    }
}

template <class T>
outcome<list<T>> to_list_of(value_model const& value) {
    return std::visit([](auto const& payload) { return to_list<T>(payload); }, value.payload);
}

/// The conversion to an array of values.
inline outcome<list<value_model>> to_values(value_model const& value) {
    return std::visit(
        [](auto const& payload) -> outcome<list<value_model>> {
            using P = std::decay_t<decltype(payload)>;
            if constexpr (std::is_same_v<P, list<value_model>>) {
                return {payload};
            } else if constexpr (std::is_same_v<P, list<char>>) {
                // Two texts: up to the first zero or the end, and nothing.
                std::string const bytes(payload.begin(), payload.end());
                std::string const first = bytes.substr(0, bytes.find('\0'));
                return {{natural(first), natural(std::string())}};
            } else if constexpr (is_list<P>) {
                outcome<list<value_model>> result;
                for (auto const& each : payload) result.value.push_back(natural(each));
                return result;
            } else {
                return refused<list<value_model>>(io_errc::incompatible_type);
            }
        },
        value.payload);
}

} // namespace fuzz
