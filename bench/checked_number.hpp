#pragma once

#include "values.hpp"

#include <optional>
#include <utility>

/// \file
/// The checked conversion of a number by hand: what every limit of a conversion does.

namespace bench {

/// \return whether `source` is a `T`, which `target` then is.
template <class T, class S>
[[gnu::always_inline]] inline bool convert_number(S source, T& target) {
    if constexpr (std::is_floating_point_v<T>) {
        target = static_cast<T>(source);
        return true;
    } else if constexpr (std::is_floating_point_v<S>) {
        // Within these bounds every whole number is exact, and the cast is defined.
        if (!(source >= -9007199254740991.0 && source <= 9007199254740991.0)) return false;
        auto const whole = static_cast<long long>(source);
        if (static_cast<S>(whole) != source) return false;
        target = static_cast<T>(whole);
        return true;
    } else {
        if (!std::in_range<T>(source)) return false;
        target = static_cast<T>(source);
        return true;
    }
}

template <class T>
[[gnu::always_inline]] inline bool convert_number(bare_value const& source, T& target) {
    return source.visit([&](auto number) { return convert_number(number, target); });
}

/// What a call that may fail gives back.
template <class T>
struct outcome {
    T number;
    bool ok;
};

} // namespace bench
