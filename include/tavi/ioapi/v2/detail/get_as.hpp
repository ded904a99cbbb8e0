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
/// The library holds an instance for each scalar: `bool`, `char`, the ten integer types from
/// `signed char` to `unsigned long long`, `float`, `double`, `long double` and `utility::string`;
/// and for a `utility::array` of each of these and of `io_value`.
///
/// To a scalar:
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
/// - `bool` takes everything. True are a number that is not 0, every object, every array with
///   elements, and every text but the empty one and those that are a number equal to 0: "false" is
///   true.
///
/// To an array:
/// - Only an array converts, element by element by the rules above, whole or not at all. The empty
///   value, a scalar and a text are incompatible; an array without elements gives one.
/// - An element of an array of values converts by what it holds; an empty one gives the default.
/// - To values: each element becomes a value of its own kind. An array of `char` is taken for a
///   pair of texts instead: the bytes up to the first zero, and an empty one.
///
/// \param[out] error  cleared, or `value_too_large` (4): out of range, not whole, or a truth
///     value for a number; `incompatible_type` (3): a text that does not parse, an object or an
///     array for a scalar, no array for an array; `unhandled_exception` (8): exhausted memory or a
///     corrupt value. Of several elements that fail, the first decides.
/// \return the converted value, or the default of `T` when `error` is set. Throws nothing.
///     Numbers allocate nothing, but for a text of hundreds of bytes that becomes a `long double`;
///     a text or an array takes one block, an array of texts one more for each. Safe while nobody
///     writes to `value`.
template <class T>
TAVI_IOAPI_API T get_as(io_value const& value, io_error& error);

/// Whether `T` is one of the others.
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
