#pragma once

#include "sample_payloads.hpp"
#include "scalar_source.hpp"

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Every bound that a conversion knows, and its neighbours, as values of every alternative.

namespace values_test {

using conversion_sources = std::vector<conversion_source>;

/// The bounds of all integer types and of the trusted limits, each with two neighbours on both
/// sides, and numbers that are cut or clamped.
inline std::vector<exact_integer> integer_bounds() {
    std::vector<exact_integer> bounds;
    auto const add = [&](unsigned long long magnitude) {
        bounds.push_back(whole(false, magnitude));
        if (magnitude != 0) bounds.push_back(whole(true, magnitude));
    };
    for (unsigned long long const number :
         {0ULL, 1ULL, 2ULL, 9ULL, 10ULL, 42ULL, 44ULL, 200ULL, 300ULL, 4464ULL, 70000ULL,
          1000000ULL, 3000000000ULL, 5000000000ULL, 1ULL << 40, 1ULL << 62}) {
        add(number);
    }
    for (int const bits : {7, 8, 15, 16, 24, 31, 32, 33, 53, 63}) {
        unsigned long long const bound = 1ULL << bits;
        for (unsigned long long const number :
             {bound - 2, bound - 1, bound, bound + 1, bound + 2}) {
            add(number);
        }
    }
    add(18446744073709551614ULL);
    add(18446744073709551615ULL);
    return bounds;
}

template <class T>
void add_integers(conversion_sources& sources) {
    for (exact_integer const number : integer_bounds()) {
        if (!fits<T>(number)) continue;
        sources.push_back(
            {io_value(as_type<T>(number)), source::number{row_of<T>(), number},
             "alternative " + std::to_string(detail::index_of<T>) + " of " + digits_of(number)});
    }
}

inline conversion_sources integer_sources() {
    conversion_sources sources;
    add_integers<signed char>(sources);
    add_integers<short>(sources);
    add_integers<int>(sources);
    add_integers<long>(sources);
    add_integers<long long>(sources);
    add_integers<unsigned char>(sources);
    add_integers<unsigned short>(sources);
    add_integers<unsigned int>(sources);
    add_integers<unsigned long>(sources);
    add_integers<unsigned long long>(sources);
    add_integers<char>(sources);
    return sources;
}

/// The bounds as real numbers with halves and next neighbours, and all that is special in `Real`.
template <class Real>
std::vector<Real> real_bounds() {
    using limits = std::numeric_limits<Real>;
    using single = std::numeric_limits<float>;
    constexpr Real endless = limits::infinity();
    std::vector<Real> bounds;
    auto const add = [&](Real number) {
        bounds.push_back(number);
        bounds.push_back(-number);
    };
    for (exact_integer const bound : integer_bounds()) {
        if (bound.negative) continue;
        Real const number = static_cast<Real>(bound.magnitude);
        for (Real const near :
             {number, number - Real(0.5), number + Real(0.5), std::nextafter(number, -endless),
              std::nextafter(number, endless)}) {
            add(near);
        }
    }
    for (Real const number :
         {Real(0.1), Real(0.25), Real(1) / 3, Real(1.5), Real(2.5), Real(1e6), Real(1e15),
          Real(1e20), Real(1e30), limits::min(), limits::denorm_min(), limits::max(),
          limits::epsilon(), std::nextafter(limits::max(), Real(0)), endless,
          limits::quiet_NaN()}) {
        add(number);
    }
    if constexpr (std::is_same_v<Real, double>) {
        double const limit = 3.4028234663852886e+38; // the largest float
        for (double const number :
             {limit, std::nextafter(limit, 0.0), std::nextafter(limit, endless),
              3.4028235677973362e+38, 3.4028235677973366e+38, 1e39, 1e100, 1e-60, 1e-45,
              static_cast<double>(single::min()), std::nextafter(double{single::min()}, 0.0),
              static_cast<double>(single::denorm_min()), single::denorm_min() / 2.0,
              std::nextafter(single::denorm_min() / 2.0, 1.0), 16777217.0, 16777219.0, 1e300,
              1e-310}) {
            add(number);
        }
    }
    return bounds;
}

template <class Source, class Real>
void add_reals(conversion_sources& sources) {
    for (Real const number : real_bounds<Real>()) {
        sources.push_back({io_value(number), Source{number},
                           "alternative " + std::to_string(detail::index_of<Real>) + " of " +
                               std::to_string(number)});
    }
}

inline conversion_sources real_sources() {
    conversion_sources sources;
    add_reals<source::single_real, float>(sources);
    add_reals<source::double_real, double>(sources);
    return sources;
}

/// The bounds in digits, whole and spoilt, and texts of all other kinds.
inline std::vector<std::string> bound_texts() {
    using namespace std::string_literals;
    std::vector<std::string> texts{""s,
                                   "-"s,
                                   "+"s,
                                   "."s,
                                   "--1"s,
                                   "-+1"s,
                                   "+1"s,
                                   "1-"s,
                                   " "s,
                                   " 1"s,
                                   "1 "s,
                                   "1\n"s,
                                   "\t1"s,
                                   "0"s,
                                   "-0"s,
                                   "00"s,
                                   "-00"s,
                                   "-01"s,
                                   "\0"s,
                                   "1\0"s,
                                   "1\0002"s,
                                   "\0001"s,
                                   "A"s,
                                   "a1"s,
                                   "1a"s,
                                   "4.2"s,
                                   "0.0"s,
                                   "-0.0"s,
                                   ".5"s,
                                   "5."s,
                                   "-.5"s,
                                   "1e3"s,
                                   "1E3"s,
                                   "1e+3"s,
                                   "1e-3"s,
                                   "1e"s,
                                   "e1"s,
                                   "0e5"s,
                                   "0x10"s,
                                   "0x"s,
                                   "x10"s,
                                   "1,5"s,
                                   "1'000"s,
                                   "1_000"s,
                                   "inf"s,
                                   "-inf"s,
                                   "+inf"s,
                                   "INF"s,
                                   "infinity"s,
                                   "infinite"s,
                                   "nan"s,
                                   "-nan"s,
                                   "NaN"s,
                                   "nan()"s,
                                   "nan("s,
                                   "true"s,
                                   "false"s,
                                   "no"s,
                                   "off"s,
                                   "1e38"s,
                                   "3.4028235e38"s,
                                   "3.5e38"s,
                                   "1e39"s,
                                   "1e-38"s,
                                   "1e-45"s,
                                   "1e-46"s,
                                   "1e308"s,
                                   "1e309"s,
                                   "1e-307"s,
                                   "1e-323"s,
                                   "\xFF"s,
                                   "\xC2\xB2"s,
                                   "18446744073709551616"s,
                                   "18446744073709551617"s,
                                   "18446744073709551625"s,
                                   "-9223372036854775810"s,
                                   "99999999999"s,
                                   "42949672950"s,
                                   "184467440737095516150"s,
                                   "36893488147419103232"s,
                                   "340282366920938463463374607431768211456"s};
    for (exact_integer const bound : integer_bounds()) {
        std::string const digits = digits_of(bound);
        texts.push_back(digits);
        texts.push_back(digits + " ");
        texts.push_back((bound.negative ? "-000" : "000") + digits.substr(bound.negative ? 1 : 0));
    }
    texts.push_back(std::string(400, '0') + "7");
    texts.push_back("-" + std::string(400, '0') + "7");
    texts.push_back(std::string(1000, '9'));
    return texts;
}

inline conversion_sources text_sources() {
    conversion_sources sources;
    for (std::string const& text : bound_texts()) {
        sources.push_back({io_value(text), source::text{text}, "text '" + text + "'"});
    }
    return sources;
}

template <class... Alternatives>
void add_arrays(conversion_sources& sources, detail::alternative_list<Alternatives...>) {
    auto const add = [&](auto const* alternative) {
        using T = typename std::remove_reference_t<decltype(*alternative)>::type;
        if constexpr (detail::is_array<T>) {
            for (unsigned int const count : {0U, 1U, 3U}) {
                sources.push_back({io_value(T(count)), source::elements{count},
                                   "alternative " + std::to_string(detail::index_of<T>) + " of " +
                                       std::to_string(count)});
            }
        }
    };
    (add(static_cast<Alternatives const*>(nullptr)), ...);
}

/// All that is neither a number nor a text.
inline conversion_sources other_sources() {
    conversion_sources sources;
    sources.push_back({io_value(), source::nothing{}, "nothing"});
    sources.push_back({io_value(false), source::truth{false}, "false"});
    sources.push_back({io_value(true), source::truth{true}, "true"});
    sources.push_back({io_value(io_object()), source::structure{}, "object"});
    sources.push_back({io_value(sample_object()), source::structure{}, "typed object"});
    add_arrays(sources, detail::alternatives{});
    return sources;
}

} // namespace values_test
