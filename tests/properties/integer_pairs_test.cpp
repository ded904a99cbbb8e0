#include <tavi/ioapi/v2/ioapi.hpp>

#include "support/typed_tests.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <type_traits>

/// \file
/// Integers to every type of number, against arithmetic in 128 bits: every value of the narrow
/// types, and every value near those from the wide ones.

namespace properties_test {
namespace {

namespace v2 = tavi::ioapi::v2;

__extension__ using wide = __int128;

/// `char` counts from 0 to 255.
template <class T>
using counted = std::conditional_t<std::is_same_v<T, char>, unsigned char, T>;

template <class T>
bool holds(wide number) {
    if constexpr (std::is_floating_point_v<T>) {
        wide const limit = (static_cast<wide>(1) << std::numeric_limits<T>::digits) - 1;
        return -limit <= number && number <= limit;
    } else {
        using limits = std::numeric_limits<counted<T>>;
        return wide{limits::min()} <= number && number <= wide{limits::max()};
    }
}

/// Read back into 128 bits, whatever the target is.
template <class T>
wide widened(T number) {
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<wide>(number);
    } else {
        return static_cast<counted<T>>(number);
    }
}

template <class To>
bool is_read_as_it_must(v2::io_value const& value, wide number, v2::io_error& error) {
    To const given = v2::detail::get_as<To>(value, error);
    if (holds<To>(number)) return error.ok() && widened(given) == number;
    return error == v2::io_error(v2::io_errc::value_too_large) && given == To();
}

/// These are declared as another type: as an `i8`, an `i32`, a `u32` and a `dbl`.
template <class T>
inline constexpr bool has_no_declared_type =
    std::is_same_v<T, char> || std::is_same_v<T, long> || std::is_same_v<T, unsigned long> ||
    std::is_same_v<T, long double>;

/// The same where the type is known at run time alone, unless it is that of the value already,
/// which is copied then.
template <class To>
bool becomes_a_member_as_it_must(v2::io_value const& value, wide number, v2::io_error& error) {
    if constexpr (has_no_declared_type<To>) {
        return true;
    } else {
        auto const declared = v2::io_value(To()).data_type();
        v2::io_value const given = value.to_variant(declared, error);
        if (declared == value.data_type()) {
            return value.converts_to(declared) && error.ok() && given.index() == value.index() &&
                   given.printable_string() == value.printable_string();
        }
        if (value.converts_to(declared) != holds<To>(number) || given.data_type() != declared) {
            return false;
        }
        if (holds<To>(number)) return error.ok() && widened(given.as<To>()) == number;
        return error == v2::io_error(v2::io_errc::value_too_large) && given.as<To>() == To();
    }
}

template <class To>
bool converts_as_it_must(v2::io_value const& value, wide number, v2::io_error& error) {
    return is_read_as_it_must<To>(value, number, error) &&
           becomes_a_member_as_it_must<To>(value, number, error);
}

/// Every number is a truth value.
template <>
bool converts_as_it_must<bool>(v2::io_value const& value, wide number, v2::io_error& error) {
    auto const declared = v2::io_value(false).data_type();
    bool const read = v2::detail::get_as<bool>(value, error);
    if (error.failed() || read != (number != 0) || !value.converts_to(declared)) return false;
    v2::io_value const given = value.to_variant(declared, error);
    bool const* const truth = given.get_if<bool>();
    return error.ok() && truth != nullptr && *truth == read;
}

template <class... Targets>
struct targets {
    static bool all_hold(v2::io_value const& value, wide number, v2::io_error& error) {
        return (converts_as_it_must<Targets>(value, number, error) && ...);
    }
};
using every_target = targets<bool,
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
                             long double>;

template <class T>
class EveryNarrowInteger : public ::testing::Test {};
using narrow_integers = ::testing::Types<char, signed char, unsigned char, short, unsigned short>;
TYPED_TEST_SUITE(EveryNarrowInteger, narrow_integers);

TYPED_TEST(EveryNarrowInteger, ConvertsToEachTypeThatHoldsIt) {
    using limits = std::numeric_limits<counted<TypeParam>>;
    v2::io_error error;
    for (int number = limits::min(); number <= limits::max(); ++number) {
        v2::io_value const value(static_cast<TypeParam>(number));
        ASSERT_TRUE(every_target::all_hold(value, number, error)) << number;
    }
}

template <class T>
class EveryWideInteger : public ::testing::Test {};
using wide_integers =
    ::testing::Types<int, unsigned int, long, unsigned long, long long, unsigned long long>;
TYPED_TEST_SUITE(EveryWideInteger, wide_integers);

// Every value that a narrow type holds, and as many beyond.
TYPED_TEST(EveryWideInteger, ConvertsToTheNarrowTypesThatHoldIt) {
    using narrow = targets<char, signed char, unsigned char, short, unsigned short, float>;
    v2::io_error error;
    for (int number = std::is_signed_v<TypeParam> ? -70000 : 0; number <= 70000; ++number) {
        v2::io_value const value(static_cast<TypeParam>(number));
        ASSERT_TRUE(narrow::all_hold(value, number, error)) << number;
    }
}

// Around every power of two, where the bounds of all types are.
TYPED_TEST(EveryWideInteger, ConvertsAroundEveryPowerOfTwo) {
    v2::io_error error;
    for (int bits = 0; bits < 64; ++bits) {
        for (int distance = -40; distance <= 40; ++distance) {
            wide const number = (static_cast<wide>(1) << bits) + distance;
            for (wide const each : {number, -number}) {
                if (!holds<TypeParam>(each)) continue;
                v2::io_value const value(static_cast<TypeParam>(each));
                ASSERT_TRUE(every_target::all_hold(value, each, error))
                    << bits << " and " << distance;
            }
        }
    }
}

// Out and in again.
TYPED_TEST(EveryNarrowInteger, ReadsBackFromItsText) {
    using limits = std::numeric_limits<counted<TypeParam>>;
    v2::io_error error;
    for (int number = limits::min(); number <= limits::max(); ++number) {
        v2::io_value const value(static_cast<TypeParam>(number));
        auto const text = v2::detail::get_as<v2::utility::string>(value, error);
        ASSERT_EQ(text, std::to_string(number));
        ASSERT_EQ(v2::io_value(text).template as<TypeParam>(), value.template as<TypeParam>());
    }
}

} // namespace
} // namespace properties_test
