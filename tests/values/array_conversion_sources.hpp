#pragma once

#include "conversion_sources.hpp"
#include "sample_payloads.hpp"
#include "scalar_oracle.hpp"

#include <string>
#include <utility>
#include <vector>

/// \file
/// Arrays of every alternative at its bound values, with what their elements are.

namespace whole_values {

using namespace values_test;

/// An array, what each of its elements is, and what to call it in a report.
struct array_source {
    io_value value;
    std::vector<any_source> elements;
    std::string name;
};

/// The bound values of every alternative, by index: a scalar, an object, an array or nothing.
inline std::vector<conversion_sources> const& bounds_by_alternative() {
    static std::vector<conversion_sources> const bounds = [] {
        std::vector<conversion_sources> result(detail::alternatives::size);
        for (auto const& sources :
             {integer_sources(), real_sources(), text_sources(), other_sources()}) {
            for (conversion_source const& each : sources) {
                result[static_cast<std::size_t>(each.value.index())].push_back(each);
            }
        }
        return result;
    }();
    return bounds;
}

template <class S>
conversion_sources const& bounds_of() {
    return bounds_by_alternative()[static_cast<std::size_t>(detail::index_of<S>)];
}

/// Call `action` with a null pointer to each element type that an array alternative has; those of
/// `io_value` are left out, since they may be anything.
template <class Action>
void for_each_element_type(Action action) {
    auto const call = [&](auto... pointers) { (action(pointers), ...); };
    call(static_cast<bool*>(nullptr), static_cast<signed char*>(nullptr),
         static_cast<short*>(nullptr), static_cast<int*>(nullptr), static_cast<long*>(nullptr),
         static_cast<long long*>(nullptr), static_cast<unsigned char*>(nullptr),
         static_cast<unsigned short*>(nullptr), static_cast<unsigned int*>(nullptr),
         static_cast<unsigned long*>(nullptr), static_cast<unsigned long long*>(nullptr),
         static_cast<float*>(nullptr), static_cast<double*>(nullptr), static_cast<char*>(nullptr),
         static_cast<utility::string*>(nullptr), static_cast<io_object*>(nullptr));
}

using picked_sources = std::vector<conversion_source const*>;

/// An `array<S>` of the picked scalars, all of which hold an `S`.
template <class S>
io_value value_of(picked_sources const& picked) {
    utility::array<S> payload(static_cast<unsigned int>(picked.size()));
    unsigned int next = 0;
    for (conversion_source const* const each : picked) {
        if constexpr (std::is_same_v<S, io_value>) {
            payload[next++] = each->value;
        } else {
            payload[next++] = *each->value.template get_if<S>();
        }
    }
    return io_value(std::move(payload));
}

/// How an array alternative is made, for loops that are not to be compiled once for each.
struct element_kind {
    int index; ///< of the scalar alternative; -1 for values of any
    io_value (*make)(picked_sources const&);

    /// The bound values of such an element.
    [[nodiscard]] conversion_sources const& bounds() const {
        return bounds_by_alternative()[static_cast<std::size_t>(index)];
    }
};

inline element_kind const kind_of_values{-1, &value_of<io_value>};

/// All but that of values.
inline std::vector<element_kind> const& element_kinds() {
    static std::vector<element_kind> const kinds = [] {
        std::vector<element_kind> result;
        for_each_element_type([&](auto* element) {
            using S = std::remove_pointer_t<decltype(element)>;
            result.push_back({detail::index_of<S>, &value_of<S>});
        });
        return result;
    }();
    return kinds;
}

inline array_source array_of(element_kind const& kind, picked_sources const& picked) {
    array_source result;
    result.value = kind.make(picked);
    for (conversion_source const* const each : picked) result.elements.push_back(each->what);
    result.name = "array of " + std::to_string(picked.size()) + " from " +
                  (picked.empty() ? "nothing" : picked.front()->name);
    return result;
}

template <class S>
array_source array_of(picked_sources const& picked) {
    return array_of(element_kind{-1, &value_of<S>}, picked);
}

inline picked_sources pick_all(conversion_sources const& bounds) {
    picked_sources picked;
    for (conversion_source const& each : bounds) picked.push_back(&each);
    return picked;
}

template <class S>
picked_sources pick_all() {
    return pick_all(bounds_of<S>());
}

} // namespace whole_values
