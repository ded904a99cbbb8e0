#pragma once

#include <concepts>
#include <limits>
#include <type_traits>

/// \file
/// What the rules of conversion need to know of the number types. `long` and `long double` differ
/// between platforms, so nothing here goes by their names.

namespace tavi::ioapi::v2::detail {

/// An integer; `char` is one here, a truth value is not.
template <class T>
concept whole = std::integral<T> && !std::same_as<T, bool>;

template <class T>
concept real = std::floating_point<T>;

template <class T>
concept number = whole<T> || real<T>;

/// The type whose range and digits a number type follows: `char` is an unsigned 8-bit number
/// whatever its sign on this platform.
template <class T>
using number_t = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;

/// The largest magnitude of an integer that a floating type is trusted to hold, one below what the
/// format could represent. Formats of 64 digits or more hold every integer and have no limit.
template <real T>
requires(std::numeric_limits<T>::digits <
         64) inline constexpr long long integer_limit = (1LL << std::numeric_limits<T>::digits) - 1;

inline constexpr long long float_integer_limit = integer_limit<float>;
inline constexpr long long double_integer_limit = integer_limit<double>;
static_assert(float_integer_limit == 16777215 && double_integer_limit == 9007199254740991);

/// The bound of `double` on its way to `float`.
inline constexpr double float_magnitude_limit = std::numeric_limits<float>::max();
static_assert(float_magnitude_limit == 3.4028234663852886e+38);

/// \return 0 where `value` is whole and within the limit of its type, another number where it is
/// not, as with NaN and the infinities. A number, and chosen between numbers, so that a loop over
/// an array works on several elements at once.
template <real T>
[[nodiscard]] constexpr T integer_misfit(T value) noexcept {
    // From here on neighbours are 1 apart, and adding it rounds smaller magnitudes to whole
    // numbers.
    constexpr T whole_from = static_cast<T>(1LL << (std::numeric_limits<T>::digits - 1));
    constexpr T limit = static_cast<T>(integer_limit<T>);
    T const magnitude = value < 0 ? -value : value;
    T const rounded = (magnitude + whole_from) - whole_from;
    T const fraction = magnitude < whole_from ? rounded - magnitude : T(0);
    return magnitude <= limit ? fraction : T(1);
}

/// Whether `value` is whole and within the limit of its type: the same for one number.
template <real T>
[[nodiscard]] constexpr bool holds_integer(T value) noexcept {
    constexpr T limit = static_cast<T>(integer_limit<T>);
    return value >= -limit && value <= limit &&
           static_cast<T>(static_cast<long long>(value)) == value;
}

} // namespace tavi::ioapi::v2::detail
