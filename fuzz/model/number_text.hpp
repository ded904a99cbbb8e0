#pragma once

#include <optional>
#include <string>

/// \file
/// What a text is as a number, by a grammar written out here and by arithmetic of any precision.

namespace fuzz {

/// Holds every 64-bit integer, signed or not.
__extension__ using wide_integer = __int128;

/// A text of decimal digits, behind a `-` where `takes_sign`, from `lowest` to `highest`.
std::optional<wide_integer> integer_of(std::string const& text,
                                       bool takes_sign,
                                       wide_integer lowest,
                                       wide_integer highest);

/// A text in the general form of `std::from_chars`, rounded once to the nearest number of the
/// format. Nothing where it is beyond the format's range, or too small to be told from zero.
template <class Real>
std::optional<Real> real_of(std::string const& text);

} // namespace fuzz
