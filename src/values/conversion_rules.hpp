#pragma once

#include <tavi/ioapi/v2/detail/alternatives.hpp>
#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "number_text.hpp"
#include "number_traits.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

/// \file
/// How one payload becomes one scalar: a rule for each family of target and source, stated once.
///
/// `fits` tells whether a source converts, `make` gives the result of one that does, `failure` is
/// the code of one that does not. A rule whose test is most of the work has `convert` as well,
/// which does both in one go and writes its target only on success. `misfit` is `fits` as a number
/// as wide as the source, 0 for what fits, for loops.

namespace tavi::ioapi::v2::detail {

/// Where nothing else is said there is no conversion.
template <class To, class From>
struct rule {
    static constexpr io_errc failure = io_errc::incompatible_type;
    static constexpr bool fits(From const&) noexcept { return false; }
    static To make(From const&) noexcept { return To(); }
};

/// A rule under which every source converts.
struct always_fits {
    static constexpr io_errc failure = io_errc::success;
    template <class From>
    static constexpr bool fits(From const&) noexcept {
        return true;
    }
};

// --- from nothing: the default of the target, which is not to say that nothing fits the target

template <class To>
requires(!is_array<To>) struct rule<To, std::nullptr_t> {
    static constexpr io_errc failure = io_errc::success;
    static constexpr bool fits(std::nullptr_t) noexcept { return false; }
    static io_errc convert(std::nullptr_t, To& target) noexcept {
        target = To();
        return io_errc::success;
    }
};

// --- between numbers

/// Integers convert where the target's range has them.
template <whole To, whole From>
struct rule<To, From> {
    static constexpr io_errc failure = io_errc::value_too_large;
    static constexpr bool fits(From source) noexcept {
        return std::in_range<carrier>(static_cast<number_t<From>>(source));
    }
    static constexpr auto misfit(From source) noexcept {
        using bits = std::make_unsigned_t<number_t<From>>;
        constexpr bool keeps_sign = std::is_signed_v<carrier> == std::is_signed_v<number_t<From>>;
        constexpr bool is_wider_signed = std::is_signed_v<carrier> && sizeof(To) > sizeof(From);
        constexpr auto sign = static_cast<bits>(bits(~bits(0)) - (bits(~bits(0)) >> 1));
        auto const number = static_cast<number_t<From>>(source);
        auto const lost =
            static_cast<bits>(number) ^ static_cast<bits>(static_cast<carrier>(number));
        if constexpr (keeps_sign || is_wider_signed) {
            return static_cast<bits>(lost);
        } else {
            return static_cast<bits>(lost | (static_cast<bits>(number) & sign));
        }
    }
    static constexpr To make(From source) noexcept {
        return static_cast<To>(static_cast<number_t<From>>(source));
    }

private:
    using carrier = number_t<To>;
};

/// Integers convert to floating point where the target is trusted to hold them.
template <real To, whole From>
struct rule<To, From> {
    static constexpr io_errc failure = io_errc::value_too_large;
    static constexpr bool fits(From source) noexcept {
        using carrier = number_t<From>;
        if constexpr (std::numeric_limits<carrier>::digits <= std::numeric_limits<To>::digits) {
            return true;
        } else {
            auto const value = static_cast<carrier>(source);
            return std::cmp_greater_equal(value, -integer_limit<To>) &&
                   std::cmp_less_equal(value, integer_limit<To>);
        }
    }
    static constexpr auto misfit(From source) noexcept {
        using bits = std::make_unsigned_t<number_t<From>>;
        if constexpr (std::numeric_limits<number_t<From>>::digits <=
                      std::numeric_limits<To>::digits) {
            return bits(0);
        } else {
            auto const number = static_cast<bits>(source);
            bool const is_negative = std::is_signed_v<number_t<From>> && source < 0;
            bits const magnitude = is_negative ? static_cast<bits>(bits(0) - number) : number;
            return static_cast<bits>(magnitude & ~static_cast<bits>(integer_limit<To>));
        }
    }
    static constexpr To make(From source) noexcept {
        return static_cast<To>(static_cast<number_t<From>>(source));
    }
};

/// Floating point converts to an integer where it is whole and within the limit of its own format.
/// Intended: the range of the target plays no part in that. What passed is clamped to 32 bits, or
/// 64 where the target has them, and its low bits are taken.
template <whole To, real From>
struct rule<To, From> {
    static constexpr io_errc failure = io_errc::value_too_large;
    static constexpr bool fits(From source) noexcept { return holds_integer(source); }
    static constexpr From misfit(From source) noexcept { return integer_misfit(source); }
    static constexpr To make(From source) noexcept {
        if constexpr (sizeof(To) > 4) {
            auto const exact = static_cast<long long>(source);
            return static_cast<To>(is_signed ? exact : std::max(exact, 0LL));
        } else if constexpr (is_signed) {
            return static_cast<To>(static_cast<number_t<To>>(clamped<int>(source)));
        } else {
            return static_cast<To>(static_cast<number_t<To>>(clamped<unsigned int>(source)));
        }
    }

private:
    static constexpr bool is_signed = std::is_signed_v<number_t<To>>;

    template <class Carrier>
    static constexpr Carrier clamped(From source) noexcept {
        using limits = std::numeric_limits<Carrier>;
        constexpr bool is_in_reach = std::numeric_limits<From>::digits < limits::digits;
        From bounded = source;
        if constexpr (!is_in_reach || !limits::is_signed) {
            bounded = std::max(bounded, static_cast<From>(limits::min()));
        }
        if constexpr (!is_in_reach) bounded = std::min(bounded, static_cast<From>(limits::max()));
        return static_cast<Carrier>(bounded);
    }
};

/// Floating point converts to a wider format as it stands, to a narrower one within its range,
/// rounded to the nearest.
template <real To, real From>
struct rule<To, From> {
    static constexpr io_errc failure = io_errc::value_too_large;
    static constexpr bool fits(From source) noexcept {
        if constexpr (std::numeric_limits<To>::max_exponent >=
                      std::numeric_limits<From>::max_exponent) {
            return true;
        } else {
            constexpr From limit = std::numeric_limits<To>::max();
            return source >= -limit && source <= limit;
        }
    }
    static constexpr To make(From source) noexcept { return static_cast<To>(source); }
};

/// A truth value is not a number. Intended: it is too large for one, not incompatible.
template <number To>
struct rule<To, bool> {
    static constexpr io_errc failure = io_errc::value_too_large;
    static constexpr bool fits(bool) noexcept { return false; }
    static constexpr To make(bool) noexcept { return To(); }
};

/// A text converts where all of it is a number that the target holds. The empty text is zero.
template <number To>
struct rule<To, utility::string> {
    static constexpr io_errc failure = io_errc::incompatible_type;
    static bool fits(utility::string const& source) noexcept(!parsing_takes_memory<To>) {
        To unused{};
        return convert(source, unused) == io_errc::success;
    }
    static io_errc convert(utility::string const& source,
                           To& target) noexcept(!parsing_takes_memory<To>) {
        if (source.empty()) {
            target = To();
            return io_errc::success;
        }
        auto const parsed = parse<To>(source.begin(), source.end());
        if (!parsed) return failure;
        target = *parsed;
        return io_errc::success;
    }
};

// --- to a truth value, which everything has

template <>
struct rule<bool, bool> : always_fits {
    static constexpr bool make(bool source) noexcept { return source; }
};

template <number From>
struct rule<bool, From> : always_fits {
    static constexpr bool make(From source) noexcept { return source != From(); }
};

/// Intended: there are no words for true and false here. A text that is a number is as true as
/// the number, all else but the empty text is true.
template <>
struct rule<bool, utility::string> : always_fits {
    static bool make(utility::string const& source) noexcept {
        if (source.empty()) return false;
        auto const parsed = parse<double>(source.begin(), source.end());
        return !parsed || *parsed != 0;
    }
};

template <>
struct rule<bool, io_object> : always_fits {
    static constexpr bool make(io_object const&) noexcept { return true; }
};

template <class Element>
struct rule<bool, utility::array<Element>> : always_fits {
    static bool make(utility::array<Element> const& source) noexcept { return !source.empty(); }
};

// --- to a text

template <>
struct rule<utility::string, bool> : always_fits {
    static utility::string make(bool source) { return utility::string(text_of(source)); }
};

template <number From>
struct rule<utility::string, From> : always_fits {
    static utility::string make(From source) {
        number_text const text(source);
        return text.view().empty() ? utility::string() : utility::string(text.view());
    }
};

template <>
struct rule<utility::string, utility::string> : always_fits {
    static utility::string make(utility::string const& source) { return source; }
};

// --- every rule in one call

/// Convert one payload. \return success, and then `target` is written, or the code of the rule
template <class To, class From>
[[nodiscard]] io_errc convert(From const& source, To& target) {
    using applied = rule<To, From>;
    if constexpr (requires { applied::convert(source, target); }) {
        return applied::convert(source, target);
    } else {
        if (!applied::fits(source)) return applied::failure;
        target = applied::make(source);
        return io_errc::success;
    }
}

} // namespace tavi::ioapi::v2::detail
