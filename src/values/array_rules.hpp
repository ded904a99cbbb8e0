#pragma once

#include <tavi/ioapi/v2/detail/truth.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "conversion_rules.hpp"
#include "number_runs.hpp"

#include <string_view>
#include <type_traits>
#include <utility>

/// \file
/// How an array becomes an array: the rules of the elements, applied to all of them. The source's
/// kind is known at compile time; only the elements of an `array<io_value>` are looked at one by
/// one. An array converts whole or not at all.

namespace tavi::ioapi::v2::detail {

/// \return an element as the rules see it. Any module may have stored any byte as a truth value.
template <class T>
[[nodiscard]] decltype(auto) element_of(utility::array<T> const& source, unsigned int index) {
    if constexpr (std::is_same_v<T, bool>) {
        return truth_at(source.data() + index);
    } else {
        return static_cast<T const&>(source[index]);
    }
}

// --- elements that are values: the rule of what they hold

template <class To>
struct rule<To, io_value> {
    /// Whether the payload is of a kind that converts, and converts. The empty value is of none.
    static bool fits(io_value const& source) {
        return source.visit([](auto const& payload) {
            return rule<To, std::decay_t<decltype(payload)>>::fits(payload);
        });
    }
    static io_errc convert(io_value const& source, To& target) {
        return source.visit([&](auto const& payload) { return detail::convert(payload, target); });
    }
};

// --- arrays

/// Element by element, in order; the first one that does not convert decides.
template <class To, class From>
struct rule<utility::array<To>, utility::array<From>> {
    /// Whether every element fits. No allocation.
    static bool fits(utility::array<From> const& source) {
        if constexpr (is_numeric_run<To, From>) {
            return run_fits<To>(source.data(), source.size());
        } else {
            for (unsigned int i = 0; i < source.size(); ++i) {
                if (!rule<To, From>::fits(element_of(source, i))) return false;
            }
            return true;
        }
    }

    static io_errc convert(utility::array<From> const& source, utility::array<To>& target) {
        if constexpr (is_numeric_run<To, From>) {
            bool fitted = true;
            auto result = utility::array<To>::filled(source.size(), [&](To* elements) {
                fitted = convert_run(source.data(), elements, source.size());
            });
            // All misfits of one kind have one code, so that it does not matter which comes first.
            if (!fitted) return rule<To, From>::failure;
            target = std::move(result);
        } else {
            utility::array<To> result(source.size());
            for (unsigned int i = 0; i < source.size(); ++i) {
                io_errc const outcome = detail::convert(element_of(source, i), result[i]);
                if (outcome != io_errc::success) return outcome;
            }
            target = std::move(result);
        }
        return io_errc::success;
    }
};

/// The same elements as they stand.
template <class Same>
struct rule<utility::array<Same>, utility::array<Same>> : always_fits {
    static utility::array<Same> make(utility::array<Same> const& source) { return source; }
};

// --- arrays of values, whose elements take any kind

/// Each element becomes a value of its own kind.
template <class From>
struct rule<utility::array<io_value>, utility::array<From>> : always_fits {
    static utility::array<io_value> make(utility::array<From> const& source) {
        utility::array<io_value> result(source.size());
        for (unsigned int i = 0; i < source.size(); ++i) {
            result[i] = io_value(std::decay_t<From>(element_of(source, i)));
        }
        return result;
    }
};

template <>
struct rule<utility::array<io_value>, utility::array<io_value>> : always_fits {
    static utility::array<io_value> make(utility::array<io_value> const& source) { return source; }
};

/// Intended: an array of `char` is taken for a pair of texts, whatever its length. The first one
/// ends at a zero byte or with the array, the second one starts behind it and is always empty.
template <>
struct rule<utility::array<io_value>, utility::array<char>> : always_fits {
    static utility::array<io_value> make(utility::array<char> const& source) {
        std::string_view const bytes(source.data(), source.size());
        utility::array<io_value> result(2);
        result[0] = io_value(bytes.substr(0, bytes.find('\0')));
        result[1] = io_value("");
        return result;
    }
};

} // namespace tavi::ioapi::v2::detail
