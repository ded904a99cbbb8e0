#pragma once

#include <limits>
#include <string>
#include <type_traits>

namespace values_test {

/// A whole number as sign and magnitude: holds all of `long long` and of `unsigned long long`, on
/// every platform, without a conversion that could lose anything.
struct exact_integer {
    bool negative = false; // never for zero
    unsigned long long magnitude = 0;
};

constexpr exact_integer whole(bool negative, unsigned long long magnitude) {
    return {negative && magnitude != 0, magnitude};
}

/// The number that an integer type holds; `char` counts from 0 to 255.
template <class T>
constexpr exact_integer exact(T number) {
    if constexpr (std::is_same_v<T, char>) {
        return whole(false, static_cast<unsigned char>(number));
    } else if constexpr (std::is_signed_v<T>) {
        auto const pattern = static_cast<unsigned long long>(number);
        return number < 0 ? whole(true, 0ULL - pattern) : whole(false, pattern);
    } else {
        return whole(false, number);
    }
}

constexpr bool operator==(exact_integer left, exact_integer right) {
    return left.negative == right.negative && left.magnitude == right.magnitude;
}

constexpr bool operator<=(exact_integer left, exact_integer right) {
    if (left.negative != right.negative) return left.negative;
    return left.negative ? left.magnitude >= right.magnitude : left.magnitude <= right.magnitude;
}

/// `char` as the number that it is.
template <class T>
using counted_as = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;

template <class T>
constexpr bool fits(exact_integer number) {
    using limits = std::numeric_limits<counted_as<T>>;
    return exact(limits::min()) <= number && number <= exact(limits::max());
}

/// The number as a `T`, which it must fit.
template <class T>
constexpr T as_type(exact_integer number) {
    if (!number.negative) return static_cast<T>(static_cast<counted_as<T>>(number.magnitude));
    return static_cast<T>(-static_cast<long long>(number.magnitude - 1) - 1);
}

inline std::string digits_of(exact_integer number) {
    std::string digits;
    for (unsigned long long rest = number.magnitude; rest != 0; rest /= 10) {
        digits.insert(digits.begin(), static_cast<char>('0' + rest % 10));
    }
    if (digits.empty()) digits = "0";
    return number.negative ? "-" + digits : digits;
}

} // namespace values_test
