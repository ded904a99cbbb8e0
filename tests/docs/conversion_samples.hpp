#pragma once

#include "type_names.hpp"

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// \file
/// What the cells of the conversion tables are tried with: the ends of every range that the tables
/// name, and the numbers beside them.

namespace docs_test {

/// A whole number of any sign and up to 64 bits.
struct whole_number {
    bool negative = false;
    unsigned long long magnitude = 0;
};

inline bool operator<=(whole_number left, whole_number right) {
    if (left.negative != right.negative) {
        return left.negative || (left.magnitude == 0 && right.magnitude == 0);
    }
    return left.negative ? left.magnitude >= right.magnitude : left.magnitude <= right.magnitude;
}

template <class T>
T number_as(whole_number number) {
    auto const bits = number.negative ? 0 - number.magnitude : number.magnitude;
    if constexpr (std::is_floating_point_v<T>) {
        auto const magnitude = static_cast<T>(number.magnitude);
        return number.negative ? -magnitude : magnitude;
    } else {
        return static_cast<T>(bits);
    }
}

/// One source value, and what it is in plain terms.
struct conversion_sample {
    std::string source;    ///< its row in the tables
    v2::io_value value;    ///< what is converted
    std::string name;      ///< for a report
    whole_number number{}; ///< of a source of whole numbers
    double real = 0;       ///< of `float` and `double`
    std::string text{};    ///< of `string`
    bool flag = false;     ///< of `bool`, and whether an array has elements
};

template <class T>
bool fits(whole_number number) {
    // A char is a number from 0 to 255.
    using limits =
        std::numeric_limits<std::conditional_t<std::is_same_v<T, char>, unsigned char, T>>;
    auto const highest = static_cast<unsigned long long>(limits::max());
    whole_number const lowest{limits::is_signed, limits::is_signed ? highest + 1 : 0};
    return lowest <= number && number <= whole_number{false, highest};
}

inline std::vector<whole_number> const& boundary_numbers() {
    static auto const numbers = [] {
        unsigned long long const ends[] = {0,
                                           127,
                                           255,
                                           32767,
                                           65535,
                                           16777215,
                                           2147483647,
                                           4294967295,
                                           9007199254740991,
                                           9223372036854775807};
        std::vector<whole_number> made{{false, 18446744073709551615U}};
        for (unsigned long long const end : ends) {
            for (unsigned long long const beside : {0ULL, 1ULL, 2ULL}) {
                made.push_back({false, end + beside});
                if (end + beside != 0) made.push_back({true, end + beside});
            }
        }
        return made;
    }();
    return numbers;
}

inline std::vector<double> const& sample_reals() {
    static std::vector<double> const reals = [] {
        std::vector<double> made{-0.0,
                                 0.1,
                                 0.5,
                                 -0.5,
                                 1.5,
                                 300.0,
                                 -3.0,
                                 70000.0,
                                 -70000.0,
                                 3e9,
                                 -3e9,
                                 1e39,
                                 -1e39,
                                 1e-60,
                                 3.4028234663852886e+38,
                                 -3.4028234663852886e+38,
                                 std::nextafter(3.4028234663852886e+38, 1e39),
                                 std::numeric_limits<double>::infinity(),
                                 -std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()};
        for (whole_number const number : boundary_numbers()) {
            made.push_back(number_as<double>(number));
        }
        return made;
    }();
    return reals;
}

inline std::vector<std::string> const& sample_texts() {
    static auto const texts = [] {
        using namespace std::string_literals;
        std::vector<std::string> made{"",
                                      "-",
                                      "-0",
                                      "007",
                                      "00000000000000000000300",
                                      "+1",
                                      " 1",
                                      "1 ",
                                      "1\0"s,
                                      "\0"s,
                                      "0x10",
                                      "A",
                                      "abc",
                                      "false",
                                      "--1",
                                      "1e3",
                                      ".5",
                                      "-2.5",
                                      "4.25",
                                      "0.0",
                                      "1e39",
                                      "1e400",
                                      "inf",
                                      "-inf",
                                      "nan",
                                      "18446744073709551616"};
        for (whole_number const number : boundary_numbers()) {
            made.push_back((number.negative ? "-" : "") + std::to_string(number.magnitude));
        }
        return made;
    }();
    return texts;
}

/// Every payload of type `T` that is tried, each with its sample.
template <class T>
std::vector<std::pair<T, conversion_sample>> samples_of() {
    std::vector<std::pair<T, conversion_sample>> made;
    auto const add = [&made](T payload, std::string const& name) -> conversion_sample& {
        auto const source = name_of_type<T>();
        made.emplace_back(payload,
                          conversion_sample{source, v2::io_value(payload), source + " " + name});
        return made.back().second;
    };
    if constexpr (std::is_same_v<T, bool>) {
        add(false, "false");
        add(true, "true").flag = true;
    } else if constexpr (std::is_integral_v<T>) {
        for (whole_number const number : boundary_numbers()) {
            if (!fits<T>(number)) continue;
            add(number_as<T>(number),
                (number.negative ? "-" : "") + std::to_string(number.magnitude))
                .number = number;
        }
    } else if constexpr (std::is_floating_point_v<T>) {
        for (double const real : sample_reals()) {
            bool const too_large = std::is_same_v<T, float> && std::isfinite(real) &&
                                   std::fabs(real) > 3.4028234663852886e+38;
            if (too_large) continue;
            auto const payload = static_cast<T>(real);
            add(payload, std::to_string(real)).real = static_cast<double>(payload);
        }
    } else if constexpr (std::is_same_v<T, v2::utility::string>) {
        for (std::string const& text : sample_texts()) {
            add(T(text), '"' + text + '"').text = text;
        }
    } else {
        add(v2::io_object(), "with free keys");
        add(v2::io_object(7, {}), "of a structure");
    }
    return made;
}

/// The samples of every scalar, of nothing and of objects.
inline std::vector<conversion_sample> const& single_samples() {
    static auto const samples = [] {
        std::vector<conversion_sample> made{{"nothing", v2::io_value(), "nothing"}};
        auto const add = [&made](auto type) {
            for (auto& [payload, sample] : samples_of<typename decltype(type)::type>()) {
                made.push_back(sample);
            }
        };
        for_each_type(stored_scalars{}, add);
        add(tag<v2::io_object>{});
        return made;
    }();
    return samples;
}

} // namespace docs_test
