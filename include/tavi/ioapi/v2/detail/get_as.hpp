#pragma once

#include "../api.hpp"
#include "../utility/string.hpp"

#include <type_traits>

namespace tavi::ioapi::v2 {

class io_error;
class io_value;

namespace detail {

/// Convert the payload of `value` to `T`; its data type plays no part. `io_value::as` is the same
/// with less to write.
///
/// The library holds an instance for each of `bool`, `char`, the ten integer types from
/// `signed char` to `unsigned long long`, `float`, `double`, `long double` and `utility::string`.
///
/// - The empty value gives the default of `T`, without an error, and so does an empty text where
///   `T` is a number.
/// - An integer must lie in the range of an integer `T`. For a floating `T` of fewer digits its
///   magnitude is at most 16777215 (`float`) or 9007199254740991 (`double`).
/// - A number in floating point becomes an integer only where it is whole and, again, at most
///   16777215 (`float`) or 9007199254740991 (`double`) in magnitude; it is then clamped to 32 bits,
///   or 64 where `T` has them, and its low bits taken without a further test: 300.0 gives the
///   `unsigned char` 44. `io_value::get_exact` refuses that. A `double` must lie in the range of
///   `float` to become one, and is rounded.
/// - A text is parsed whole: decimal digits, behind a `-` for signed types; for floating types
///   what `std::from_chars` takes. There is no leading `+` and no blank.
/// - `char` is a number from 0 to 255, never a letter.
/// - `bool` takes everything: a number that is not 0, a text that is no number or not 0 ("false"
///   is true), every object and every array with elements are true.
///
/// \param[out] error  cleared first; `value_too_large` (4): out of range, not whole, or a truth
///     value for a number; `incompatible_type` (3): a text that does not parse, an object or an
///     array; `unhandled_exception` (8): exhausted memory or a corrupt value
/// \return the converted value, or the default of `T` when `error` is set. Throws nothing.
///     Numbers allocate nothing, a text one block. Safe while nobody writes to `value`.
template <class T>
TAVI_IOAPI_API T get_as(io_value const& value, io_error& error);

template <class T, class... Others>
inline constexpr bool is_one_of = (std::is_same_v<T, Others> || ...);

/// Whether the library holds `get_as<T>`.
template <class T>
inline constexpr bool is_scalar_target = is_one_of<T,
                                                   bool,
                                                   char,
                                                   signed char,
                                                   unsigned char,
                                                   short,
                                                   unsigned short,
                                                   int,
                                                   unsigned int,
                                                   long,
                                                   unsigned long,
                                                   long long,
                                                   unsigned long long,
                                                   float,
                                                   double,
                                                   long double,
                                                   utility::string>;

} // namespace detail
} // namespace tavi::ioapi::v2
